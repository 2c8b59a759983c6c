// Round trips through packages without a host: read, write, read gives an equal model, and
// write, read, write gives the same project.xml, but for the format's two known asymmetries.
#include "common/model_compare.h"
#include "documentwriting.h"
#include "goldenmodel.h"
#include "hostapi/hostmixer.h"
#include "package/cvpackagemanager.h"
#include "package/cvpackagemanagerclient.h"
#include "package/cvzipreader.h"
#include "package/cvzipwriter.h"
#include "writertestsupport.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>

using namespace Halvorn;
using namespace WriterTest;

namespace {

struct Document {
    const char* file;                                       // below tests/data
    std::vector<std::pair<std::string, std::string>> media; // entry name and bytes
    bool hasAsymmetries; // plug-in parameter numbers or warp points
};

const std::vector<Document> kCorpus = {
    {"golden/project.xml",
     {{"audio/guitar.wav", "guitar bytes"},
      {"video/movie.mp4", "movie bytes"},
      {"plugins/reverb.quorpreset", "state bytes"}},
     true},
    {"writer/beats.xml", {{"audio/drums.wav", "drum bytes"}}, false},
    {"writer/minimal.xml", {}, false},
};

// A package made by hand from a document and its media, as another application would.
std::string makePackage(const ScratchFolder& scratch, const Document& document) {
    const std::string tree = scratch / "source-tree";
    writeFile(tree + "/project.xml",
              readFile(std::string(CORVELLE_TEST_DATA) + "/" + document.file));
    for (const auto& [name, bytes] : document.media)
        writeFile(tree + "/" + name, bytes);
    const std::string package = scratch / "source.corvelle";
    EXPECT_TRUE(CvZipWriter().zipFolder(String(tree.c_str()), String(package.c_str())));
    return package;
}

IPtr<IMediaProjectPackage> readPackage(const std::string& path, const std::string& clientRoot) {
    CvPackageManager manager;
    CvPackageManagerClient client;
    client.setPathForFileType(1, String((clientRoot + "/Preset").c_str()));
    client.setPathForFileType(2, String((clientRoot + "/Audio").c_str()));
    client.setPathForFileType(4, String((clientRoot + "/Video").c_str()));
    return IPtr<IMediaProjectPackage>::adopt(manager.readPackage(toUtf16(path).c_str(), &client));
}

bool writePackage(IMediaProjectPackage* package, const std::string& path) {
    CvPackageManager manager;
    return manager.writePackage(package, toUtf16(path).c_str()) != 0;
}

std::string projectDocumentOf(const std::string& package, const std::string& folder) {
    writeFile(folder + "/.keep", "");
    EXPECT_TRUE(CvZipReader().unzipToFolder(String(package.c_str()), String(folder.c_str())));
    return readFile(folder + "/project.xml");
}

constexpr uint32 kPluginTagOffset = Quor::IHostParameter::kPluginTagOffset;

// What a second write gives for a model read from the first write's document: plug-in
// parameter numbers lower by the plug-in tag offset again, and the two times of each warp point
// exchanged.
std::string withKnownAsymmetries(const std::string& document) {
    static const std::regex number("parameterID=\"([0-9-]+)\"");
    static const std::regex warp("<Warp time=\"([^\"]*)\" contentTime=\"([^\"]*)\" />");
    std::string out;
    auto rest = document.cbegin();
    for (std::sregex_iterator it(document.begin(), document.end(), number), end; it != end; ++it) {
        const auto& digits = (*it)[1];
        out.append(rest, digits.first);
        out += std::to_string(
            static_cast<int32>(static_cast<uint32>(std::stoll(digits.str())) - kPluginTagOffset));
        rest = digits.second;
    }
    out.append(rest, document.cend());
    return std::regex_replace(out, warp, "<Warp time=\"$2\" contentTime=\"$1\" />");
}

ModelCompare::Options afterOneWrite() {
    ModelCompare::Options options;
    options.pluginParameterShift = -int64_t(kPluginTagOffset);
    options.warpTimesExchanged = true;
    options.fileLeafNamesOnly = true;
    options.tempoValueOnly = true;
    return options;
}

TEST(RoundTrip, ReadWriteReadGivesAnEqualModelAndTheSameMediaAndDocument) {
    for (const Document& document : kCorpus) {
        SCOPED_TRACE(document.file);
        ScratchFolder scratch;
        const auto first = readPackage(makePackage(scratch, document), scratch / "first");
        ASSERT_TRUE(first && first->getProject());
        ASSERT_TRUE(writePackage(first.get(), scratch / "one.corvelle"));
        const auto second = readPackage(scratch / "one.corvelle", scratch / "second");
        ASSERT_TRUE(second && second->getProject());
        ASSERT_TRUE(writePackage(second.get(), scratch / "two.corvelle"));

        const auto differences =
            ModelCompare::differences(first->getProject(), second->getProject(), afterOneWrite());
        EXPECT_TRUE(differences.empty()) << ModelCompare::describe(differences);
        // Without naming the asymmetries the comparer sees exactly them, and nothing else.
        ModelCompare::Options leaves;
        leaves.fileLeafNamesOnly = true;
        leaves.tempoValueOnly = true;
        const auto strict =
            ModelCompare::differences(first->getProject(), second->getProject(), leaves);
        EXPECT_EQ(strict.empty(), !document.hasAsymmetries) << ModelCompare::describe(strict);
        for (const std::string& line : strict)
            EXPECT_TRUE(line.find("parameterId") != std::string::npos ||
                        line.find("/warp[") != std::string::npos)
                << line;

        // Every medium came through with its bytes into the client's folder for its type, and
        // nothing else did.
        std::set<std::string> media;
        for (const auto& [name, bytes] : document.media) {
            const std::string folder = name[0] == 'a'   ? "Audio"
                                       : name[0] == 'v' ? "Video"
                                                        : "Preset";
            const std::string path = folder + name.substr(name.find('/'));
            media.insert(path);
            EXPECT_EQ(readFile(scratch / ("first/" + path)), bytes) << path;
            EXPECT_EQ(readFile(scratch / ("second/" + path)), bytes) << path;
        }
        for (const std::string& name : listTree(scratch / "first"))
            EXPECT_TRUE(name.back() == '/' || media.count(name)) << name;
        EXPECT_EQ(listTree(scratch / "second"), listTree(scratch / "first"));

        const std::string one = projectDocumentOf(scratch / "one.corvelle", scratch / "one");
        const std::string two = projectDocumentOf(scratch / "two.corvelle", scratch / "two");
        ASSERT_FALSE(one.empty());
        std::string message;
        EXPECT_TRUE(isWellFormed(one, &message)) << message;
        const std::string expected = withKnownAsymmetries(one);
        EXPECT_EQ(expected == one, !document.hasAsymmetries);
        EXPECT_EQ(two, expected);
    }
}

TEST(RoundTrip, TheComparerSeesAChangeAnywhereInTheModel) {
    ScratchFolder scratch;
    GoldenMedia media(scratch.path());
    auto a = buildGoldenProject(media);
    auto b = buildGoldenProject(media);
    EXPECT_TRUE(ModelCompare::differences(a.get(), b.get()).empty());

    // The one writable face of a model: a parameter deep in the effect channel's band.
    IMediaDevice* equalizer = b->getChannel(3)->getDevice(0);
    IPtr<IMediaEqualizer> bands = queryInterface<IMediaEqualizer>(equalizer);
    ASSERT_TRUE(bands);
    bands->getBand(0)->getParameters()->getParameter(2)->setValue(0.75);
    const auto differences = ModelCompare::differences(a.get(), b.get());
    ASSERT_EQ(differences.size(), 1u) << ModelCompare::describe(differences);
    EXPECT_EQ(differences[0],
              "channel[3]/device[0]/band[0]/parameter[2]: value 0.69999999999999996 != 0.75");

    b->getTempo()->setParameterId(7);
    EXPECT_EQ(ModelCompare::differences(a.get(), b.get()).size(), 2u);
}

} // namespace

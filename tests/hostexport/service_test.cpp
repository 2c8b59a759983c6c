// The service frame: its faces and fixed answers, and exportProject from the save dialog to
// the package, the remembered folder and the work folders.
#include "exportfixture.h"

#include "common/filesizelimit.h"
#include "common/testfiles.h"
#include "shell/cvservice.h"

#include <sys/stat.h>

namespace Halvorn {
namespace ExportTest {

using TestSupport::exists;
using TestSupport::listTree;

class ServiceTest : public ExportTest {
protected:
    void SetUp() override {
        ExportTest::SetUp();
        start();
    }
    // A new service on the present workstation, as a host makes one.
    void start() { filter = RefHostTest::startService(host()); }
    void TearDown() override {
        filter = nullptr;
        ExportTest::TearDown();
    }
    // One export whose save dialog answers answer; nullopt cancels.
    tresult exportTo(std::optional<std::string> answer) {
        station->dialogs.answers.push_back(answer ? std::optional(RefHost::toUtf16(*answer))
                                                  : std::nullopt);
        return filter->exportProject(nullptr, station->project->itemFace());
    }
    std::string remembered() {
        auto defaults = service<IHostDefaults>();
        return utf8(defaults->getString("Corvelle", "lastExportPath"));
    }
    std::string out(const std::string& name = {}) const { return folder->path() + "/out/" + name; }

    IPtr<CvService> filter;
};

TEST_F(ServiceTest, AnswersItsFacesAndFixedOperations) {
    EXPECT_EQ(filter->getFilterFlags(nullptr), kResultFalse);
    for (const FUID& iid : {Quor::IPluginBase::iid, Quor::IProjectFilterPlugin::iid,
                            Quor::IProjectFilterPlugin2::iid, Quor::IProjectFilterPlugin3::iid}) {
        void* face = nullptr;
        ASSERT_EQ(filter->queryInterface(iid, &face), kResultOk);
        static_cast<FUnknown*>(face)->release();
    }
    EXPECT_EQ(filter->reservedFilter2a(nullptr), kResultFalse);
    EXPECT_EQ(filter->reservedFilter2h(nullptr), kResultFalse);
    uint32 value = 0;
    EXPECT_EQ(filter->reservedFilter3b(&value), kResultFalse);
    EXPECT_EQ(value, 1u);
    EXPECT_EQ(filter->reservedFilter3b(nullptr), kResultFalse);
    EXPECT_EQ(filter->terminate(), kResultOk);
    EXPECT_EQ(filter->importProject(nullptr, nullptr), kResultFalse);

    // A refused context clears the host: the command then has no dialog and fails.
    EXPECT_EQ(filter->initialize(nullptr), kResultFalse);
    EXPECT_EQ(exportTo(out("a.corvelle")), kResultFalse);
    EXPECT_TRUE(station->dialogs.shown.empty());
}

TEST_F(ServiceTest, ExportWritesThePackageRemembersTheFolderAndCleansUp) {
    ASSERT_EQ(::mkdir(out().c_str(), 0700), 0);
    ASSERT_EQ(exportTo(out("song.corvelle")), kResultOk);
    ASSERT_EQ(station->dialogs.shown.size(), 1u);
    const auto& shown = station->dialogs.shown[0];
    EXPECT_EQ(shown.mode, 2);
    EXPECT_EQ(RefHost::toUtf8(shown.title), "Save Corvelle File");
    EXPECT_EQ(RefHost::toUtf8(shown.startPath), "/home/user/Exports/");
    EXPECT_EQ(shown.fileTypes, std::vector<std::u16string>{u"Corvelle (*.corvelle)"});
    EXPECT_EQ(remembered(), out());
    // The work folder and the writer's tree are gone; only the package remains.
    EXPECT_EQ(listTree(out()), std::vector<std::string>{"song.corvelle"});

    // What the package holds is the whole road's to compare.
    EXPECT_TRUE(RefHostTest::readPackage(out("song.corvelle")));

    // The next export starts where the last one went, and finds no work folder left over.
    ASSERT_EQ(exportTo(out("again.corvelle")), kResultOk);
    EXPECT_EQ(RefHost::toUtf8(station->dialogs.shown[1].startPath), out());
    EXPECT_EQ(listTree(out()), (std::vector<std::string>{"again.corvelle", "song.corvelle"}));
}

TEST_F(ServiceTest, CancelAndBadTargetsLeaveNothingBehind) {
    EXPECT_EQ(filter->exportProject(nullptr, nullptr), kResultFalse);
    EXPECT_TRUE(station->dialogs.shown.empty());

    EXPECT_EQ(exportTo(std::nullopt), kResultFalse);
    EXPECT_EQ(remembered(), "/home/user/Exports/");
    EXPECT_FALSE(exists(out()));
    // A dialog the host has no answer for is cancelled as well.
    EXPECT_EQ(filter->exportProject(nullptr, station->project->itemFace()), kResultFalse);
    EXPECT_EQ(station->dialogs.shown.size(), 2u);

    // A missing folder is remembered but gets no package and no work folder.
    EXPECT_EQ(exportTo(out("x.corvelle")), kResultFalse);
    EXPECT_EQ(remembered(), out());
    EXPECT_FALSE(exists(out()));

    // A stale work folder belongs to someone else: it stays as it was.
    TestSupport::writeFile(out("corvfiletmp/keep.txt"), "mine");
    ASSERT_EQ(exportTo(out("y.corvelle")), kResultOk);
    EXPECT_EQ(listTree(out()),
              (std::vector<std::string>{"corvfiletmp/", "corvfiletmp/keep.txt", "y.corvelle"}));

    // A target the writer can't take (a folder stands there) fails and leaves it alone.
    ASSERT_EQ(::mkdir(out("z.corvelle").c_str(), 0700), 0);
    EXPECT_EQ(exportTo(out("z.corvelle")), kResultFalse);
    EXPECT_EQ(listTree(out()), (std::vector<std::string>{"corvfiletmp/", "corvfiletmp/keep.txt",
                                                         "y.corvelle", "z.corvelle/"}));

    // A disk that fills up mid-write: no package, the old one intact, no folder of ours left.
    const std::string before = TestSupport::readFile(out("y.corvelle"));
    tresult full = kResultOk;
    {
        TestSupport::FileSizeLimit limit(512);
        ASSERT_TRUE(limit.active());
        full = exportTo(out("y.corvelle"));
    }
    EXPECT_EQ(full, kResultFalse);
    EXPECT_EQ(TestSupport::readFile(out("y.corvelle")), before);
    EXPECT_EQ(listTree(out()), (std::vector<std::string>{"corvfiletmp/", "corvfiletmp/keep.txt",
                                                         "y.corvelle", "z.corvelle/"}));
}

TEST_F(ServiceTest, HostNamesStayTextAndNeverBecomeFiles) {
    filter = nullptr;
    edit([](nlohmann::json& session) {
        entry(session["project"]["tracks"], "drums")["name"] = "../../x/\x01y";
        entry(session["mixer"]["channels"], "drums-channel")["title"] = "/etc/passwd";
    });
    start();
    ASSERT_EQ(::mkdir(out().c_str(), 0700), 0);
    ASSERT_EQ(exportTo(out("names.corvelle")), kResultOk);
    EXPECT_EQ(listTree(out()), std::vector<std::string>{"names.corvelle"});
    EXPECT_FALSE(exists(folder->path() + "/x"));
    auto package = RefHostTest::readPackage(out("names.corvelle"));
    ASSERT_TRUE(package);
    // The document can't carry the control character; the rest reads back as it was.
    IMediaProject* read = package->getProject();
    IMediaTrack* drums = nullptr;
    for (uint32 index = 0; index < read->getTrackCount(); ++index)
        if (read->getTrack(index)->getContentType() == kContentAudio)
            drums = read->getTrack(index);
    ASSERT_TRUE(drums);
    EXPECT_EQ(nameOf(drums).rfind("../../x/", 0), 0u) << nameOf(drums);
}

} // namespace ExportTest
} // namespace Halvorn

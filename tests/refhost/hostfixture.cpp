// The shared fixture of the reference host's tests.
#include "hostfixture.h"

#include "package/cvpackagemanager.h"
#include "package/cvpackagemanagerclient.h"
#include "shell/cvservice.h"

#include <sndfile.h>

#include <fstream>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

namespace Halvorn {
namespace RefHostTest {

void writeWav(const std::string& path, int frames, int channels, int sampleRate) {
    SF_INFO info{};
    info.samplerate = sampleRate;
    info.channels = channels;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &info);
    ASSERT_NE(file, nullptr) << sf_strerror(nullptr);
    std::vector<short> samples(size_t(frames) * size_t(channels), 1000);
    sf_writef_short(file, samples.data(), frames);
    sf_close(file);
}

void writeText(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

std::string movieFile(int version, uint32 timescale, uint64 duration) {
    auto number = [](uint64 value, int bytes) {
        std::string out;
        for (int i = bytes - 1; i >= 0; --i)
            out += char((value >> (8 * i)) & 0xFF);
        return out;
    };
    auto box = [&](const std::string& type, const std::string& body) {
        return number(body.size() + 8, 4) + type + body;
    };
    int wide = version == 1 ? 8 : 4;
    std::string header = number(uint64(version) << 24, 4) + number(0, wide) + number(0, wide) +
                         number(timescale, 4) + number(duration, wide) + std::string(80, '\0');
    return box("ftyp", "isom" + number(0, 4)) + box("moov", box("mvhd", header));
}

nlohmann::json exampleSession() {
    std::ifstream in(std::string(CORVELLE_SOURCE_DIR) + "/examples/session.json");
    return nlohmann::json::parse(in);
}

std::string utf8(const char16* text) { return RefHost::toUtf8(RefHost::fromBuffer(text)); }

std::string wavBytes(const std::string& scratch, int frames) {
    writeWav(scratch, frames, 1, 44100);
    std::ostringstream bytes;
    bytes << std::ifstream(scratch, std::ios::binary).rdbuf();
    return bytes.str();
}

IPtr<CvService> startService(IHostContext* host) {
    auto service = IPtr<CvService>::adopt(
        static_cast<CvService*>(static_cast<Quor::IPluginBase*>(createService(nullptr))));
    EXPECT_EQ(service->initialize(host), kResultOk);
    return service;
}

IPtr<IMediaProjectPackage> readPackage(const std::string& path, const std::string& into) {
    auto client = IPtr<CvPackageManagerClient>::adopt(new CvPackageManagerClient);
    const std::pair<int32, const char*> kinds[] = {
        {2, "/Audio"}, {4, "/Video"}, {1, "/Preset"}, {3, "/Midi"}};
    for (auto& [type, suffix] : kinds)
        if (!into.empty())
            client->setPathForFileType(type, String((into + suffix).c_str()));
    CvPackageManager manager;
    return IPtr<IMediaProjectPackage>::adopt(
        manager.readPackage(String(path.c_str()).text16(), client.get()));
}

void HostTest::SetUp() {
    folder = std::make_unique<CorvelleSupport::ScratchFolder>();
    ASSERT_FALSE(folder->path().empty());
    ASSERT_EQ(::mkdir((folder->path() + "/media").c_str(), 0700), 0);
    writeWav(folder->path() + "/media/loop.wav", 44100, 2, 44100);
    writeText(folder->path() + "/media/clip.mp4", movieFile(0, 1000, 2000));
    load(exampleSession());
}

void HostTest::load(const nlohmann::json& session) {
    if (station) {
        RefHost::LedgerReport report = station->close();
        EXPECT_TRUE(report.clean()) << report.text();
    }
    std::string error;
    station = RefHost::Workstation::fromJson(session, folder->path(), error);
    ASSERT_TRUE(station) << error;
    station->progressOut = nullptr;
}

void HostTest::TearDown() {
    if (station) {
        RefHost::LedgerReport report = station->close();
        EXPECT_TRUE(report.clean()) << report.text();
        station.reset();
    }
    folder.reset();
}

IHostProject* HostTest::project() const {
    auto manager = service<IHostProjectManager>();
    return manager ? manager->getActiveProject() : nullptr;
}

std::vector<FUnknown*> HostTest::children(FUnknown* object) {
    std::vector<FUnknown*> result;
    auto timeline = queryInterface<IHostTimelineObject>(object);
    if (!timeline)
        return result;
    auto walk = IPtr<IHostIterator>::adopt(timeline->getChildren());
    while (walk && !walk->isDone())
        result.push_back(walk->next());
    return result;
}

FUnknown* HostTest::track(const std::u16string& name) const {
    for (FUnknown* item : children(project())) {
        auto timeline = queryInterface<IHostTimelineObject>(item);
        if (timeline && timeline->getName() == name)
            return item;
    }
    return nullptr;
}

IHostParameterOwner* HostTest::mixer() const {
    auto registry = service<IHostObjectRegistry>();
    return registry ? registry->findObject("QUOR Mixer", 0) : nullptr;
}

IHostParameterOwner* HostTest::child(IHostParameterOwner* owner, const std::string& name) {
    for (int32 index = 0; owner && index < owner->getChildCount(); ++index)
        if (IHostParameterOwner* found = owner->getChild(index); name == found->getName())
            return found;
    return nullptr;
}

IHostParameterOwner* HostTest::channel(const std::u16string& title) const {
    IHostParameterOwner* list = child(mixer(), "Channels");
    for (int32 index = 0; list && index < list->getChildCount(); ++index)
        if (list->getChild(index)->getTitle() == title)
            return list->getChild(index);
    return nullptr;
}

} // namespace RefHostTest
} // namespace Halvorn

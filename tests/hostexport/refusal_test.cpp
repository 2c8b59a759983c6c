// A host that lacks an interface: each link of the export's chains taken away in turn leaves
// out exactly what depended on it, and the host's references all come back.
#include "exportfixture.h"

#include "common/testfiles.h"
#include "corvelle/mediaautomation.h"
#include "corvelle/mediaclip.h"
#include "corvelle/mediadevice.h"
#include "shell/cvservice.h"

#include <functional>

namespace Halvorn {
namespace ExportTest {

namespace {

struct Link {
    const char* name;
    FUID iid;
    // What the exported model shows without the link; the model may be null.
    std::function<void(IMediaProject*)> check;
};

IMediaChannel* drumsChannel(IMediaProject* model) {
    IMediaTrack* drums = findTrack(model, "Drums");
    return drums ? drums->getChannel() : nullptr;
}

IMediaDevice* device(IMediaProject* model, uint32 type) {
    IMediaChannel* channel = drumsChannel(model);
    for (uint32 index = 0; channel && index < channel->getDeviceCount(); ++index)
        if (channel->getDevice(index)->getDeviceType() == type)
            return channel->getDevice(index);
    return nullptr;
}

uint32 clipEvents(IMediaProject* model, const char* track) {
    IMediaTrack* found = findTrack(model, track);
    return found && found->getClipCount() ? found->getClip(0)->getEventCount() : 99u;
}

const Link kLinks[] = {
    {"project manager", IHostProjectManager::iid, [](IMediaProject* m) { EXPECT_FALSE(m); }},
    {"application info", IHostApplicationInfo::iid, [](IMediaProject* m) { EXPECT_FALSE(m); }},
    {"project timeline", IHostTimelineObject::iid, [](IMediaProject* m) { EXPECT_FALSE(m); }},
    {"object registry", IHostObjectRegistry::iid,
     [](IMediaProject* m) {
         EXPECT_FALSE(findChannel(m, "Main"));
         EXPECT_TRUE(drumsChannel(m));
     }},
    {"channel bus", IHostChannelBus::iid,
     [](IMediaProject* m) {
         EXPECT_EQ(m->getChannelCount(), 0u);
         EXPECT_EQ(findTrack(m, "Drums")->getAutomationCount(), 0u);
     }},
    {"speaker list", IHostSpeakerList::iid,
     [](IMediaProject* m) { EXPECT_EQ(findChannel(m, "Main")->getAudioChannels(), 0u); }},
    {"project tools", IHostProjectTools::iid,
     [](IMediaProject* m) {
         EXPECT_EQ(m->getTrackCount(), 0u);
         EXPECT_EQ(findChannel(m, "Plate")->getDeviceCount(), 0u);
     }},
    {"volume curve", IHostVolumeCurve::iid,
     [](IMediaProject* m) {
         EXPECT_DOUBLE_EQ(findTrack(m, "Drums")->getAutomation(0)->getPoint(0)->getValue(), 1.0);
     }},
    {"mixer settings", IHostMixerSettings::iid,
     [](IMediaProject* m) {
         EXPECT_NEAR(findTrack(m, "Drums")->getAutomation(0)->getPoint(0)->getValue(), 0.432, 1e-5);
     }},
    {"gain scale", IHostGainScale::iid,
     [](IMediaProject* m) { EXPECT_FALSE(drumsChannel(m)->findParameter(kParamVolume)); }},
    {"output routing", IHostOutputRouting::iid,
     [](IMediaProject* m) { EXPECT_EQ(text(findChannel(m, "Plate")->getDestination()), ""); }},
    {"channel modules", IHostChannelModules::iid,
     [](IMediaProject* m) { EXPECT_FALSE(device(m, kDeviceCompressor)); }},
    {"plug-in access", IHostPluginAccess::iid,
     [](IMediaProject* m) {
         IMediaDevice* compressor = device(m, kDeviceCompressor);
         ASSERT_TRUE(compressor);
         // Only the host's own switch is left: the neutral settings need the controller.
         EXPECT_EQ(compressor->getParameters()->getParameterCount(), 1u);
     }},
    {"plug-in state", IHostPluginState::iid,
     [](IMediaProject* m) {
         std::string path = text(device(m, kDeviceQuor3)->getStatePath());
         EXPECT_TRUE(TestSupport::exists(path));
         EXPECT_EQ(TestSupport::readFile(path), "");
     }},
    {"audio file", IHostAudioFile::iid,
     [](IMediaProject* m) { EXPECT_EQ(clipEvents(m, "Drums"), 0u); }},
    {"audio file info", IHostAudioFileInfo::iid,
     [](IMediaProject* m) { EXPECT_EQ(clipEvents(m, "Drums"), 0u); }},
    {"url", IHostUrl::iid, [](IMediaProject* m) { EXPECT_EQ(clipEvents(m, "Drums"), 0u); }},
    {"video clip", IHostVideoClip::iid,
     [](IMediaProject* m) { EXPECT_EQ(clipEvents(m, "Film"), 0u); }},
    {"track channel", IHostTrackChannel::iid,
     [](IMediaProject* m) { EXPECT_FALSE(drumsChannel(m)); }},
    {"automation lane", IHostAutomationLane::iid,
     [](IMediaProject* m) { EXPECT_EQ(findTrack(m, "Drums")->getAutomationCount(), 0u); }},
    {"automation point", IHostAutomationPoint::iid,
     [](IMediaProject* m) { EXPECT_EQ(findTrack(m, "Drums")->getAutomationCount(), 0u); }},
    {"object type", IHostObjectType::iid,
     [](IMediaProject* m) { EXPECT_EQ(m->getTrackCount(), 0u); }},
    {"timeline event", IHostTimelineEvent::iid,
     [](IMediaProject* m) { EXPECT_EQ(findTrack(m, "Drums")->getClipCount(), 0u); }},
    {"audio event", IAudioEvent::iid,
     [](IMediaProject* m) { EXPECT_EQ(findTrack(m, "Drums")->getClipCount(), 0u); }},
    {"MIDI part", IMidiPart::iid,
     [](IMediaProject* m) { EXPECT_EQ(findTrack(m, "Keys")->getClipCount(), 0u); }},
    {"MIDI event", IMidiEvent::iid, [](IMediaProject* m) { EXPECT_EQ(clipEvents(m, "Keys"), 0u); }},
    {"video event", IVideoEvent::iid,
     [](IMediaProject* m) { EXPECT_EQ(findTrack(m, "Film")->getClipCount(), 0u); }},
    {"tempo object", ITempoObject::iid,
     [](IMediaProject* m) { EXPECT_EQ(clipEvents(m, "Tempo"), 0u); }},
    {"signature object", ISignatureObject::iid,
     [](IMediaProject* m) { EXPECT_EQ(clipEvents(m, "Signature"), 0u); }},
};

} // namespace

using RefusalTest = ExportTest;

TEST_F(RefusalTest, EachMissingLinkLeavesOutWhatDependsOnIt) {
    for (const Link& link : kLinks) {
        SCOPED_TRACE(link.name);
        load(RefHostTest::exampleSession());
        station->ledger.refuse(link.iid);
        IPtr<IMediaProject> model = exportModel();
        link.check(model.get());
    }
}

TEST_F(RefusalTest, TheCommandWithoutDialogsSettingsOrProgress) {
    struct Case {
        const char* name;
        FUID iid;
        tresult result;
    } cases[] = {{"path browser", IPathBrowser::iid, kResultFalse},
                 {"url", IHostUrl::iid, kResultFalse},
                 {"defaults", IHostDefaults::iid, kResultOk},
                 {"progress dialog", IHostProgressDialog::iid, kResultOk}};
    for (const Case& missing : cases) {
        SCOPED_TRACE(missing.name);
        load(RefHostTest::exampleSession());
        station->ledger.refuse(missing.iid);
        std::string target = folder->path() + "/" + missing.name + ".corvelle";
        station->dialogs.answers.emplace_back(RefHost::toUtf16(target));
        {
            auto service = IPtr<CvService>::adopt(
                static_cast<CvService*>(static_cast<Quor::IPluginBase*>(createService(nullptr))));
            ASSERT_EQ(service->initialize(host()), kResultOk);
            EXPECT_EQ(service->exportProject(nullptr, station->project->itemFace()),
                      missing.result);
        }
        EXPECT_EQ(TestSupport::exists(target), missing.result == kResultOk);
        EXPECT_FALSE(TestSupport::exists(folder->path() + "/corvfiletmp"));
    }
}

} // namespace ExportTest
} // namespace Halvorn

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

// What the exported model shows without a link; the model may be null.
using Check = std::function<void(IMediaProject*)>;

struct Link {
    const char* name;
    FUID iid;
    Check check;
};

IMediaChannel* drumsChannel(IMediaProject* model) {
    IMediaTrack* drums = findTrack(model, "Drums");
    return drums ? drums->getChannel() : nullptr;
}

IMediaDevice* device(IMediaProject* model, uint32 type) {
    return deviceOfType(drumsChannel(model), type);
}

uint32 clipEvents(IMediaProject* model, const char* track) {
    IMediaTrack* found = findTrack(model, track);
    return found && found->getClipCount() ? found->getClip(0)->getEventCount() : 99u;
}

// The checks that many links share.
Check noModel() {
    return [](IMediaProject* m) { EXPECT_FALSE(m); };
}
Check noTracks() {
    return [](IMediaProject* m) { EXPECT_EQ(m->getTrackCount(), 0u); };
}
Check noClips(const char* track) {
    return [track](IMediaProject* m) { EXPECT_EQ(findTrack(m, track)->getClipCount(), 0u); };
}
Check noEvents(const char* track) {
    return [track](IMediaProject* m) { EXPECT_EQ(clipEvents(m, track), 0u); };
}
Check firstFaderPoint(double value) {
    return [value](IMediaProject* m) {
        EXPECT_NEAR(findTrack(m, "Drums")->getAutomation(0)->getPoint(0)->getValue(), value, 1e-5);
    };
}
Check noDrumsLanes() {
    return [](IMediaProject* m) { EXPECT_EQ(findTrack(m, "Drums")->getAutomationCount(), 0u); };
}

const Link kLinks[] = {
    {"project manager", IHostProjectManager::iid, noModel()},
    {"application info", IHostApplicationInfo::iid, noModel()},
    {"project timeline", IHostTimelineObject::iid, noModel()},
    {"object registry", IHostObjectRegistry::iid,
     [](IMediaProject* m) {
         EXPECT_FALSE(findChannel(m, "Main"));
         EXPECT_TRUE(drumsChannel(m));
     }},
    {"channel bus", IHostChannelBus::iid,
     [](IMediaProject* m) {
         EXPECT_EQ(m->getChannelCount(), 0u);
         noDrumsLanes()(m);
     }},
    {"speaker list", IHostSpeakerList::iid,
     [](IMediaProject* m) { EXPECT_EQ(findChannel(m, "Main")->getAudioChannels(), 0u); }},
    {"project tools", IHostProjectTools::iid,
     [](IMediaProject* m) {
         noTracks()(m);
         EXPECT_EQ(findChannel(m, "Plate")->getDeviceCount(), 0u);
     }},
    // The fader lane's first point, read without the curve and without the mixer's settings.
    {"volume curve", IHostVolumeCurve::iid, firstFaderPoint(1.0)},
    {"mixer settings", IHostMixerSettings::iid, firstFaderPoint(2.0 * 0.216)},
    {"gain scale", IHostGainScale::iid,
     [](IMediaProject* m) { EXPECT_FALSE(drumsChannel(m)->findParameter(kParamVolume)); }},
    {"output routing", IHostOutputRouting::iid,
     [](IMediaProject* m) { EXPECT_EQ(utf8(findChannel(m, "Plate")->getDestination()), ""); }},
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
         std::string path = utf8(device(m, kDeviceQuor3)->getStatePath());
         EXPECT_TRUE(TestSupport::exists(path));
         EXPECT_EQ(TestSupport::readFile(path), "");
     }},
    {"audio file", IHostAudioFile::iid, noEvents("Drums")},
    {"audio file info", IHostAudioFileInfo::iid, noEvents("Drums")},
    {"url", IHostUrl::iid, noEvents("Drums")},
    {"video clip", IHostVideoClip::iid, noEvents("Film")},
    {"track channel", IHostTrackChannel::iid,
     [](IMediaProject* m) { EXPECT_FALSE(drumsChannel(m)); }},
    {"automation lane", IHostAutomationLane::iid, noDrumsLanes()},
    {"automation point", IHostAutomationPoint::iid, noDrumsLanes()},
    {"object type", IHostObjectType::iid, noTracks()},
    {"timeline event", IHostTimelineEvent::iid, noClips("Drums")},
    {"audio event", IAudioEvent::iid, noClips("Drums")},
    {"MIDI part", IMidiPart::iid, noClips("Keys")},
    {"MIDI event", IMidiEvent::iid, noEvents("Keys")},
    {"video event", IVideoEvent::iid, noClips("Film")},
    {"tempo object", ITempoObject::iid, noEvents("Tempo")},
    {"signature object", ISignatureObject::iid, noEvents("Signature")},
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
        EXPECT_EQ(
            RefHostTest::startService(host())->exportProject(nullptr, station->project->itemFace()),
            missing.result);
        EXPECT_EQ(TestSupport::exists(target), missing.result == kResultOk);
        EXPECT_FALSE(TestSupport::exists(folder->path() + "/corvfiletmp"));
    }
}

} // namespace ExportTest
} // namespace Halvorn

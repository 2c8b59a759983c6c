// What the writer makes of a model: the golden documents, every element family at once, then
// each family of project.xml on its own (what is written, what is left out), and odd model
// content that still gives a document that parses.
#include "documentwriting.h"
#include "goldenmodel.h"
#include "model/cvautomation.h"
#include "model/cvdevice.h"
#include "model/cvevent.h"
#include "model/cvtrack.h"
#include "writertestsupport.h"

#include "documents/cvxmlwriter.h"
#include "support/counted.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace Halvorn;
using namespace WriterTest;

namespace {

struct Written {
    ScratchFolder scratch;
    std::string document;
    explicit Written(IMediaProject* project) {
        bool ok = false;
        document = writeProjectDocument(project, scratch / "tree", &ok);
        EXPECT_TRUE(ok);
        std::string message;
        EXPECT_TRUE(isWellFormed(document, &message)) << message;
    }
};

// gtest shows the lines that differ. The metadata skeleton is checked in the packages that carry
// it.
TEST(GoldenDocument, TheGoldenModelGivesTheGoldenProject) {
    ScratchFolder scratch;
    GoldenMedia media(scratch.path());
    Written out(buildGoldenProject(media).get());
    const std::string expected = readFile(std::string(CORVELLE_TEST_DATA) + "/golden/project.xml");
    ASSERT_FALSE(expected.empty());
    EXPECT_EQ(out.document, expected);
}

TEST(ProjectFamily, AnEmptyProjectHasTheFrameAndAnEmptyOuterLaneAndNoNumberIsNonFinite) {
    auto project = newObject<CvProject>("App", "version 3");
    Written out(project.get());
    EXPECT_EQ(out.document, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                            "<Project version=\"1.0\">\n"
                            "\t<Application name=\"App\" version=\"version 3\" />\n"
                            "\t<Transport>\n"
                            "\t\t<Tempo unit=\"bpm\" value=\"120\" />\n"
                            "\t\t<TimeSignature numerator=\"4\" denominator=\"4\" />\n"
                            "\t</Transport>\n"
                            "\t<Structure />\n"
                            "\t<Arrangement>\n"
                            "\t\t<Lanes timeUnit=\"seconds\" />\n"
                            "\t</Arrangement>\n"
                            "</Project>\n")
        << "a lower-case \"version \" stays";

    // A non-finite number is written as zero.
    for (double odd : {INFINITY, -INFINITY, NAN}) {
        auto tempo = newObject<CvParameter>(kUnitBpm, String());
        tempo->setValue(odd);
        project->setTempo(tempo.get());
        EXPECT_TRUE(
            contains(Written(project.get()).document, "<Tempo unit=\"bpm\" value=\"0\" />"));
    }

    ScratchFolder scratch;
    CvXmlWriter writer(String(scratch.path().c_str()));
    EXPECT_FALSE(writer.writeProject(nullptr, nullptr));
    EXPECT_FALSE(writer.writeProject(project.get(), nullptr));
    EXPECT_FALSE(writer.writeMetaData(nullptr));
}

TEST(ProjectFamily, AStreamThatFailsHalfwayMakesTheWriteFalse) {
    // A small document fails when it is passed on at the end, a large one at a block on the
    // way; both must say so.
    auto small = newObject<CvProject>("App", "1");
    auto large = newObject<CvProject>("App", "1");
    for (int i = 0; i < 2000; ++i)
        large->addTrack(newObject<CvTrack>(kContentAudio, String(std::to_string(i).c_str())).get());
    for (CvProject* project : {small.get(), large.get()}) {
        ScratchFolder scratch;
        bool written = true;
        std::string document;
        {
            // The file may grow to 100 bytes, less than any document.
            FileSizeLimit limit(100);
            ASSERT_TRUE(limit.active());
            document = writeProjectDocument(project, scratch.path(), &written);
        }
        EXPECT_FALSE(written);
        EXPECT_LE(document.size(), 100u);
        EXPECT_EQ(document.rfind("<?xml", 0), 0u);
    }
}

TEST(TrackFamily, FoldersNestInStructureAndFlattenInLanes) {
    auto project = newObject<CvProject>("App", "1");
    auto folder = newObject<CvTrack>(kContentTracks, "f");
    auto first = newObject<CvTrack>(kContentAudio, "a");
    auto second = newObject<CvTrack>(kContentNotes, "b");
    folder->addTrack(first.get());
    folder->addTrack(second.get());
    project->addTrack(folder.get());
    // A tempo track inside a folder is no top-level tempo track; a second top-level one is
    // ignored but keeps its lane.
    auto nestedTempo = newObject<CvTrack>(kContentTempo, "t0");
    second->addTrack(nestedTempo.get());
    auto tempo = newObject<CvTrack>(kContentTempo, "t1");
    auto tempoTwin = newObject<CvTrack>(kContentTempo, "t2");
    for (CvTrack* track : {tempo.get(), tempoTwin.get()}) {
        auto clip = newObject<CvClip>(kEventTempo, String());
        auto event = newObject<CvTempoEvent>();
        event->setTempo(track == tempo.get() ? 100.0 : 200.0);
        clip->addEvent(event.get());
        track->addClip(clip.get());
        project->addTrack(track);
    }
    Written out(project.get());
    const std::string& d = out.document;
    EXPECT_TRUE(contains(d, "\t\t<Track contentType=\"tracks\" loaded=\"true\" id=\"f\">\n"
                            "\t\t\t<Track contentType=\"audio\" loaded=\"true\" id=\"a\" />\n"
                            "\t\t\t<Track contentType=\"notes\" loaded=\"true\" id=\"b\" />\n"
                            "\t\t</Track>\n"));
    EXPECT_TRUE(contains(d, "\t\t\t<Lanes track=\"f\" />\n\t\t\t<Lanes track=\"a\" />\n"
                            "\t\t\t<Lanes track=\"b\" />\n\t\t\t<Lanes track=\"t0\" />\n"
                            "\t\t\t<Lanes track=\"t1\">"));
    EXPECT_TRUE(contains(d, "<Lanes track=\"t2\">"));
    EXPECT_EQ(occurrences(d, "<TempoAutomation"), 1u);
    EXPECT_TRUE(contains(d, "<RealPoint time=\"0\" value=\"100\" interpolation=\"hold\" />"));
    EXPECT_FALSE(contains(d, "value=\"200\""));
    EXPECT_FALSE(contains(d, "contentType=\"unknown\"")) << "tempo tracks stand in no Track";
}

// A track that is its own sub-track, and a project of just that track and no transport: a
// model of another implementation that the writer must survive.
struct SelfTrack : Support::Counted<IMediaTrack, IMediaObject> {
    uint32 getContentType() override { return kContentTracks; }
    uint32 getTrackCount() override { return 1; }
    IMediaTrack* getTrack(uint32) override { return this; }
    uint32 getClipCount() override { return 0; }
    IMediaClip* getClip(uint32) override { return nullptr; }
    IMediaChannel* getChannel() override { return nullptr; }
    FUnknown* getReserved() override { return nullptr; }
    bool isLoaded() override { return true; }
    uint32 getAutomationCount() override { return 0; }
    IMediaAutomation* getAutomation(uint32) override { return nullptr; }
    const char16* getId() override { return u"loop"; }
    const char16* getName() override { return u""; }
    IMediaColor* getColor() override { return nullptr; }
};

struct SelfProject : Support::Counted<IMediaProject> {
    SelfTrack track;
    const char16* getApplicationName() override { return u"Other"; }
    const char16* getApplicationVersion() override { return u""; }
    uint32 getTrackCount() override { return 2; }
    IMediaTrack* getTrack(uint32 index) override { return index == 0 ? &track : nullptr; }
    IMediaParameter* getTempo() override { return nullptr; }
    IMediaSignature* getTimeSignature() override { return nullptr; }
    uint32 getChannelCount() override { return 1; }
    IMediaChannel* getChannel(uint32) override { return nullptr; }
    IMediaChannel* findChannel(const char16*) override { return nullptr; }
};

TEST(TrackFamily, AnotherModelWithACycleAndNullsEndsAtTheDepthLimit) {
    SelfProject project;
    Written out(&project);
    const std::string& d = out.document;
    EXPECT_EQ(occurrences(d, "<Track contentType=\"tracks\" loaded=\"true\" id=\"loop\""),
              CvXmlWriter::kMaxTrackDepth);
    EXPECT_EQ(occurrences(d, "<Lanes track=\"loop\" />"), CvXmlWriter::kMaxTrackDepth);
    EXPECT_TRUE(contains(d, "<Application name=\"Other\" />\n\t<Structure>")) << "no transport";
}

TEST(ChannelFamily, ParametersDevicesAndSendsTakeTheirForms) {
    auto project = newObject<CvProject>("App", "1");
    auto bus = newObject<CvChannel>(1, kChannelRoleSubmix, "bus");
    auto vca = newObject<CvChannel>(1, kChannelRoleVca, "vca");
    auto regular = newObject<CvChannel>(1, kChannelRoleRegular, "reg");
    auto other = newObject<CvChannel>(2, kChannelRoleMaster, "kind2");
    // Only a kind-1 master, effect or submix stands directly in Structure.
    for (CvChannel* channel : {bus.get(), vca.get(), regular.get(), other.get()})
        project->addChannel(channel);
    auto solo = newObject<CvParameter>(kUnitNormalized, "");
    solo->setName(kParamSolo);
    solo->setValue(0.0);
    bus->addParameter(solo.get());
    auto au = newObject<CvDevice>(kDeviceAu, kRoleAudioFX, "au"); // left out without trace
    bus->addDevice(au.get());
    auto plugin = newObject<CvDevice>(kDeviceQuor3, kRoleUnknown, "p");
    for (uint32 number : {4205u, 4200u}) {
        auto parameter = newObject<CvParameter>(kUnitUnknown, "");
        parameter->setParameterId(number);
        plugin->addParameter(parameter.get());
    }
    auto bare = newObject<CvDevice>(kDeviceLimiter, kRoleAudioFX, "");
    auto gain = newObject<CvParameter>(kUnitDecibel, "g");
    gain->setName(kParamEqualizerInputGain); // no row of the table matches on a limiter
    bare->addParameter(gain.get());
    auto send = newObject<CvSend>(7, "");
    bus->addSend(send.get());
    // A device of a left-out kind alone leaves an empty Devices; an empty name, role or unit
    // leaves its attribute out rather than cutting the document.
    auto lone = newObject<CvChannel>(1, kChannelRoleEffect, "fx");
    lone->addDevice(au.get());
    lone->addDevice(plugin.get());
    lone->addDevice(bare.get());
    auto onlyAu = newObject<CvChannel>(1, kChannelRoleEffect, "fx2");
    onlyAu->addDevice(au.get());
    project->addChannel(lone.get());
    project->addChannel(onlyAu.get());
    Written out(project.get());
    const std::string& d = out.document;
    EXPECT_TRUE(
        contains(d, "<Channel role=\"submix\" audioChannels=\"1\" id=\"bus\" solo=\"false\">"));
    for (const char* leftOut : {"id=\"vca\"", "id=\"reg\"", "id=\"kind2\"", "AuPlugin"})
        EXPECT_FALSE(contains(d, leftOut));
    EXPECT_TRUE(contains(d, "<Send type=\"pre\" />")) << "every type but post is pre";
    EXPECT_TRUE(contains(d, "<Channel role=\"effect\" audioChannels=\"1\" id=\"fx2\">\n"
                            "\t\t\t<Devices />\n"));
    EXPECT_TRUE(contains(d, "<Quor3Plugin id=\"p\">\n"));
    EXPECT_TRUE(contains(d, "<RealParameter min=\"0\" max=\"1\" value=\"0\" parameterID=\"4\" />"));
    EXPECT_TRUE(
        contains(d, "<RealParameter min=\"0\" max=\"1\" value=\"0\" parameterID=\"-1\" />"));
    EXPECT_TRUE(
        contains(d, "<Limiter deviceRole=\"audioFX\">\n\t\t\t\t\t<Enabled value=\"true\" />"));
}

TEST(ArrangementFamily, ClipsPointsAndTimesTakeTheirForms) {
    auto project = newObject<CvProject>("App", "1");
    auto audio = newObject<CvTrack>(kContentAudio, "a");
    project->addTrack(audio.get());
    auto clip = newObject<CvClip>(kEventAudio, String());
    clip->setStart(1.0 / 3.0);
    clip->setDuration(1234567.891);
    clip->setFadeOutTime(-1.0); // not above 0: no attribute
    audio->addClip(clip.get());
    auto lane = newObject<CvAutomation>(kUnitUnknown, "");
    lane->setTarget("x");
    for (double value : {0.7, 0.0, -1.0}) {
        auto point = newObject<CvAutomationPoint>();
        point->setValue(value);
        lane->addPoint(point.get());
    }
    audio->addAutomation(lane.get());
    auto markers = newObject<CvTrack>(kContentMarkers, "m");
    auto markerClip = newObject<CvClip>(kEventMarker, String());
    auto marker = newObject<CvMarkerEvent>();
    marker->setStart(2147483648.0);
    markerClip->addEvent(marker.get());
    auto notMarker = newObject<CvTempoEvent>(); // on a marker track, but no marker
    markerClip->addEvent(notMarker.get());
    markers->addClip(markerClip.get());
    project->addTrack(markers.get());

    Written out(project.get());
    const std::string& d = out.document;
    // Real(16): the decimals fall as the number grows away from 1, 16 minus its whole digits.
    EXPECT_TRUE(contains(d, "<Clip time=\"0.333333333333333\" duration=\"1234567.8910000001\" "
                            "fadeTimeUnit=\"seconds\" enable=\"true\" />"));
    EXPECT_TRUE(contains(d, "<Points>\n\t\t\t\t\t<Target parameter=\"x\" />\n"
                            "\t\t\t\t\t<BoolPoint time=\"0\" value=\"true\" />\n"
                            "\t\t\t\t\t<BoolPoint time=\"0\" value=\"false\" />\n"
                            "\t\t\t\t\t<BoolPoint time=\"0\" value=\"false\" />\n"))
        << "hold points are Boolean, whatever the lane";
    EXPECT_TRUE(contains(d, "<Markers timeUnit=\"seconds\">\n\t\t\t<Marker time=\"2147483648\" />\n"
                            "\t\t</Markers>"));
}

TEST(OddInput, TextThatXmlRefusesStillGivesADocumentThatParses) {
    const char16 name[] = {u'a', 0xD800, u'"', u'<', 0x01, u'\n', u'&', 0xFFFF, u'\'', 0xDC00, 0};
    auto project = newObject<CvProject>(name, name);
    auto track = newObject<CvTrack>(kContentAudio, name);
    track->setName(name);
    project->addTrack(track.get());
    auto channel = newObject<CvChannel>(1, kChannelRoleMaster, name);
    channel->setName(name);
    channel->setDestination(name);
    auto device = newObject<CvDevice>(kDeviceQuor3, kRoleInstrument, name);
    device->setName(name);
    device->setDeviceId("\xFF\xFE bad \x80 utf-8 \x02");
    device->setStateFile(String(name), false);
    channel->addDevice(device.get());
    project->addChannel(channel.get());
    auto lane = newObject<CvAutomation>(kUnitLinear, name);
    lane->setTarget(name);
    track->addAutomation(lane.get());

    Written out(project.get());
    const std::string& d = out.document;
    const std::string safe =
        "a\xEF\xBF\xBD&quot;&lt;\xEF\xBF\xBD&#10;&amp;\xEF\xBF\xBD&apos;\xEF\xBF\xBD";
    EXPECT_TRUE(contains(d, "<Application name=\"" + safe + "\" version=\"" + safe + "\" />"));
    EXPECT_TRUE(
        contains(d, "deviceID=\"\xEF\xBF\xBD\xEF\xBF\xBD bad \xEF\xBF\xBD utf-8 \xEF\xBF\xBD\""));
    EXPECT_TRUE(contains(d, "<Target parameter=\"" + safe + "\" />"));
    EXPECT_EQ(occurrences(d, safe), 13u) << "every text of the model that was given";
}

} // namespace

// Tracks and clips on import: the steps they make and in which order, folders with their
// sub-tracks, audio clips in both shapes, notes on the timeline, video and markers.
#include "importfixture.h"

#include <algorithm>

using namespace Halvorn;
using namespace Halvorn::HostImportTest;

namespace {

bool contains(const std::vector<std::string>& actions, const std::string& action) {
    return std::find(actions.begin(), actions.end(), action) != actions.end();
}

const char* kStructure =
    "<Track contentType=\"tracks\" id=\"f\" name=\"Folder\">"
    "<Channel id=\"cf\" role=\"submix\" audioChannels=\"2\"/>"
    "<Track contentType=\"audio\" id=\"a\" name=\"Guitar\" color=\"#102030\">"
    "<Channel id=\"ca\" role=\"regular\" audioChannels=\"6\"/></Track>"
    "<Track contentType=\"audio\" id=\"x\" name=\"Effects\"><Channel id=\"cx\" role=\"effect\"/>"
    "</Track>"
    "<Track contentType=\"video\" id=\"v\" name=\"Film\"/>"
    "</Track>"
    "<Track contentType=\"notes\" id=\"n\" name=\"Keys\"><Channel id=\"cn\" role=\"regular\"/>"
    "</Track>"
    "<Track contentType=\"automation\" id=\"auto\" name=\"Automation\"/>";

const char* kArrangement =
    "<Lanes timeUnit=\"seconds\">"
    "<Lanes track=\"a\"><Clips>"
    "<Clip time=\"1\" duration=\"2\" name=\"Single\" fadeInTime=\"0.25\"><Clips>"
    "<Clip time=\"0\" duration=\"2\"><Audio><File path=\"audio/take.wav\"/></Audio></Clip>"
    "</Clips></Clip>"
    "<Clip time=\"4\" duration=\"3\" name=\"Part\" fadeOutTime=\"0.5\" enable=\"false\"><Clips>"
    "<Clip time=\"0\" duration=\"1\"><Audio><File path=\"audio/take.wav\"/></Audio></Clip>"
    "<Clip time=\"1\" duration=\"1\" playStart=\"0.5\"><Audio><File path=\"audio/take.wav\"/>"
    "</Audio></Clip>"
    "<Clip time=\"2\" duration=\"1\"><Audio><File path=\"audio/missing.wav\"/></Audio></Clip>"
    "</Clips></Clip>"
    "</Clips></Lanes>"
    "<Lanes track=\"v\"><Clips><Clip time=\"2\" duration=\"3\" playStart=\"1\" name=\"Shot\">"
    "<Video duration=\"3\"><File path=\"video/film.mp4\"/></Video></Clip></Clips></Lanes>"
    "<Lanes track=\"n\"><Clips><Clip time=\"10\" duration=\"4\" playStart=\"2\" name=\"Riff\">"
    "<Notes><Note time=\"1\" duration=\"0.5\" key=\"60\" vel=\"1\"/>"
    "<Note time=\"2\" duration=\"0.25\" key=\"62\" vel=\"0.999\"/></Notes></Clip>"
    "<Clip time=\"20\" duration=\"1\" name=\"Empty\"/></Clips></Lanes>"
    "</Lanes>"
    "<Markers timeUnit=\"seconds\" name=\"Song\"><Marker time=\"5\" name=\"Chorus\" "
    "color=\"#0000ff\"/></Markers>";

TEST_F(ImportTest, TracksAndClipsMakeTheirStepsInOrder) {
    ASSERT_TRUE(importPackage(
        document(kStructure, kArrangement),
        {{"audio/take.wav", RefHostTest::wavBytes(folder->path() + "/take.wav", 4410)},
         {"video/film.mp4", RefHostTest::movieFile(0, 1000, 3000)}}));

    EXPECT_EQ(stepNames(),
              (std::vector<std::string>{
                  "Import Track",       "Import Track",                       // folder, group
                  "Import Track",       "Import Clip",  "Import Audio Event", // Guitar
                  "Import Audio Event", "Import Clip",  "Move Track",         //
                  "Import Track",       "Import Clip",  "Move Track",         // Film
                  "Import Track",       "Import Clip",  "Import Events",      "Import Clip", // Keys
                  "Import Events",      "Import Track", "Import Events", // markers
                  "Import Track",       "Import Track", // the project's FX and group channels
                  "Import Corvelle"}));
    // A track's name goes to the whole import's session, not to the step's.
    EXPECT_TRUE(contains(actionsOf("Import Corvelle"), "rename track 'Guitar'"));
    EXPECT_FALSE(contains(actionsOf("Import Track"), "rename track 'Keys'"));

    // Sub-tracks sit in their folder, at their model index as far as the folder reaches.
    RefHost::Track* folderTrack = hostTrack(u"Folder");
    ASSERT_TRUE(folderTrack);
    EXPECT_EQ(folderTrack->type, "folder");
    auto inside = itemsOf<RefHost::Track>(folderTrack);
    ASSERT_EQ(inside.size(), 2u);
    EXPECT_EQ(inside[0]->name, u"Guitar");
    EXPECT_EQ(inside[1]->name, u"Film");
    EXPECT_TRUE(folderTrack->selected);
    EXPECT_FALSE(hostTrack(u"Keys")->selected);
    // A track with an effect channel is no track: its channel comes as an FX channel.
    ASSERT_TRUE(hostTrack(u"Effects"));
    EXPECT_EQ(hostTrack(u"Effects")->type, "FX Channel");
    EXPECT_FALSE(hostTrack(u"Automation"));

    RefHost::Track* guitar = inside[0];
    EXPECT_EQ(guitar->color, 0xFF102030u);
    EXPECT_EQ(guitar->channel->speakers, 63u);
    EXPECT_EQ(guitar->channel->title, u"Guitar");
    auto plain = itemsOf<RefHost::AudioEvent>(guitar);
    ASSERT_EQ(plain.size(), 1u);
    EXPECT_EQ(plain[0]->name, u"Single");
    EXPECT_EQ(plain[0]->start, 1.0);
    EXPECT_EQ(plain[0]->fadeIn, 0.25);
    auto parts = itemsOf<RefHost::AudioPart>(guitar);
    ASSERT_EQ(parts.size(), 1u);
    EXPECT_TRUE(parts[0]->muted);
    // The missing file loses its event only; both others share one pool file.
    auto events = itemsOf<RefHost::AudioEvent>(parts[0]);
    ASSERT_EQ(events.size(), 2u);
    EXPECT_EQ(events[1]->offset, 0.5);
    EXPECT_EQ(events[0]->fadeOut, 0.5);
    EXPECT_EQ(events[0]->clip.get(), events[1]->clip.get());
    EXPECT_EQ(events[0]->clip.get(), plain[0]->clip.get());
    EXPECT_EQ(station->pool()->files.size(), 2u); // the take and the video
    EXPECT_EQ(plain[0]->clip->path(), projectFolder() + "/Audio/take.wav");

    auto videos = itemsOf<RefHost::VideoEvent>(inside[1]);
    ASSERT_EQ(videos.size(), 1u);
    EXPECT_EQ(videos[0]->name, u"Shot");
    EXPECT_EQ(videos[0]->offset, 1.0);
    EXPECT_EQ(videos[0]->clip->path(), projectFolder() + "/Video/film.mp4");
    // Its length comes from the file, so that exporting it again has a rate to divide by.
    EXPECT_EQ(videos[0]->clip->getFrameCount(), 144000);

    // Notes stand on the timeline: content 1.0 in a clip at 10.0 playing from 2.0 is at 9.0.
    auto midiParts = itemsOf<RefHost::MidiPart>(hostTrack(u"Keys"));
    ASSERT_EQ(midiParts.size(), 2u);
    EXPECT_EQ(midiParts[0]->name, u"Riff");
    EXPECT_TRUE(midiParts[1]->children().empty());
    auto top = IPtr<IHostEditContext>::adopt(project()->getEditContext(0));
    auto keys = IPtr<IHostEditContext>::adopt(top->contextFor(hostTrack(u"Keys")->itemFace()));
    auto notesContext = IPtr<IHostEditContext>::adopt(
        keys->contextFor(static_cast<IHostTimelineEvent*>(midiParts[0])));
    auto notes = itemsOf<RefHost::NoteEvent>(midiParts[0]);
    ASSERT_EQ(notes.size(), 2u);
    EXPECT_EQ(notes[0]->getStart(notesContext.get()), 9.0);
    EXPECT_EQ(notes[1]->getStart(notesContext.get()), 10.0);
    EXPECT_EQ(notes[1]->getLength(notesContext.get()), 0.25);
    EXPECT_EQ(notes[0]->velocity, 127);
    EXPECT_EQ(notes[1]->velocity, 126);
    EXPECT_EQ(notes[1]->pitch, 62);

    RefHost::Track* markers = hostTrack(u"Song");
    ASSERT_TRUE(markers);
    auto marks = itemsOf<RefHost::MarkerEvent>(markers);
    ASSERT_EQ(marks.size(), 1u);
    EXPECT_EQ(marks[0]->start, 5.0);
    EXPECT_EQ(marks[0]->name, u"Chorus");
    EXPECT_EQ(marks[0]->color, 0xFF0000FFu);
}

} // namespace

// Edit sessions: what an import adds, and the named steps it leaves in the undo history.
#include "hostfixture.h"

namespace Halvorn {
namespace RefHostTest {

TEST_F(HostTest, CommittedStepsAreRecordedWithTheirChanges) {
    size_t before = station->history.size();
    auto first = service<IHostEditSession>();
    auto second = service<IHostEditSession>();
    ASSERT_TRUE(first && second);
    EXPECT_NE(first.get(), second.get());
    first->setMode(2);
    auto top = IPtr<IHostEditContext>::adopt(project()->getEditContext(0));

    IHostObjectType* made = project()->createTrack("audio");
    ASSERT_NE(made, nullptr);
    EXPECT_TRUE(made->isType("audio"));
    EXPECT_EQ(project()->createTrack("harp"), nullptr);
    auto timeline = queryInterface<IHostTimelineEvent>(made);
    timeline->setName(top.get(), u"Bass", second.get());
    timeline->setColor(top.get(), 0xFF102030, nullptr);
    // Not yet in the project, nor its channel in the mixer.
    EXPECT_EQ(track(u"Bass"), nullptr);
    EXPECT_EQ(channel(u"Bass"), nullptr);
    ASSERT_EQ(second->add(top.get(), made), kResultOk);
    ASSERT_EQ(second->commit(project(), u"Import Tracks"), kResultOk);

    ASSERT_NE(track(u"Bass"), nullptr);
    IHostParameterOwner* bass = channel(u"Bass");
    ASSERT_NE(bass, nullptr);
    EXPECT_EQ(queryInterface<IHostTrackChannel>(made)->getMixerChannel(), bass);
    auto modules = queryInterface<IHostChannelModules>(bass);
    EXPECT_NE(modules->findModule("Channel Compressor"), nullptr);

    // An event on the new track, recorded in the first session.
    auto local = IPtr<IHostEditContext>::adopt(top->contextFor(made));
    ASSERT_TRUE(local);
    EXPECT_EQ(local->getObject(), timeline.get());
    auto marker = service<IMarkerObject>();
    EXPECT_TRUE(marker);
    auto event = service<IAudioEvent>();
    auto item = queryInterface<IHostTimelineObject>(event.get());
    item->setStart(local.get(), 2.0, first.get());
    item->setLength(local.get(), 1.0, first.get());
    ASSERT_EQ(first->add(local.get(), IPtr<IAudioEvent>(event).release()), kResultOk);
    // A marker doesn't belong on an audio track; the session drops it.
    EXPECT_NE(first->add(local.get(), IPtr<IMarkerObject>(marker).release()), kResultOk);
    ASSERT_EQ(first->commit(project(), u"Import Corvelle"), kResultOk);

    ASSERT_EQ(station->history.size(), before + 2);
    const RefHost::EditStep& tracks = station->history[before];
    EXPECT_EQ(tracks.name, "Import Tracks");
    ASSERT_EQ(tracks.actions.size(), 2u);
    EXPECT_NE(tracks.actions[0].find("rename"), std::string::npos);
    EXPECT_NE(tracks.actions[1].find("add track 'Bass'"), std::string::npos);
    const RefHost::EditStep& events = station->history[before + 1];
    EXPECT_EQ(events.name, "Import Corvelle");
    EXPECT_EQ(events.actions.size(), 3u);
    EXPECT_EQ(children(made).size(), 1u);

    // A borrowed track goes in with a reference of its own; it is already there.
    IHostTempoTrack* tempo = project()->getTempoTrack();
    tempo->addRef();
    EXPECT_EQ(first->add(top.get(), tempo), kResultOk);
    EXPECT_EQ(children(project()).size(), 7u);
    // Moving changes the order; a change without a commit isn't a step.
    ASSERT_EQ(first->move(top.get(), made, 0), kResultOk);
    auto front = queryInterface<IHostTimelineObject>(children(project())[0]);
    EXPECT_EQ(utf8(front->getName()), "Bass");
    EXPECT_EQ(station->history.size(), before + 2);
}

TEST_F(HostTest, MovingIntoAFolderNestsATopLevelTrack) {
    auto top = IPtr<IHostEditContext>::adopt(project()->getEditContext(0));
    auto session = service<IHostEditSession>();
    IHostObjectType* folderTrack = project()->createTrack("folder");
    IHostObjectType* first = project()->createTrack("audio");
    IHostObjectType* second = project()->createTrack("FX Channel");
    for (IHostObjectType* made : {folderTrack, first, second})
        ASSERT_EQ(session->add(top.get(), made), kResultOk);
    size_t topLevel = children(project()).size();
    auto inFolder = IPtr<IHostEditContext>::adopt(top->contextFor(folderTrack));

    ASSERT_EQ(session->move(inFolder.get(), first, 0), kResultOk);
    // An index past the folder's end puts the track last.
    ASSERT_EQ(session->move(inFolder.get(), second, 5), kResultOk);
    EXPECT_EQ(children(folderTrack), (std::vector<FUnknown*>{first, second}));
    EXPECT_EQ(children(project()).size(), topLevel - 2);
    // A folder never goes into itself or below itself.
    EXPECT_NE(session->move(inFolder.get(), folderTrack, 0), kResultOk);
    auto inFirst = IPtr<IHostEditContext>::adopt(top->contextFor(first));
    EXPECT_NE(session->move(inFirst.get(), folderTrack, 0), kResultOk);
    ASSERT_EQ(session->move(top.get(), first, 0), kResultOk);
    EXPECT_EQ(children(project())[0], first);

    // A new channel has its send slots; renaming its track renames it in the mixer.
    IHostParameterOwner* fx = queryInterface<IHostTrackChannel>(second)->getMixerChannel();
    IHostParameterOwner* sends = child(fx, "Sends");
    ASSERT_NE(sends, nullptr);
    EXPECT_EQ(sends->getChildCount(), int32(RefHost::Channel::kSendSlots));
    queryInterface<IHostTimelineObject>(second)->setName(top.get(), u"Plate 2", nullptr);
    EXPECT_EQ(channel(u"Plate 2"), fx);
}

} // namespace RefHostTest
} // namespace Halvorn

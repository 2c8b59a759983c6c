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
    EXPECT_EQ(queryInterface<IHostTrackChannel>(made)->getMixerChannel(), channel(u"Bass"));

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

    // Each step keeps what its session did; a change without a commit isn't a step.
    ASSERT_EQ(station->history.size(), before + 2);
    EXPECT_EQ(station->history[before].name, "Import Tracks");
    EXPECT_EQ(station->history[before].actions.size(), 2u);
    EXPECT_EQ(station->history[before + 1].name, "Import Corvelle");
    EXPECT_EQ(station->history[before + 1].actions.size(), 3u);
    EXPECT_EQ(children(made).size(), 1u);
    ASSERT_EQ(first->move(top.get(), made, 0), kResultOk);
    EXPECT_EQ(station->history.size(), before + 2);
}

// Where a move past a folder's end lands, and that a new channel has its send slots and follows
// its track's name, are the import suites' (sub-tracks, sends, channel titles).
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
    ASSERT_EQ(session->move(inFolder.get(), second, 5), kResultOk);
    EXPECT_EQ(children(folderTrack), (std::vector<FUnknown*>{first, second}));
    EXPECT_EQ(children(project()).size(), topLevel - 2);
    // A folder never goes into itself or below itself.
    EXPECT_NE(session->move(inFolder.get(), folderTrack, 0), kResultOk);
    auto inFirst = IPtr<IHostEditContext>::adopt(top->contextFor(first));
    EXPECT_NE(session->move(inFirst.get(), folderTrack, 0), kResultOk);
    ASSERT_EQ(session->move(top.get(), first, 0), kResultOk);
    EXPECT_EQ(children(project())[0], first);
}

} // namespace RefHostTest
} // namespace Halvorn

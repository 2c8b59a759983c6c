// The timeline as export and import use it: track types, part times, tempo, the pool and files.
#include "hostfixture.h"

namespace Halvorn {
namespace RefHostTest {

// The values the exporter reads (order, nesting, fades, file facts, notes, video) are checked
// through the export suites; here what those don't reach: the direct type call, the end of an
// iteration, times inside a part, and opening files.
TEST_F(HostTest, TracksTypesIterationPartTimesAndFileOpening) {
    std::vector<FUnknown*> tracks = children(project());
    ASSERT_EQ(tracks.size(), 6u);
    const char* types[] = {"tempo", "signature", "audio", "instrument", "folder", "FX Channel"};
    for (size_t i = 0; i < tracks.size(); ++i) {
        // Objects out of the track list are called as IHostObjectType without a query.
        auto* type = static_cast<IHostObjectType*>(tracks[i]);
        EXPECT_TRUE(type->isType(types[i])) << types[i];
        EXPECT_FALSE(type->isType("marker")) << types[i];
    }
    auto walk =
        IPtr<IHostIterator>::adopt(queryInterface<IHostTimelineObject>(project())->getChildren());
    for (int i = 0; i < 6; ++i)
        walk->next();
    EXPECT_TRUE(walk->isDone());
    EXPECT_EQ(walk->next(), nullptr);

    auto top = IPtr<IHostEditContext>::adopt(project()->getEditContext(0));
    FUnknown* drums = track(u"Drums");
    auto trackContext = IPtr<IHostEditContext>::adopt(top->contextFor(drums));
    FUnknown* part = children(drums)[1];
    auto partContext = IPtr<IHostEditContext>::adopt(trackContext->contextFor(part));
    auto fill = queryInterface<IHostTimelineObject>(children(part)[0]);
    EXPECT_TRUE(fill->isMuted());
    // Stored 0.5 into the part at 4.0, read on the project's timeline.
    EXPECT_DOUBLE_EQ(fill->getStart(partContext.get()), 4.5);
    EXPECT_DOUBLE_EQ(fill->getOffset(partContext.get()), 0.25);

    auto audioFile = service<IHostAudioFile>();
    auto url = service<IHostUrl>();
    ASSERT_EQ(url->setPath(RefHost::toUtf16(folder->path() + "/media/loop.wav").c_str(), 0),
              kResultOk);
    EXPECT_FALSE(queryInterface<IHostAudioFileInfo>(audioFile.get()));
    ASSERT_TRUE(audioFile->open(url.get()));
    EXPECT_TRUE(queryInterface<IHostAudioFileInfo>(audioFile.get()));
    ASSERT_EQ(url->setPath(u"/no/such/file.wav", 0), kResultOk);
    EXPECT_FALSE(service<IHostAudioFile>()->open(url.get()));
}

// The events themselves, the signature at 0, the project folder and the application's name are
// read through the export and import suites; here the answers past a change.
TEST_F(HostTest, TempoAndSignatureAnswerAtPositions) {
    IHostTempoTrack* tempo = project()->getTempoTrack();
    ASSERT_NE(tempo, nullptr);
    EXPECT_FALSE(tempo->isTempoFixed());
    EXPECT_FLOAT_EQ(tempo->getTempoAt(0.0), 120.0f);
    EXPECT_FLOAT_EQ(tempo->getTempoAt(9.0), 96.0f);
    QuorSignatureRecord record{};
    ASSERT_TRUE(project()->getSignatureTrack()->getSignatureAt(20.0, &record));
    // The record is read by offset: numerator at 56, denominator at 58.
    const auto* bytes = reinterpret_cast<const uint8*>(&record);
    EXPECT_EQ(bytes[56] | bytes[57] << 8, 6);
    EXPECT_EQ(bytes[58] | bytes[59] << 8, 8);
}

TEST_F(HostTest, AnEmptySessionHasNoTempoTrackAndNoFolder) {
    load(nlohmann::json::object());
    EXPECT_EQ(project()->getTempoTrack(), nullptr);
    EXPECT_EQ(project()->getSignatureTrack(), nullptr);
    EXPECT_EQ(project()->getProjectFolder(), nullptr);
    EXPECT_TRUE(children(project()).empty());
    EXPECT_EQ(project()->getEditContext(1), nullptr);
}

TEST_F(HostTest, ThePoolFindsItsFilesAndTakesNewClipsOnce) {
    IHostMediaPool* pool = project()->getMediaPool();
    ASSERT_NE(pool, nullptr);
    auto url = service<IHostUrl>();
    EXPECT_NE(url.get(), service<IHostUrl>().get());
    // A path in the native form takes either separator.
    char16 buffer[IHostUrl::kPathSize];
    ASSERT_EQ(url->setPath(u"C:\\Users\\me\\Documents", 1), kResultOk);
    ASSERT_EQ(url->getPath(buffer), kResultOk);
    EXPECT_EQ(utf8(buffer), "C:/Users/me/Documents");

    std::string other = folder->path() + "/media/other.wav";
    writeWav(other, 480, 1, 48000);
    ASSERT_EQ(url->setPath(RefHost::toUtf16(other).c_str(), 0), kResultOk);
    EXPECT_EQ(pool->findFile(url.get()), nullptr);
    auto clip = service<IHostAudioClip>();
    auto media = queryInterface<IHostMediaFile>(clip.get());
    ASSERT_TRUE(media);
    EXPECT_EQ(media->getLocation(), nullptr);
    ASSERT_EQ(media->load(url.get()), kResultOk);
    EXPECT_EQ(pool->addFile(media.get(), 0), kResultOk);
    EXPECT_NE(pool->addFile(media.get(), 0), kResultOk);
    EXPECT_EQ(pool->findFile(url.get()), media.get());

    auto video = service<IHostVideoClip>();
    auto videoFile = queryInterface<IHostMediaFile>(video.get());
    // A sound file is no video, nor is a file that isn't there.
    EXPECT_NE(videoFile->load(url.get()), kResultOk);
    ASSERT_EQ(url->setPath(u"/no/such/clip.mp4", 0), kResultOk);
    EXPECT_NE(videoFile->load(url.get()), kResultOk);
    EXPECT_NE(media->load(url.get()), kResultOk);
}

} // namespace RefHostTest
} // namespace Halvorn

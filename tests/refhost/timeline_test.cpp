// The timeline as export reads it: tracks, their types, parts, events, media and tempo.
#include "hostfixture.h"

#include <cmath>

namespace Halvorn {
namespace RefHostTest {

namespace {
std::vector<std::string> names(const std::vector<FUnknown*>& items) {
    std::vector<std::string> result;
    for (FUnknown* item : items) {
        auto timeline = queryInterface<IHostTimelineObject>(item);
        result.push_back(timeline ? utf8(timeline->getName()) : "?");
    }
    return result;
}

std::string pathOf(IHostUrl* url) {
    char16 buffer[IHostUrl::kPathSize];
    return url && url->getPath(buffer) == kResultOk ? utf8(buffer) : "";
}
} // namespace

TEST_F(HostTest, TracksIterateOnceEachInOrderAndTellTheirTypeDirectly) {
    std::vector<FUnknown*> tracks = children(project());
    EXPECT_EQ(names(tracks),
              (std::vector<std::string>{"Tempo", "Signature", "Drums", "Keys", "Extras", "Plate"}));
    const char* types[] = {"tempo", "signature", "audio", "instrument", "folder", "FX Channel"};
    for (size_t i = 0; i < tracks.size(); ++i) {
        // Objects out of the track list are called as IHostObjectType without a query.
        auto* type = static_cast<IHostObjectType*>(tracks[i]);
        EXPECT_TRUE(type->isType(types[i])) << types[i];
        EXPECT_FALSE(type->isType("marker")) << types[i];
    }
    EXPECT_EQ(names(children(tracks[4])), (std::vector<std::string>{"Film", "Markers"}));
    EXPECT_EQ(names(children(children(tracks[4])[1])),
              (std::vector<std::string>{"Verse", "Chorus"}));

    auto walk =
        IPtr<IHostIterator>::adopt(queryInterface<IHostTimelineObject>(project())->getChildren());
    for (int i = 0; i < 6; ++i)
        walk->next();
    EXPECT_TRUE(walk->isDone());
    EXPECT_EQ(walk->next(), nullptr);

    auto tools = service<IHostProjectTools>();
    EXPECT_TRUE(tools->isTrackLoaded(tracks[2]));
    EXPECT_FALSE(tools->isTrackLoaded(children(tracks[4])[1]));
}

TEST_F(HostTest, PartsEventsAndMediaReadThroughTheirInterfaces) {
    IPtr<IHostEditContext> top = IPtr<IHostEditContext>::adopt(project()->getEditContext(0));
    ASSERT_TRUE(top);
    FUnknown* drums = track(u"Drums");
    auto trackContext = IPtr<IHostEditContext>::adopt(top->contextFor(drums));
    ASSERT_TRUE(trackContext);
    std::vector<FUnknown*> items = children(drums);
    ASSERT_EQ(items.size(), 2u);

    auto loop = queryInterface<IAudioEvent>(items[0]);
    ASSERT_TRUE(loop);
    EXPECT_DOUBLE_EQ(loop->getFadeIn(trackContext.get()), 0.01);
    EXPECT_DOUBLE_EQ(loop->getFadeOut(trackContext.get()), 0.1);
    std::string path = pathOf(loop->getClip()->getFile()->getLocation());
    EXPECT_EQ(path, folder->path() + "/media/loop.wav");

    auto audioFile = service<IHostAudioFile>();
    auto url = service<IHostUrl>();
    ASSERT_EQ(url->setPath(RefHost::toUtf16(path).c_str(), 0), kResultOk);
    EXPECT_FALSE(queryInterface<IHostAudioFileInfo>(audioFile.get()));
    ASSERT_TRUE(audioFile->open(url.get()));
    auto info = queryInterface<IHostAudioFileInfo>(audioFile.get());
    ASSERT_TRUE(info);
    EXPECT_EQ(info->getChannelCount(), 2);
    EXPECT_EQ(info->getFrameCount(), 44100);
    EXPECT_FLOAT_EQ(info->getSampleRate(), 44100.0f);
    ASSERT_EQ(url->setPath(u"/no/such/file.wav", 0), kResultOk);
    EXPECT_FALSE(service<IHostAudioFile>()->open(url.get()));

    auto part = queryInterface<IHostTimelineEvent>(items[1]);
    uint32 argb = 0;
    EXPECT_EQ(part->getColor(trackContext.get(), &argb), kResultOk);
    EXPECT_EQ(argb, 0xFF20A040u);
    auto partContext = IPtr<IHostEditContext>::adopt(trackContext->contextFor(items[1]));
    std::vector<FUnknown*> inner = children(items[1]);
    ASSERT_EQ(inner.size(), 1u);
    auto fill = queryInterface<IHostTimelineObject>(inner[0]);
    EXPECT_TRUE(fill->isMuted());
    // Stored 0.5 into the part at 4.0, read on the project's timeline.
    EXPECT_DOUBLE_EQ(fill->getStart(partContext.get()), 4.5);
    EXPECT_DOUBLE_EQ(fill->getOffset(partContext.get()), 0.25);
    auto tools = service<IHostProjectTools>();
    double ratio = 0.0;
    EXPECT_EQ(tools->getEventStretch(inner[0], &ratio), kResultOk);
    EXPECT_DOUBLE_EQ(ratio, 0.5);
    EXPECT_TRUE(tools->isEventWarped(inner[0]));
    EXPECT_FALSE(tools->isEventWarped(items[0]));

    std::vector<FUnknown*> notes = children(children(track(u"Keys"))[0]);
    ASSERT_EQ(notes.size(), 2u);
    auto note = queryInterface<IMidiEvent>(notes[1]);
    EXPECT_EQ(note->getPitch(), 64);
    EXPECT_EQ(note->getVelocity(), 90);
    EXPECT_EQ(note->getChannel(), 1);

    FUnknown* film = children(track(u"Extras"))[0];
    auto video = queryInterface<IVideoEvent>(children(film)[0]);
    ASSERT_TRUE(video);
    EXPECT_EQ(pathOf(video->getClip()->getLocation()), folder->path() + "/media/clip.mp4");
    auto clip = queryInterface<IHostVideoClip>(video->getClip());
    EXPECT_EQ(clip->getFrameCount(), 96000);
    EXPECT_FLOAT_EQ(clip->getSampleRate(), 48000.0f);
}

TEST_F(HostTest, TempoAndSignatureAnswerAtPositions) {
    IHostTempoTrack* tempo = project()->getTempoTrack();
    ASSERT_NE(tempo, nullptr);
    EXPECT_FALSE(tempo->isTempoFixed());
    EXPECT_FLOAT_EQ(tempo->getTempoAt(0.0), 120.0f);
    EXPECT_FLOAT_EQ(tempo->getTempoAt(9.0), 96.0f);
    std::vector<FUnknown*> events = children(tempo);
    ASSERT_EQ(events.size(), 2u);
    EXPECT_FLOAT_EQ(queryInterface<ITempoObject>(events[1])->getTempo(), 96.0f);

    IHostSignatureTrack* signature = project()->getSignatureTrack();
    QuorSignatureRecord record{};
    ASSERT_TRUE(signature->getSignatureAt(0.0, &record));
    EXPECT_EQ(record.numerator, 4);
    EXPECT_EQ(record.denominator, 4);
    ASSERT_TRUE(signature->getSignatureAt(20.0, &record));
    // The record is read by offset: numerator at 56, denominator at 58.
    const auto* bytes = reinterpret_cast<const uint8*>(&record);
    EXPECT_EQ(bytes[56] | bytes[57] << 8, 6);
    EXPECT_EQ(bytes[58] | bytes[59] << 8, 8);

    char16 buffer[IHostUrl::kPathSize];
    ASSERT_NE(project()->getProjectFolder(), nullptr);
    ASSERT_EQ(project()->getProjectFolder()->getPath(buffer), kResultOk);
    EXPECT_EQ(utf8(buffer), folder->path() + "/project");

    auto info = queryInterface<IHostApplicationInfo>(host());
    EXPECT_EQ(utf8(info->getApplicationName()), "Quor Studio");
    EXPECT_EQ(utf8(info->getApplicationVersion()), "5.2.1");
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
    std::string loop = folder->path() + "/media/loop.wav";
    ASSERT_EQ(url->setPath(RefHost::toUtf16(loop).c_str(), 0), kResultOk);
    IHostMediaFile* found = pool->findFile(url.get());
    ASSERT_NE(found, nullptr);
    EXPECT_TRUE(queryInterface<IHostAudioClip>(found));

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
    // A sound file is no video; a file with a movie header is.
    EXPECT_NE(videoFile->load(url.get()), kResultOk);
    std::string movie = folder->path() + "/media/movie.mp4";
    writeText(movie, movieFile(0, 1000, 1000));
    ASSERT_EQ(url->setPath(RefHost::toUtf16(movie).c_str(), 0), kResultOk);
    EXPECT_EQ(videoFile->load(url.get()), kResultOk);
    ASSERT_EQ(url->setPath(u"/no/such/clip.mp4", 0), kResultOk);
    EXPECT_NE(videoFile->load(url.get()), kResultOk);
    EXPECT_NE(media->load(url.get()), kResultOk);
}

} // namespace RefHostTest
} // namespace Halvorn

// A video file's length as the host learns it from the file when a clip loads it.
#include "hostfixture.h"

namespace Halvorn {
namespace RefHostTest {

TEST_F(HostTest, AVideoClipLearnsItsLengthFromTheMovieHeader) {
    auto load = [&](const std::string& name, const std::string& bytes, int64* frames) {
        std::string path = folder->path() + "/" + name;
        writeText(path, bytes);
        auto url = service<IHostUrl>();
        url->setPath(RefHost::toUtf16(path).c_str(), 0);
        auto clip = service<IHostVideoClip>();
        bool loaded = queryInterface<IHostMediaFile>(clip.get())->load(url.get()) == kResultOk;
        *frames = clip->getFrameCount();
        return loaded;
    };
    // The short header, at the export's rate of 48 kHz, is the export and import suites'.
    int64 frames = 0;
    ASSERT_TRUE(load("long.mov", movieFile(1, 600, 600ull * 3600 * 30), &frames));
    EXPECT_EQ(frames, 48000ll * 3600 * 30);
    // No header, no length, a cut box or a box claiming more than the file: no clip.
    EXPECT_FALSE(load("empty.mp4", "", &frames));
    EXPECT_FALSE(load("zero.mp4", movieFile(0, 1000, 0), &frames));
    EXPECT_FALSE(load("noscale.mp4", movieFile(0, 0, 1000), &frames));
    std::string whole = movieFile(0, 1000, 2500);
    EXPECT_FALSE(load("cut.mp4", whole.substr(0, whole.size() - 90), &frames));
    std::string liar = whole;
    liar[0] = char(0x7F);
    EXPECT_FALSE(load("liar.mp4", liar, &frames));
}

} // namespace RefHostTest
} // namespace Halvorn

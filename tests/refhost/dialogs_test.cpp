// Scripted file dialogs. The progress dialog and the settings store are checked through the
// import and export commands that draw and keep them.
#include "hostfixture.h"

namespace Halvorn {
namespace RefHostTest {

namespace {
struct Delegate : IPathBrowser::IDelegate {
    void onStarted() override { ++started; }
    void onFinished(bool ok, IHostUrlList* result) override {
        accepted = ok;
        count = result ? result->getCount() : -1;
        auto url =
            result && count > 0 ? queryInterface<IHostUrl>(result->getAt(0)) : IPtr<IHostUrl>();
        char16 buffer[IHostUrl::kPathSize];
        if (url && url->getPath(buffer) == kResultOk)
            path = utf8(buffer);
    }
    int started = 0;
    bool accepted = false;
    int32 count = -1;
    std::string path;
};

// Shows one dialog in mode as the service does; the delegate tells the outcome.
void browse(IHostContext* host, int32 mode, Delegate& delegate) {
    void* out = nullptr;
    ASSERT_EQ(host->getInterface(IPathBrowser::iid, &out), kResultOk);
    auto browser = IPtr<IPathBrowser>::adopt(static_cast<IPathBrowser*>(out));
    auto options = IPtr<IHostPathBrowserOptions>::adopt(browser->createOptions());
    ASSERT_TRUE(options);
    options->setTitle(u"Save Corvelle File");
    ASSERT_EQ(host->getInterface(IHostUrl::iid, &out), kResultOk);
    auto start = IPtr<IHostUrl>::adopt(static_cast<IHostUrl*>(out));
    ASSERT_EQ(start->setPath(u"C:\\Users\\me\\Documents", 1), kResultOk);
    ASSERT_EQ(options->setStartPath(start.get()), kResultOk);
    ASSERT_EQ(options->addFileType(u"Corvelle", u"corvelle", u"corvelle", nullptr), kResultOk);
    ASSERT_EQ(browser->browse(mode, options.get(), &delegate), kResultOk);
}
} // namespace

TEST_F(HostTest, FileDialogsGiveTheScriptedAnswersInOrder) {
    station->dialogs.answers.push_back(u"/music/out/song.corvelle");
    station->dialogs.answers.push_back(std::nullopt);
    Delegate saved, cancelled, unscripted;
    browse(host(), IPathBrowser::kSaveFile, saved);
    browse(host(), IPathBrowser::kOpenFile, cancelled);
    browse(host(), IPathBrowser::kOpenFile, unscripted);
    EXPECT_TRUE(saved.accepted);
    EXPECT_EQ(saved.started, 1);
    EXPECT_EQ(saved.count, 1);
    EXPECT_EQ(saved.path, "/music/out/song.corvelle");
    EXPECT_FALSE(cancelled.accepted);
    EXPECT_EQ(cancelled.count, 0);
    EXPECT_TRUE(cancelled.path.empty());
    EXPECT_FALSE(unscripted.accepted);

    ASSERT_EQ(station->dialogs.shown.size(), 3u);
    const auto& shown = station->dialogs.shown[0];
    EXPECT_EQ(shown.mode, IPathBrowser::kSaveFile);
    EXPECT_EQ(RefHost::toUtf8(shown.title), "Save Corvelle File");
    EXPECT_EQ(RefHost::toUtf8(shown.startPath), "C:/Users/me/Documents");
    ASSERT_EQ(shown.fileTypes.size(), 1u);
    EXPECT_EQ(RefHost::toUtf8(shown.fileTypes[0]), "Corvelle (*.corvelle)");
    EXPECT_EQ(station->dialogs.shown[1].mode, IPathBrowser::kOpenFile);
}

} // namespace RefHostTest
} // namespace Halvorn

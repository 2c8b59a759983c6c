// The reference host's user interface: scripted file dialogs, a progress dialog that draws a
// bar on stderr, and the default-settings store.
#pragma once

#include "hostapi/hostcontext.h"
#include "hostapi/hostdialogs.h"
#include "ledger.h"
#include "media.h"

#include <cstdio>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace Halvorn {
namespace RefHost {

// What the user "answers" to the file dialogs, in order: a path, or nothing for cancel.
// Also what the dialogs were shown with, for a test to look at.
struct DialogScript {
    struct Shown {
        int32 mode = 0;
        std::u16string title;
        std::u16string startPath;
        std::vector<std::u16string> fileTypes;
    };
    std::deque<std::optional<std::u16string>> answers;
    std::vector<Shown> shown;
};

class BrowserOptions : public HostObject, public IHostPathBrowserOptions {
public:
    explicit BrowserOptions(Ledger& ledger) : HostObject(ledger, "browser options") {}

    SUPPORT_COUNTED_UNKNOWN
    tresult setTitle(const char16* title) override;
    tresult setStartPath(IHostUrl* url) override;
    tresult addFileType(const char16* description, const char16* extension,
                        const char16* extensionAgain, const void* extra) override;

    DialogScript::Shown shown;

protected:
    FUnknown* faceFor(const FUID& iid) override;
};

class UrlList : public HostObject, public IHostUrlList {
public:
    explicit UrlList(Ledger& ledger) : HostObject(ledger, "location list") {}

    SUPPORT_COUNTED_UNKNOWN
    int32 getCount() override { return int32(urls.size()); }
    FUnknown* getAt(int32 index) override;

    std::vector<IPtr<Url>> urls;

protected:
    FUnknown* faceFor(const FUID& iid) override;
    void dispose() override { urls.clear(); }
};

// Answers each browse with the next scripted answer; without one the user cancels.
class PathBrowser : public HostObject, public IPathBrowser {
public:
    PathBrowser(Ledger& ledger, DialogScript& script)
        : HostObject(ledger, "path browser"), script_(script) {}

    SUPPORT_COUNTED_UNKNOWN
    IHostPathBrowserOptions* createOptions() override;
    tresult browse(int32 mode, IHostPathBrowserOptions* options, IDelegate* delegate) override;

protected:
    FUnknown* faceFor(const FUID& iid) override;

private:
    DialogScript& script_;
};

// Draws "[#####.....] title: text" on its stream, one step further at each text.
class ProgressDialog : public HostObject, public IHostProgressDialog {
public:
    ProgressDialog(Ledger& ledger, std::FILE* out)
        : HostObject(ledger, "progress dialog"), out_(out) {}

    SUPPORT_COUNTED_UNKNOWN
    tresult setup(int32 kind, const char16* title, uint8* cancelFlag) override;
    tresult setText(const char16* text) override;
    tresult open() override;
    tresult close() override;

    std::u16string title;
    std::vector<std::u16string> texts;
    bool isOpen = false;
    uint8* cancelFlag = nullptr;

protected:
    FUnknown* faceFor(const FUID& iid) override;

private:
    void draw();
    std::FILE* out_;
};

class Defaults : public HostObject, public IHostDefaults {
public:
    explicit Defaults(Ledger& ledger) : HostObject(ledger, "defaults") {}

    SUPPORT_COUNTED_UNKNOWN
    tresult setString(const char8* section, const char8* key, const char16* value) override;
    const char16* getString(const char8* section, const char8* key) override;

    std::map<std::string, std::map<std::string, std::u16string>> values;

protected:
    FUnknown* faceFor(const FUID& iid) override;
};

} // namespace RefHost
} // namespace Halvorn

// Scripted file dialogs, the progress bar and the default-settings store.
#include "dialogs.h"
#include "text.h"

namespace Halvorn {
namespace RefHost {

tresult BrowserOptions::setTitle(const char16* title) {
    shown.title = fromBuffer(title);
    return kResultOk;
}

tresult BrowserOptions::setStartPath(IHostUrl* url) {
    auto* location = hostCast<Url>(url);
    if (!location)
        return kInvalidArgument;
    shown.startPath = location->path;
    return kResultOk;
}

tresult BrowserOptions::addFileType(const char16* description, const char16* extension,
                                    const char16* extensionAgain, const void*) {
    if (!description || !extension)
        return kInvalidArgument;
    shown.fileTypes.push_back(fromBuffer(description) + u" (*." + fromBuffer(extension) + u")");
    if (extensionAgain && fromBuffer(extensionAgain) != fromBuffer(extension))
        shown.fileTypes.back() += u" (*." + fromBuffer(extensionAgain) + u")";
    return kResultOk;
}

FUnknown* BrowserOptions::faceFor(const FUID& iid) {
    return iid == FUnknown::iid ? static_cast<IHostPathBrowserOptions*>(this) : nullptr;
}

FUnknown* UrlList::getAt(int32 index) {
    if (index < 0 || size_t(index) >= urls.size())
        return nullptr;
    return static_cast<IHostUrl*>(urls[size_t(index)].get());
}

FUnknown* UrlList::faceFor(const FUID& iid) {
    return iid == FUnknown::iid ? static_cast<IHostUrlList*>(this) : nullptr;
}

IHostPathBrowserOptions* PathBrowser::createOptions() {
    return ledger().make<BrowserOptions>().release();
}

tresult PathBrowser::browse(int32 mode, IHostPathBrowserOptions* face, IDelegate* delegate) {
    auto* options = hostCast<BrowserOptions>(face);
    if (!options || !delegate || (mode != kOpenFile && mode != kSaveFile))
        return kInvalidArgument;
    DialogScript::Shown shown = options->shown;
    shown.mode = mode;
    script_.shown.push_back(shown);
    std::optional<std::u16string> answer;
    if (!script_.answers.empty()) {
        answer = script_.answers.front();
        script_.answers.pop_front();
    }
    auto list = ledger().make<UrlList>();
    if (answer)
        list->urls.push_back(ledger().make<Url>(*answer));
    delegate->onStarted();
    delegate->onFinished(answer.has_value(), list.get());
    return kResultOk;
}

FUnknown* PathBrowser::faceFor(const FUID& iid) {
    if (iid == FUnknown::iid || iid == IPathBrowser::iid)
        return static_cast<IPathBrowser*>(this);
    return nullptr;
}

tresult ProgressDialog::setup(int32, const char16* text, uint8* flag) {
    title = fromBuffer(text);
    cancelFlag = flag;
    return kResultOk;
}

tresult ProgressDialog::setText(const char16* text) {
    texts.push_back(fromBuffer(text));
    if (isOpen)
        draw();
    return kResultOk;
}

tresult ProgressDialog::open() {
    isOpen = true;
    draw();
    return kResultOk;
}

tresult ProgressDialog::close() {
    if (isOpen && out_)
        std::fprintf(out_, "\n");
    isOpen = false;
    cancelFlag = nullptr;
    return kResultOk;
}

void ProgressDialog::draw() {
    if (!out_)
        return;
    // The host is not told how far a command is; the bar fills one cell per step and wraps.
    constexpr size_t kWidth = 20;
    size_t filled = texts.size() % (kWidth + 1);
    std::string bar(filled, '#');
    bar.resize(kWidth, '.');
    std::string line = toUtf8(title);
    if (!texts.empty())
        line += ": " + toUtf8(texts.back());
    std::fprintf(out_, "\r[%s] %-60.60s", bar.c_str(), line.c_str());
    std::fflush(out_);
}

FUnknown* ProgressDialog::faceFor(const FUID& iid) {
    if (iid == FUnknown::iid || iid == IHostProgressDialog::iid)
        return static_cast<IHostProgressDialog*>(this);
    return nullptr;
}

tresult Defaults::setString(const char8* section, const char8* key, const char16* value) {
    if (!section || !key || !value)
        return kInvalidArgument;
    values[section][key] = value;
    return kResultOk;
}

const char16* Defaults::getString(const char8* section, const char8* key) {
    if (!section || !key)
        return nullptr;
    auto found = values.find(section);
    if (found == values.end())
        return nullptr;
    auto entry = found->second.find(key);
    return entry == found->second.end() ? nullptr : entry->second.c_str();
}

FUnknown* Defaults::faceFor(const FUID& iid) {
    if (iid == FUnknown::iid || iid == IHostDefaults::iid)
        return static_cast<IHostDefaults*>(this);
    return nullptr;
}

} // namespace RefHost
} // namespace Halvorn

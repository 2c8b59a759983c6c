// The host's file dialogs: options, start folder, file type and the delegate's answer.
#include "shell/cvhostdialogs.h"

#include "corvelle/ptr.h"
#include "foundation/specialfolders.h"
#include "hostapi/hostmedia.h"

namespace Halvorn {

using namespace Quor;

namespace {

String slashed(String path) {
    path.replace(String("\\"), String("/"));
    return path;
}

String showDialog(IHostContext* host, int32 mode, const String& title, const DialogFileType& type,
                  const String& startFolder) {
    if (!host)
        return {};
    void* face = nullptr;
    if (host->getInterface(IPathBrowser::iid, &face) != kResultOk || !face)
        return {};
    auto browser = IPtr<IPathBrowser>::adopt(static_cast<IPathBrowser*>(face));
    auto options = IPtr<IHostPathBrowserOptions>::adopt(browser->createOptions());
    if (!options)
        return {};
    options->setTitle(title.text16());
    face = nullptr;
    if (host->getInterface(IHostUrl::iid, &face) != kResultOk || !face)
        return {};
    auto start = IPtr<IHostUrl>::adopt(static_cast<IHostUrl*>(face));
    if (start->setPath(startFolder.text16(), 1) != kResultOk ||
        options->setStartPath(start.get()) != kResultOk)
        return {};
    if (options->addFileType(type.description.text16(), type.extension.text16(),
                             type.extension.text16(), nullptr) != kResultOk)
        return {};
    CvHostPathBrowserDelegate delegate;
    if (browser->browse(mode, options.get(), &delegate) != kResultOk || delegate.path().isEmpty())
        return {};
    return slashed(delegate.path());
}

} // namespace

DialogFileType corvelleFileType() { return DialogFileType{String("corvelle"), String("Corvelle")}; }

void CvHostPathBrowserDelegate::onFinished(bool accepted, IHostUrlList* result) {
    path_ = String();
    if (!accepted || !result || result->getCount() < 1)
        return;
    auto url = ::Halvorn::queryInterface<IHostUrl>(result->getAt(0));
    if (!url)
        return;
    char16 buffer[IHostUrl::kPathSize] = {};
    if (url->getPath(buffer) == kResultOk) {
        buffer[IHostUrl::kPathSize - 1] = 0;
        path_ = String(buffer);
    }
}

String showSaveDialog(IHostContext* host, const String& title, const DialogFileType& type,
                      const String& startFolder) {
    return showDialog(host, IPathBrowser::kSaveFile, title, type, startFolder);
}

String showOpenDialog(IHostContext* host, const String& title, const DialogFileType& type,
                      const String& startFolder) {
    return showDialog(host, IPathBrowser::kOpenFile, title, type, startFolder);
}

String getDocumentsFolder() { return getDocumentsFolderPath(); }

} // namespace Halvorn

// The host's file dialogs as the commands use them, and the folder they first start in.
#pragma once

#include "foundation/fstring.h"
#include "hostapi/hostcontext.h"
#include "hostapi/hostdialogs.h"
#include "model/cvobject.h"

namespace Halvorn {

// The one file type a dialog offers.
struct DialogFileType {
    String extension;
    String description;
};

// The package type both commands offer: "Corvelle" files with the extension "corvelle".
DialogFileType corvelleFileType();

// Takes the path the dialog delivered. The host owns no reference to it: it lives on the
// stack of the dialog function for one browse.
class CvHostPathBrowserDelegate : public CvObject, public Quor::IPathBrowser::IDelegate {
public:
    CV_DECLARE_TYPE(CvHostPathBrowserDelegate, CvObject)

    CvHostPathBrowserDelegate() = default;
    ~CvHostPathBrowserDelegate() override = default;

    void onStarted() override {}
    void onFinished(bool accepted, Quor::IHostUrlList* result) override;

    const String& path() const { return path_; }

private:
    String path_;
};

// Each gives the chosen path with "/" separators, or an empty string when the user cancelled
// or the host lacks what a dialog needs.
String showSaveDialog(Quor::IHostContext* host, const String& title, const DialogFileType& type,
                      const String& startFolder);
String showOpenDialog(Quor::IHostContext* host, const String& title, const DialogFileType& type,
                      const String& startFolder);

// The user's documents folder, where the dialogs start before a folder is remembered.
String getDocumentsFolder();

} // namespace Halvorn

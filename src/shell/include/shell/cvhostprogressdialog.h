// CvHostProgressDialog: the host's progress dialog for the span of one command.
#pragma once

#include "foundation/fstring.h"
#include "hostapi/hostcontext.h"
#include "hostapi/hostdialogs.h"
#include "model/cvobject.h"

namespace Halvorn {

// Lives on the stack of a command and is never moved: the host keeps the address of the
// cancel flag until the dialog closes. Without the host's dialog every operation does nothing.
class CvHostProgressDialog : public CvObject {
public:
    CV_DECLARE_TYPE(CvHostProgressDialog, CvObject)

    CvHostProgressDialog(Quor::IHostContext* host, const String& title);
    // Closes the dialog and gives it back.
    ~CvHostProgressDialog() override;

    void start();
    void setText(const String& text);

private:
    Quor::IHostProgressDialog* dialog_ = nullptr;
    // Nothing reads it: a running command doesn't stop.
    uint8 cancelFlag_ = 0;
};

} // namespace Halvorn

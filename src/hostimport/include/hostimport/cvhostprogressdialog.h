// CvHostProgressDialog: the host's progress dialog for the span of one command.
#pragma once

#include "foundation/fstring.h"
#include "hostimport/importutilities.h"

namespace Halvorn {

// Lives on the stack of a command; the dialog stays open until the object dies. Does nothing
// when the host has no progress dialog. Not copyable: the host keeps cancelFlag's address.
class CvHostProgressDialog {
public:
    CvHostProgressDialog(IHostContext* host, const String& title)
        : dialog_(CvHostUtilities::getHostInterface<IHostProgressDialog>(host)) {
        if (dialog_)
            dialog_->setup(3, title.text16(), &cancelFlag_);
    }
    ~CvHostProgressDialog() {
        if (dialog_)
            dialog_->close();
    }
    CvHostProgressDialog(const CvHostProgressDialog&) = delete;
    CvHostProgressDialog& operator=(const CvHostProgressDialog&) = delete;

    void start() {
        if (dialog_)
            dialog_->open();
    }
    void setText(const String& text) {
        if (dialog_)
            dialog_->setText(text.text16());
    }

private:
    IPtr<IHostProgressDialog> dialog_;
    // Handed to the host and never read: a command runs to its end.
    uint8 cancelFlag_ = 0;
};

} // namespace Halvorn

// CvHostProgressDialog: set-up, open, text and close of the host's progress dialog.
#include "shell/cvhostprogressdialog.h"

namespace Halvorn {

using namespace Quor;

CvHostProgressDialog::CvHostProgressDialog(IHostContext* host, const String& title) {
    void* face = nullptr;
    if (!host || host->getInterface(IHostProgressDialog::iid, &face) != kResultOk)
        return;
    dialog_ = static_cast<IHostProgressDialog*>(face);
    if (dialog_)
        dialog_->setup(3, title.text16(), &cancelFlag_);
}

CvHostProgressDialog::~CvHostProgressDialog() {
    if (!dialog_)
        return;
    dialog_->close();
    dialog_->release();
}

void CvHostProgressDialog::start() {
    if (dialog_)
        dialog_->open();
}

void CvHostProgressDialog::setText(const String& text) {
    if (dialog_)
        dialog_->setText(text.text16());
}

} // namespace Halvorn

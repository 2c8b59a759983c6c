// The host's dialogs: the file dialog service with its options and results, and progress.
//
// Declarations only, shared by the service and our reference host. The host's tables hold
// operations that nobody here calls: one between setStartPath and addFileType, and others
// between those of IHostProgressDialog. Only the called ones are declared, in their order.
#pragma once

#include "corvelle/base.h"

namespace Halvorn {
namespace Quor {

struct IHostUrl;

// The locations a file dialog delivered. No identifier.
struct IHostUrlList : FUnknown {
    virtual int32 getCount() = 0;
    // Borrowed, valid while the list lives; answers for IHostUrl.
    virtual FUnknown* getAt(int32 index) = 0;
    // No identifier: this face is never asked for through queryInterface, and naming
    // I::iid for it doesn't compile.
    struct iid;
};

// What a file dialog shows. No identifier.
struct IHostPathBrowserOptions : FUnknown {
    virtual tresult setTitle(const char16* title) = 0;
    virtual tresult setStartPath(IHostUrl* url) = 0;
    // The extension goes in twice; extra is null.
    virtual tresult addFileType(const char16* description, const char16* extension,
                                const char16* extensionAgain, const void* extra) = 0;
    // No identifier: this face is never asked for through queryInterface, and naming
    // I::iid for it doesn't compile.
    struct iid;
};

// The host's file dialog service.
struct IPathBrowser : FUnknown {
    enum Mode : int32 { kOpenFile = 0, kSaveFile = 2 };

    // Told of the dialog's outcome. It has no FUnknown part: the caller owns it.
    struct IDelegate {
        virtual void onStarted() = 0;
        // result is borrowed for the call; null or empty when nothing was chosen.
        virtual void onFinished(bool accepted, IHostUrlList* result) = 0;
    };

    // One reference, the caller releases; null when the host can't make one.
    virtual IHostPathBrowserOptions* createOptions() = 0;
    // Shows the dialog and calls delegate before it returns.
    virtual tresult browse(int32 mode, IHostPathBrowserOptions* options, IDelegate* delegate) = 0;

    static constexpr FUID iid = FUID::make(0x5F1AD119, 0x1EF2, 0x431F, 0xB768, 0xD090E0204D2D);
};

// The host's progress dialog. kind is 3; the host keeps cancelFlag's address until close.
struct IHostProgressDialog : FUnknown {
    virtual tresult setup(int32 kind, const char16* title, uint8* cancelFlag) = 0;
    virtual tresult setText(const char16* text) = 0;
    virtual tresult open() = 0;
    virtual tresult close() = 0;

    static constexpr FUID iid = FUID::make(0x197F1B0A, 0x1444, 0x477F, 0x9365, 0xD3C6F0B5ACA2);
};

} // namespace Quor
} // namespace Halvorn

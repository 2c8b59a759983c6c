// The "corvelle-host export" and "corvelle-host import" commands: a session's project exported
// to a package, or a package imported into it, through the plug-in module.
#pragma once

#include <ostream>
#include <string>

namespace Halvorn {
namespace RefHost {

struct FilterRequest {
    enum class Command { kExport, kImport };
    Command command = Command::kExport;
    std::string modulePath;
    std::string sessionPath;
    // What the save dialog (export) or the open dialog (import) answers; ignored when cancel is
    // set.
    std::string target;
    // Where to write the session after the command; empty writes nothing.
    std::string sessionOut;
    // The dialog answers with nothing, as a user's cancel.
    bool cancel = false;
};

// Loads the session and the module, creates the service, gives it the host and calls
// exportProject or importProject with the scripted dialog. 0 exactly when the command gave
// kResultOk and the host's references all came back; else 1 with a one-line message on err.
// Progress texts go to stderr.
int runFilterCommand(const FilterRequest& request, std::ostream& out, std::ostream& err);

} // namespace RefHost
} // namespace Halvorn

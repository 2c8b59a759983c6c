// The "corvelle-host export" command: a session exported through the plug-in module.
#pragma once

#include <ostream>
#include <string>

namespace Halvorn {
namespace RefHost {

struct ExportRequest {
    std::string modulePath;
    std::string sessionPath;
    // What the save dialog answers; ignored when cancel is set.
    std::string target;
    // Where to write the session after the command; empty writes nothing.
    std::string sessionOut;
    // The save dialog answers with nothing, as a user's cancel.
    bool cancel = false;
};

// Loads the session and the module, creates the service, gives it the host and calls
// exportProject with the scripted save dialog. 0 exactly when the command gave kResultOk and
// the host's references all came back; else 1 with a one-line message on err. Progress texts
// go to stderr.
int runExport(const ExportRequest& request, std::ostream& out, std::ostream& err);

} // namespace RefHost
} // namespace Halvorn

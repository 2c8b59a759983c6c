// Loading the plug-in module as a host does, and walking its factory.
#pragma once

#include <ostream>
#include <string>

namespace Halvorn {
namespace RefHost {

// Loads the module, calls InitDll, prints the factory record and every class row in its three
// forms, creates the service with the host context when the module offers it, releases
// everything, calls ExitDll and prints the leak check. 0 when all went well, else 1 with a
// message on err.
int runPlugin(const std::string& modulePath, std::ostream& out, std::ostream& err);

// This program's version beside the one the module gives in its class row, or "unknown" and
// why when the module can't be loaded.
std::string versionLine(const std::string& modulePath);

} // namespace RefHost
} // namespace Halvorn

// corvelle-host: the reference host as a program. It loads the plug-in module as a host does,
// runs its export and import commands, and shows sessions.
#include "filterrunner.h"
#include "pluginrunner.h"
#include "showtree.h"
#include "support/parseerror.h"
#include "workstation.h"

#include <CLI/CLI.hpp>

#include <iostream>

using namespace Halvorn::RefHost;

namespace {

int show(const std::string& path) {
    std::string error;
    auto station = Workstation::load(path, error);
    if (!station) {
        std::cerr << "corvelle-host: " << error << "\n";
        return 1;
    }
    printTree(*station, std::cout);
    LedgerReport report = station->close();
    if (!report.clean()) {
        std::cerr << "corvelle-host: " << report.text();
        return 1;
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app{"corvelle-host: an in-memory workstation that loads the Corvelle plug-in "
                 "module as a host does"};
    app.require_subcommand(1);
    std::string module = CORVELLE_DEFAULT_MODULE;
    app.set_version_flag(
        "--version", [&module] { return versionLine(module); },
        "Print the version and the module's class row version, and exit");
    app.footer("Exit codes: 0 success, 1 the work failed, 2 usage error.\n");

    std::string session;
    CLI::App* showCommand =
        app.add_subcommand("show", "Load a session file and print it as a tree");
    showCommand->add_option("SESSION", session, "The session file (JSON)")->required();
    CLI::App* pluginCommand = app.add_subcommand(
        "plugin", "Load the module, walk its factory, create the service, let everything go and "
                  "check the host's references");
    pluginCommand->add_option("--module", module, "The plug-in module to load")
        ->capture_default_str();
    FilterRequest exportRequest;
    CLI::App* exportCommand = app.add_subcommand(
        "export", "Load a session and export its project to a package through the plug-in's "
                  "export command, with the save dialog answering OUT");
    exportCommand->add_option("SESSION", exportRequest.sessionPath, "The session file (JSON)")
        ->required();
    exportCommand->add_option("OUT", exportRequest.target, "The package the save dialog answers")
        ->required();
    FilterRequest importRequest;
    importRequest.command = FilterRequest::Command::kImport;
    CLI::App* importCommand = app.add_subcommand(
        "import", "Load a session and import a package into its project through the plug-in's "
                  "import command, with the open dialog answering PKG; the media go below the "
                  "session's project folder");
    importCommand->add_option("SESSION", importRequest.sessionPath, "The session file (JSON)")
        ->required();
    importCommand->add_option("PKG", importRequest.target, "The package the open dialog answers")
        ->required();
    for (auto [command, request] :
         {std::pair{exportCommand, &exportRequest}, std::pair{importCommand, &importRequest}}) {
        command->add_option("--session-out", request->sessionOut,
                            "Write the session as it stands after the command to this file");
        command->add_flag("--cancel", request->cancel,
                          "The dialog answers with nothing, as a user's cancel");
        command->add_option("--module", module, "The plug-in module to load")
            ->capture_default_str();
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return CorvelleSupport::answerParseError(app, error, "corvelle-host");
    }
    try {
        if (*showCommand)
            return show(session);
        if (*exportCommand || *importCommand) {
            FilterRequest& request = *exportCommand ? exportRequest : importRequest;
            request.modulePath = module;
            return runFilterCommand(request, std::cout, std::cerr);
        }
        return runPlugin(module, std::cout, std::cerr);
    } catch (const std::exception& error) {
        std::cerr << "corvelle-host: " << error.what() << "\n";
        return 1;
    }
}

// corvelle: reads, lists, checks, repacks and makes project packages through the library's
// host-free door.
#include "conventions.h"
#include "corvelle/factory.h"
#include "corvelle/ptr.h"
#include "corvelle/version.h"
#include "examplemodel.h"
#include "interruption.h"
#include "listing.h"
#include "packagecheck.h"
#include "projectcommands.h"
#include "repack.h"
#include "support/classversion.h"
#include "support/parseerror.h"

#include <CLI/CLI.hpp>

#include <exception>
#include <iostream>

namespace {

using namespace CorvelleTool;

// This program's version beside the one the linked module gives in its class row.
std::string versionLine() {
    std::string moduleVersion = "unknown";
    InitDll();
    if (auto factory = Halvorn::IPtr<Halvorn::IPluginFactory>::adopt(GetPluginFactory())) {
        const std::string row = CorvelleSupport::classRowVersion(*factory);
        if (!row.empty())
            moduleVersion = row;
    }
    ExitDll();
    return std::string("corvelle ") + CORVELLE_VERSION + " (module class version " + moduleVersion +
           ")";
}

struct Arguments {
    std::string package;
    std::string folder;
    std::string output;
    bool json = false;
};

CLI::App* addPackageCommand(CLI::App& app, const char* name, const char* description,
                            Arguments& arguments) {
    CLI::App* command = app.add_subcommand(name, description);
    command->add_option("PKG", arguments.package, "The package file")->required();
    return command;
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app{"Reads and writes Corvelle project packages (.corvelle) without a host.",
                 "corvelle"};
    app.require_subcommand(1);
    app.footer(kExitCodesHelp);
    app.set_version_flag("--version", versionLine, "Print the version and exit");

    Arguments args;
    CLI::App* infoCommand = addPackageCommand(
        app, "info",
        "Print a short summary: application, tempo, signature and what the project "
        "holds",
        args);
    infoCommand->add_flag("--json", args.json, "Print the summary as JSON");
    CLI::App* dumpCommand =
        addPackageCommand(app, "dump", "Print the whole project model tree", args);
    dumpCommand->add_flag("--json", args.json, "Print the tree as JSON");
    CLI::App* lsCommand = addPackageCommand(
        app, "ls", "List the archive's entries with their sizes, like unzip -l", args);
    lsCommand->add_flag("--json", args.json, "Print the list as JSON");
    CLI::App* extractCommand = addPackageCommand(
        app, "extract",
        "Read a package and copy its media to DIR/Audio, DIR/Video, DIR/Preset "
        "and DIR/Midi; exit 3 when a media file could not be placed or the read refused one",
        args);
    extractCommand->add_option("DIR", args.folder, "The folder that receives the media")
        ->required();

    CLI::App* checkCommand = addPackageCommand(
        app, "check",
        "Validate a package as a careful receiver would and list what a lenient reader drops "
        "or repairs, each with a severity, a stable code and a place; exit 3 for warnings, "
        "1 for errors",
        args);
    checkCommand->add_flag("--json", args.json, "Print the findings as JSON");

    CLI::App* repackCommand = app.add_subcommand(
        "repack", "Read a package and write it again as a package of this library's own form; "
                  "exit 3 when a media file could not be carried over");
    repackCommand->add_option("IN", args.package, "The package to read")->required();
    repackCommand->add_option("OUT", args.output, "The package to write; replaced when it exists")
        ->required();

    CLI::App* newCommand =
        app.add_subcommand("new", "Write a small example project, built in code, as a package");
    newCommand->add_option("OUT", args.output, "The package to write; replaced when it exists")
        ->required();

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return CorvelleSupport::answerParseError(app, error, "corvelle");
    }
    while (args.folder.size() > 1 && args.folder.back() == '/')
        args.folder.pop_back();
    Leftovers leftovers;
    if (!args.output.empty())
        leftovers.targets.push_back(args.output);
    if (!args.folder.empty())
        leftovers.mediaFolders.push_back(args.folder);
    return runRemovingLeftovers(leftovers, [&]() {
        try {
            if (*infoCommand)
                return info(args.package, args.json);
            if (*dumpCommand)
                return dump(args.package, args.json);
            if (*lsCommand)
                return listEntries(args.package, args.json);
            if (*checkCommand)
                return check(args.package, args.json);
            if (*repackCommand)
                return repack(args.package, args.output);
            if (*newCommand)
                return writeExamplePackage(args.output);
            return extract(args.package, args.folder);
        } catch (const std::exception& error) {
            std::cerr << "corvelle: " << error.what() << "\n";
            return kExitFailed;
        }
    });
}

// corvelle: reads, repacks and makes project packages through the library's host-free door.
#include "corvelle/mediaproject.h"
#include "corvelle/package.h"
#include "examplemodel.h"
#include "interruption.h"
#include "modelwalk.h"
#include "outline.h"
#include "packagereading.h"
#include "repack.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>
#include <filesystem>
#include <iostream>

namespace {

using namespace CorvelleTool;
using Halvorn::IMediaProject;
using Halvorn::IMediaProjectPackage;
using Halvorn::IPtr;

constexpr int kCannotRead = 1;
// The project was read, but something of it was refused or failed on the way.
constexpr int kCasesMet = 3;

// The project of a package read, or null after the one error line. The library tells no
// reason, so the line tells the likely one.
IMediaProject* projectOf(const IPtr<IMediaProjectPackage>& package, const std::string& path) {
    IMediaProject* project = package ? package->getProject() : nullptr;
    if (!project) {
        std::error_code error;
        const char* reason = std::filesystem::is_regular_file(path, error)
                                 ? "not a zip archive with a readable project.xml"
                                 : "no such file";
        std::cerr << "corvelle: cannot read package '" << path << "': " << reason << "\n";
    }
    return project;
}

// Prints each case on stderr; true when one of them lost a medium that was there.
bool reportCases(const std::vector<ReadCase>& cases) {
    bool lost = false;
    for (const ReadCase& readCase : cases) {
        std::cerr << "corvelle: " << describe(readCase) << "\n";
        lost = lost || readCase.what == Halvorn::kReadCopyFailed;
    }
    return lost;
}

int info(const std::string& path) {
    std::vector<ReadCase> cases;
    const auto package = readPackage(path, {}, cases);
    (void)reportCases(cases);
    IMediaProject* project = projectOf(package, path);
    if (!project)
        return kCannotRead;
    const ModelDump dump = walkProject(*project);
    const auto& tree = dump.tree;
    const ModelSummary& s = dump.summary;
    std::cout << "Application:       " << tree["application"]["name"].get<std::string>() << " "
              << tree["application"]["version"].get<std::string>() << "\n";
    if (tree.contains("tempo"))
        std::cout << "Tempo:             " << tree["tempo"]["value"].get<double>() << " bpm\n";
    if (tree.contains("signature"))
        std::cout << "Signature:         " << tree["signature"]["numerator"].dump() << "/"
                  << tree["signature"]["denominator"].dump() << "\n";
    std::cout << "Tracks:            " << s.tracks << "\n"
              << "Clips:             " << s.clips << "\n"
              << "Events:            " << s.events << "\n"
              << "Channels:          " << s.channels << "\n"
              << "Devices:           " << s.devices << "\n"
              << "Automation points: " << s.automationPoints << "\n"
              << "Media files:       " << s.mediaFiles.size() << "\n";
    return 0;
}

int dump(const std::string& path, bool json) {
    std::vector<ReadCase> cases;
    const auto package = readPackage(path, {}, cases);
    (void)reportCases(cases);
    IMediaProject* project = projectOf(package, path);
    if (!project)
        return kCannotRead;
    const ModelDump dump = walkProject(*project);
    if (json)
        std::cout << dump.tree.dump(2) << "\n";
    else
        std::cout << renderOutline(dump.tree);
    return 0;
}

int extract(const std::string& path, const std::string& folder) {
    std::vector<ReadCase> cases;
    const auto package = readPackage(path, folder, cases);
    const bool lost = reportCases(cases);
    IMediaProject* project = projectOf(package, path);
    if (!project)
        return kCannotRead;
    // After the read every medium that was found lies below the folder; the others keep the
    // path the document gave them.
    const ModelDump dump = walkProject(*project);
    size_t copied = 0;
    for (const std::string& file : dump.summary.mediaFiles) {
        const bool inFolder = file.compare(0, folder.size() + 1, folder + "/") == 0;
        copied += inFolder ? 1 : 0;
        std::cout << (inFolder ? "" : "missing: ") << file << "\n";
    }
    std::cout << copied << " of " << dump.summary.mediaFiles.size() << " media files in " << folder
              << "\n";
    return lost ? kCasesMet : 0;
}

// Reads the package with its media into a folder of the private temporary folder, which goes
// with it, and lists what the read refused or could not do.
int check(const std::string& path) {
    std::vector<ReadCase> cases;
    std::error_code error;
    const std::filesystem::path media = std::filesystem::temp_directory_path(error) / "media";
    const auto package = readPackage(path, error ? std::string() : media.string(), cases);
    for (const ReadCase& readCase : cases)
        std::cout << describe(readCase) << "\n";
    if (!projectOf(package, path))
        return kCannotRead;
    if (!cases.empty())
        return kCasesMet;
    std::cout << "ok\n";
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app{"Reads and writes Corvelle project packages (.corvelle) without a host.",
                 "corvelle"};
    app.require_subcommand(1);

    std::string package;
    std::string folder;
    bool json = false;
    CLI::App* infoCommand = app.add_subcommand(
        "info", "Print a short summary: application, tempo, signature and what the project holds");
    infoCommand->add_option("PKG", package, "The package file")->required();
    CLI::App* dumpCommand = app.add_subcommand("dump", "Print the whole project model tree");
    dumpCommand->add_option("PKG", package, "The package file")->required();
    dumpCommand->add_flag("--json", json, "Print the tree as JSON");
    CLI::App* extractCommand = app.add_subcommand(
        "extract", "Read a package and copy its media to DIR/Audio, DIR/Video, DIR/Preset and "
                   "DIR/Midi");
    extractCommand->add_option("PKG", package, "The package file")->required();
    extractCommand->add_option("DIR", folder, "The folder that receives the media")->required();

    CLI::App* checkCommand = app.add_subcommand(
        "check", "Read a package with its media into a temporary folder and list every path, "
                 "entry or copy that was refused or failed; exit 3 when there is one");
    checkCommand->add_option("PKG", package, "The package file")->required();

    std::string output;
    CLI::App* repackCommand = app.add_subcommand(
        "repack", "Read a package and write it again as a package of this library's own form");
    repackCommand->add_option("IN", package, "The package to read")->required();
    repackCommand->add_option("OUT", output, "The package to write; replaced when it exists")
        ->required();

    CLI::App* newCommand =
        app.add_subcommand("new", "Write a small example project, built in code, as a package");
    newCommand->add_option("OUT", output, "The package to write; replaced when it exists")
        ->required();

    CLI11_PARSE(app, argc, argv);
    while (folder.size() > 1 && folder.back() == '/')
        folder.pop_back();
    Leftovers leftovers;
    if (!output.empty())
        leftovers.targets.push_back(output);
    if (!folder.empty())
        leftovers.mediaFolders.push_back(folder);
    return runRemovingLeftovers(leftovers, [&]() {
        try {
            if (*infoCommand)
                return info(package);
            if (*dumpCommand)
                return dump(package, json);
            if (*checkCommand)
                return check(package);
            if (*repackCommand)
                return repack(package, output);
            if (*newCommand)
                return writeExamplePackage(output);
            return extract(package, folder);
        } catch (const std::exception& error) {
            std::cerr << "corvelle: " << error.what() << "\n";
            return kCannotRead;
        }
    });
}

// The reading commands, each an exit code from conventions.h.
#include "projectcommands.h"

#include "conventions.h"
#include "corvelle/mediaproject.h"
#include "mediaplacement.h"
#include "modelwalk.h"
#include "outline.h"
#include "packagereading.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <optional>

namespace CorvelleTool {

namespace {

using Halvorn::IMediaProject;
using Halvorn::IPtr;
using nlohmann::ordered_json;

// The JSON outputs open with their format version.
ordered_json withFormat(const ordered_json& fields) {
    ordered_json out = {{"format", kJsonFormat}};
    for (const auto& field : fields.items())
        out[field.key()] = field.value();
    return out;
}

ordered_json summaryJson(const ModelDump& dump) {
    const ModelSummary& s = dump.summary;
    ordered_json out = {{"application", dump.tree["application"]}};
    if (dump.tree.contains("tempo"))
        out["tempo"] = dump.tree["tempo"]["value"];
    if (dump.tree.contains("signature"))
        out["signature"] = {{"numerator", dump.tree["signature"]["numerator"]},
                            {"denominator", dump.tree["signature"]["denominator"]}};
    out["tracks"] = s.tracks;
    out["clips"] = s.clips;
    out["events"] = s.events;
    out["channels"] = s.channels;
    out["devices"] = s.devices;
    out["automationPoints"] = s.automationPoints;
    out["mediaFiles"] = s.mediaFiles;
    return withFormat(out);
}

void printSummary(const ModelDump& dump) {
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
}

// The model of a package read without its media, or nothing after the one error line. What
// the read refused or skipped is said on stderr and added to cases.
std::optional<ModelDump> readModel(const std::string& path, std::vector<ReadCase>& cases,
                                   bool wholeTree) {
    const auto package = readPackage(path, {}, cases);
    IMediaProject* project = projectOf(package, path, cases);
    if (!project)
        return std::nullopt;
    return walkProject(*project, wholeTree);
}

} // namespace

int info(const std::string& path, bool json) {
    std::vector<ReadCase> cases;
    const std::optional<ModelDump> model = readModel(path, cases, false);
    if (!model)
        return kExitFailed;
    if (json)
        std::cout << summaryJson(*model).dump(2) << "\n";
    else
        printSummary(*model);
    return cases.empty() ? kExitSuccess : kExitWarnings;
}

int dump(const std::string& path, bool json) {
    std::vector<ReadCase> cases;
    const std::optional<ModelDump> model = readModel(path, cases, true);
    if (!model)
        return kExitFailed;
    if (json)
        std::cout << withFormat(model->tree).dump(2) << "\n";
    else
        std::cout << renderOutline(model->tree);
    return cases.empty() ? kExitSuccess : kExitWarnings;
}

int extract(const std::string& path, const std::string& folder) {
    std::vector<ReadCase> cases;
    const auto package = readPackage(path, folder, cases);
    IMediaProject* project = projectOf(package, path, cases);
    if (!project)
        return kExitFailed;
    const ModelSummary summary = walkProject(*project, false).summary;
    const std::vector<std::string> unplaced = unplacedMedia(summary.mediaFiles, folder);
    for (const std::string& file : summary.mediaFiles)
        if (std::find(unplaced.begin(), unplaced.end(), file) == unplaced.end())
            std::cout << file << "\n";
    std::cout << summary.mediaFiles.size() - unplaced.size() << " of " << summary.mediaFiles.size()
              << " media files in " << folder << "\n";
    return warnUnplaced(unplaced, path) == kExitSuccess && cases.empty() ? kExitSuccess
                                                                         : kExitWarnings;
}

} // namespace CorvelleTool

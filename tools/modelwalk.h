// The model walk rendered as the dump's JSON tree, with the counts the info command prints.
#pragma once

#include "corvelle/mediaproject.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <set>
#include <string>

namespace CorvelleTool {

struct ModelSummary {
    uint64_t tracks = 0; // sub-tracks included
    uint64_t clips = 0;
    uint64_t events = 0; // inside clips
    uint64_t channels = 0;
    uint64_t devices = 0;
    uint64_t automationPoints = 0;
    // Distinct file paths of audio and video events and of device state.
    std::set<std::string> mediaFiles;
};

struct ModelDump {
    nlohmann::ordered_json tree;
    ModelSummary summary;
};

// The whole project: application, tempo, signature, the track tree with channels, clips,
// events and automation, and the channels that belong to no track. Without wholeTree the tree
// holds only application, tempo and signature, and the summary is made while little of the
// model is held as a tree.
ModelDump walkProject(Halvorn::IMediaProject& project, bool wholeTree = true);

} // namespace CorvelleTool

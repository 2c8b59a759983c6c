// One walk of a project model through the published IMedia faces into a plain tree of fields.
//
// The tool's dump, the tests' outline and the round-trip comparer each render or compare this
// tree, so what a model says is read in one place only.
#pragma once

#include "corvelle/mediaproject.h"

#include <cstdint>
#include <functional>
#include <string>
#include <variant>
#include <vector>

namespace CorvelleSupport {

// An enumeration's value with its name ("unknown" outside the table).
struct Named {
    int64_t value = 0;
    std::string name;
    bool operator==(const Named& other) const { return value == other.value; }
};

using FieldValue = std::variant<bool, int64_t, double, std::string, Named>;

// A name such as "format.sampleRate" stands for the member of a nested record.
struct Field {
    std::string name;
    FieldValue value;
};

struct ModelNode;

// The children of one kind, such as a track's clips; `single` for at most one (a track's
// channel, the project's tempo).
struct ModelGroup {
    std::string name;
    bool single = false;
    std::vector<ModelNode> items;
};

struct ModelNode {
    std::string kind; // "track", "channel", "device", "band", "send", "clip", "event", ...
    // Borrowed, valid while the project lives: for faces beyond the published ones.
    Halvorn::FUnknown* object = nullptr;
    std::vector<Field> fields;
    std::vector<ModelGroup> groups;

    const FieldValue* field(const std::string& name) const;
    FieldValue* field(const std::string& name);
    const ModelGroup* group(const std::string& name) const;
    ModelGroup* group(const std::string& name);
};

// Told of each node of the walk once it is whole, its children included; answers whether the
// node stays in its parent's group. A caller that only counts keeps little and so holds little
// of a large project at any time.
using NodeVisitor = std::function<bool(const ModelNode&)>;

// The project: application and signature, the tempo, the track tree with channels, clips,
// events and automation, then every channel of the project's own list (a track's channel
// again among them: its `object` tells them apart). Identity fields (id, name, colour when set)
// come first in every node that has one.
ModelNode walkModel(Halvorn::IMediaProject& project, const NodeVisitor& visit = {});

} // namespace CorvelleSupport

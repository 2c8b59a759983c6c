// The model walk rendered as the dump's JSON tree, with the counts the info command prints.
#include "modelwalk.h"

#include "support/modelwalk.h"

#include <type_traits>

namespace CorvelleTool {

using namespace CorvelleSupport;
namespace {

using Json = nlohmann::ordered_json;

Json jsonOf(const FieldValue& value) {
    return std::visit(
        [](const auto& item) -> Json {
            if constexpr (std::is_same_v<std::decay_t<decltype(item)>, Named>)
                return item.name;
            else
                return item;
        },
        value);
}

// Counts every node as the walk finishes it.
class Counter {
public:
    ModelSummary summary;

    void count(const ModelNode& node) {
        if (node.kind == "track")
            ++summary.tracks;
        else if (node.kind == "clip")
            ++summary.clips;
        else if (node.kind == "event")
            ++summary.events;
        else if (node.kind == "point")
            ++summary.automationPoints;
        else if (node.kind == "channel" && seenChannels_.insert(node.object).second)
            countChannel(node);
        addMediaFile(node, "file");
    }

    // Whether the walk must keep a node for count to see it: a channel's devices are counted
    // with the channel, since the project's list holds a track's channel a second time.
    static bool neededLater(const ModelNode& node) { return node.kind == "device"; }

private:
    void countChannel(const ModelNode& channel) {
        ++summary.channels;
        for (const ModelNode& device : channel.group("devices")->items) {
            ++summary.devices;
            addMediaFile(device, "statePath");
        }
    }

    void addMediaFile(const ModelNode& node, const char* name) {
        if (const FieldValue* path = node.field(name)) {
            const std::string& text = std::get<std::string>(*path);
            // A device without state carries the bare folder "plugins/": no file to count.
            if (!text.empty() && text.back() != '/')
                summary.mediaFiles.insert(text);
        }
    }

private:
    std::set<const void*> seenChannels_; // a track's channel is in the project's list again
};

class Renderer {
public:
    Json node(const ModelNode& node) {
        Json out = Json::object();
        for (const Field& field : node.fields) {
            // "format.sampleRate" is the member sampleRate of the record format.
            const size_t dot = field.name.find('.');
            if (dot == std::string::npos)
                out[field.name] = jsonOf(field.value);
            else
                out[field.name.substr(0, dot)][field.name.substr(dot + 1)] = jsonOf(field.value);
        }
        for (const ModelGroup& group : node.groups) {
            if (group.single) {
                if (!group.items.empty())
                    out[group.name] = this->node(group.items.front());
                if (group.name == "channel" && !group.items.empty())
                    trackChannels_.insert(group.items.front().object);
                continue;
            }
            Json items = Json::array();
            for (const ModelNode& item : group.items)
                // A track's channel stands under its track; the project lists only the rest.
                if (node.kind != "project" || group.name != "channels" ||
                    !trackChannels_.count(item.object))
                    items.push_back(this->node(item));
            out[group.name] = items;
        }
        return out;
    }

private:
    std::set<const void*> trackChannels_;
};

} // namespace

ModelDump walkProject(Halvorn::IMediaProject& project, bool wholeTree) {
    Counter counter;
    // Without the whole tree only the project's own fields and its tempo stay: the rest is
    // counted and let go as the walk finishes it.
    const ModelNode root = walkModel(project, [&](const ModelNode& node) {
        counter.count(node);
        return wholeTree || node.kind == "parameter" || Counter::neededLater(node);
    });
    return {Renderer().node(root), std::move(counter.summary)};
}

} // namespace CorvelleTool

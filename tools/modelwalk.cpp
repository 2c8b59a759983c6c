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

class Renderer {
public:
    ModelSummary summary;

    Json node(const ModelNode& node) {
        count(node);
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
                continue;
            }
            Json items = Json::array();
            for (const ModelNode& item : group.items)
                // A track's channel stands under its track; the project lists only the rest.
                if (node.kind != "project" || group.name != "channels" ||
                    !seenChannels_.count(item.object))
                    items.push_back(this->node(item));
            out[group.name] = items;
        }
        return out;
    }

private:
    void count(const ModelNode& node) {
        if (node.kind == "track")
            ++summary.tracks;
        else if (node.kind == "clip")
            ++summary.clips;
        else if (node.kind == "event")
            ++summary.events;
        else if (node.kind == "channel" && seenChannels_.insert(node.object).second)
            ++summary.channels;
        else if (node.kind == "device")
            ++summary.devices;
        else if (node.kind == "point")
            ++summary.automationPoints;
        for (const char* name : {"file", "statePath"})
            if (const FieldValue* path = node.field(name)) {
                const std::string& text = std::get<std::string>(*path);
                // A device without state carries the bare folder "plugins/": no file to count.
                if (!text.empty() && text.back() != '/')
                    summary.mediaFiles.insert(text);
            }
    }

    std::set<const void*> seenChannels_;
};

} // namespace

ModelDump walkProject(Halvorn::IMediaProject& project) {
    Renderer renderer;
    ModelDump dump;
    dump.tree = renderer.node(walkModel(project));
    dump.summary = std::move(renderer.summary);
    return dump;
}

} // namespace CorvelleTool

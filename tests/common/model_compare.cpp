// The comparer: both models walked into trees, the known asymmetries applied, then the trees
// compared node by node.
#include "common/model_compare.h"

#include "corvelle/mediadevice.h"

#include <algorithm>
#include <sstream>

namespace ModelCompare {
namespace {

using namespace CorvelleSupport;

bool hasValue(const ModelNode& node, const char* name, int64_t value) {
    const FieldValue* field = node.field(name);
    const Named* named = field ? std::get_if<Named>(field) : nullptr;
    return named && named->value == value;
}

// Applies the options to a tree; `first` marks the model the asymmetries are measured from.
void adjust(ModelNode& node, const Options& options, bool first) {
    // The playback rate follows from the warp points, which are compared themselves.
    node.fields.erase(
        std::remove_if(node.fields.begin(), node.fields.end(),
                       [](const Field& field) { return field.name == "playbackRate"; }),
        node.fields.end());
    if (options.fileLeafNamesOnly)
        for (const char* name : {"file", "statePath"})
            if (FieldValue* path = node.field(name)) {
                std::string& text = std::get<std::string>(*path);
                text = text.substr(text.find_last_of('/') + 1);
            }
    if (options.tempoValueOnly && node.kind == "project")
        for (ModelNode& tempo : node.group("tempo")->items)
            tempo.fields = {{"value", *tempo.field("value")}};
    if (first && options.warpTimesExchanged && node.kind == "warp")
        std::swap(*node.field("time"), *node.field("contentTime"));
    if (first && options.pluginParameterShift && node.kind == "device" &&
        hasValue(node, "type", Halvorn::kDeviceQuor3))
        for (ModelNode& parameter : node.group("parameters")->items) {
            int64_t& id = std::get<int64_t>(*parameter.field("parameterId"));
            id = static_cast<uint32_t>(id + options.pluginParameterShift); // numbers are 32-bit
        }
    for (ModelGroup& group : node.groups)
        for (ModelNode& item : group.items)
            adjust(item, options, first);
}

class Comparer {
public:
    std::vector<std::string> differences;

    void compare(const std::string& where, const ModelNode& a, const ModelNode& b) {
        const std::string at = where.empty() ? "project" : where;
        for (const Field& field : a.fields) {
            const FieldValue* other = b.field(field.name);
            if (!other)
                note(at, field.name + " missing in the second");
            else if (!(field.value == *other))
                note(at, field.name + " " + valueText(field.value) + " != " + valueText(*other));
        }
        for (const Field& field : b.fields)
            if (!a.field(field.name))
                note(at, field.name + " missing in the first");
        for (const ModelGroup& group : a.groups) {
            const ModelGroup* other = b.group(group.name);
            if (!other) {
                note(at, group.name + " missing in the second");
                continue;
            }
            if (group.items.size() != other->items.size()) {
                note(at, group.name + " count " + std::to_string(group.items.size()) +
                             " != " + std::to_string(other->items.size()));
                continue;
            }
            for (size_t i = 0; i < group.items.size(); ++i) {
                const std::string& kind = group.items[i].kind;
                const std::string step = group.single ? kind : kind + "[" + std::to_string(i) + "]";
                compare(where.empty() ? step : where + "/" + step, group.items[i], other->items[i]);
            }
        }
        for (const ModelGroup& group : b.groups)
            if (!a.group(group.name))
                note(at, group.name + " missing in the first");
    }

private:
    void note(const std::string& where, const std::string& what) {
        differences.push_back(where + ": " + what);
    }
};

} // namespace

std::string valueText(const FieldValue& value, int digits) {
    std::ostringstream out;
    out.precision(digits);
    std::visit(
        [&](const auto& item) {
            if constexpr (std::is_same_v<std::decay_t<decltype(item)>, Named>)
                out << item.value;
            else
                out << item;
        },
        value);
    return out.str();
}

std::vector<std::string> differences(Halvorn::IMediaProject* a, Halvorn::IMediaProject* b,
                                     const Options& options) {
    if (!a || !b)
        return a == b ? std::vector<std::string>{}
                      : std::vector<std::string>{"project: one project is null"};
    ModelNode first = walkModel(*a);
    ModelNode second = walkModel(*b);
    adjust(first, options, true);
    adjust(second, options, false);
    Comparer comparer;
    comparer.compare("", first, second);
    return comparer.differences;
}

std::string describe(const std::vector<std::string>& differences) {
    std::string text;
    for (const std::string& line : differences)
        text += line + "\n";
    return text;
}

} // namespace ModelCompare

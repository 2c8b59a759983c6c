// Outline rendering of a JSON tree, in the manner of YAML's block style.
#include "outline.h"

namespace CorvelleTool {
namespace {

using Json = nlohmann::ordered_json;

std::string scalarText(const Json& value) {
    return value.is_string() ? value.get<std::string>() : value.dump();
}

bool isLeaf(const Json& value) { return !value.is_object() && !value.is_array(); }

void renderValue(const Json& value, const std::string& indent, std::string& out);

// The members of an object; the first line goes behind firstPrefix (a list marker or indent).
void renderObject(const Json& object, const std::string& firstPrefix, const std::string& indent,
                  std::string& out) {
    bool first = true;
    for (const auto& [key, value] : object.items()) {
        if (value.is_array() && value.empty())
            continue;
        out += first ? firstPrefix : indent;
        first = false;
        if (isLeaf(value)) {
            out += key + ": " + scalarText(value) + "\n";
        } else {
            out += key + ":\n";
            renderValue(value, indent + "  ", out);
        }
    }
    if (first)
        out += firstPrefix + "{}\n";
}

void renderValue(const Json& value, const std::string& indent, std::string& out) {
    if (value.is_object()) {
        renderObject(value, indent, indent, out);
        return;
    }
    for (const Json& item : value) {
        if (item.is_object())
            renderObject(item, indent + "- ", indent + "  ", out);
        else if (isLeaf(item))
            out += indent + "- " + scalarText(item) + "\n";
        else {
            out += indent + "-\n";
            renderValue(item, indent + "  ", out);
        }
    }
}

} // namespace

std::string renderOutline(const nlohmann::ordered_json& tree) {
    std::string out;
    if (isLeaf(tree))
        return scalarText(tree) + "\n";
    renderValue(tree, "", out);
    return out;
}

} // namespace CorvelleTool

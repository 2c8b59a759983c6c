// The human form of a model dump: an indented outline of the JSON tree.
#pragma once

#include <nlohmann/json.hpp>

#include <string>

namespace CorvelleTool {

// "key: value" lines, nested objects and lists indented by two, list items marked "- "; empty
// lists are left out.
std::string renderOutline(const nlohmann::ordered_json& tree);

} // namespace CorvelleTool

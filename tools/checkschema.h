// The project document as a careful receiver expects it: for every kind of element, its
// attributes with their value types and the children it may hold. `corvelle check` walks a
// document against this table, independently of the library's lenient reader.
#pragma once

#include <string_view>
#include <utility>
#include <vector>

namespace CorvelleTool {

enum class ValueType {
    kText,
    kId,          // the element's own id: non-empty, unique in the document
    kBoolean,     // "true" or "false"
    kInteger,     // decimal digits
    kReal,        // a finite decimal number
    kColor,       // "#" and six or eight hexadecimal digits
    kTimeUnit,    // "seconds" or "beats"
    kUnit,        // a parameter unit
    kContentType, // a track's content
    kChannelRole,
    kDeviceRole,
    kSendType,
    kBandType,
    kInterpolation,
    kTrackRef,     // names a Track
    kChannelRef,   // names a Channel
    kParameterRef, // names a parameter element
};

struct AttributeRule {
    std::string_view name;
    ValueType type;
};

struct ElementKind {
    std::string_view kind;
    std::vector<AttributeRule> attributes;
    // Child element name and the kind it is read as.
    std::vector<std::pair<std::string_view, std::string_view>> children;
    bool isParameter = false; // a Target's parameter may name it
    // Names the reader looks for at any depth below such an element, and their kinds.
    std::vector<std::pair<std::string_view, std::string_view>> deep = {};
};

// The kind of the root element "Project".
const ElementKind& projectKind();

// The kind an element named name is read as inside parent; null when the parent doesn't take
// such a child.
const ElementKind* childKind(const ElementKind& parent, std::string_view name);

// The kind an element named name is read as anywhere below an element of kind context, past
// elements the reader skips; null when it is not looked for there.
const ElementKind* deepKind(const ElementKind& context, std::string_view name);

// The rule for an attribute of kind; null when the element has no such attribute.
const AttributeRule* attributeRule(const ElementKind& kind, std::string_view name);

// The texts a value of an enumerated type may take; empty for the other types.
const std::vector<std::string_view>& enumerationTexts(ValueType type);

} // namespace CorvelleTool

// The value rules applied to the attributes of a document element: texts, numbers, Booleans, ids,
// colours, interpolation and time units, each with the default that stands when it is absent.
#pragma once

#include "documents/cvxmltree.h"
#include "model/cvnode.h"

namespace Halvorn {
namespace CvNodeValues {

// A default stands in only for an absent attribute; a present one is always parsed, so an
// empty text reads as 0 or false, never as the default. The format's defaults print and parse
// back to themselves, so they are taken as values without that round trip.
String readText(const CvXmlElement& node, const char8* key, const String& defaultValue);
double readReal(const CvXmlElement& node, const char8* key, double defaultValue);
uint64 readInteger(const CvXmlElement& node, const char8* key, uint64 defaultValue);
bool readBoolean(const CvXmlElement& node, const char8* key, bool defaultValue);

// The "id" attribute; a missing one reads as "0", not as an empty text.
String readId(const CvXmlElement& node);
// The "name" attribute, with the element's own name as the default.
String readName(const CvXmlElement& node);
// The "color" attribute; absent, empty or unreadable gives the all-zero colour.
CvColor readColor(const CvXmlElement& node);
// The "interpolation" attribute, "linear" by default: 1 for "linear", else 0.
uint32 readInterpolation(const CvXmlElement& node);
// Whether a time unit attribute means seconds: its text when present, else secondsInForce.
bool readSeconds(const CvXmlElement& node, const char8* key, bool secondsInForce);

} // namespace CvNodeValues
} // namespace Halvorn

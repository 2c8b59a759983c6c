// Text for XML: UTF-16 or UTF-8 from the model made into UTF-8 that an XML 1.0 parser accepts.
#pragma once

#include "corvelle/base.h"

#include <string>

namespace Halvorn {
namespace Xml {

// The output layer passes bytes as they are, so text from outside must be made safe first.
// An unpaired surrogate, an ill-formed UTF-8 sequence, and every character that XML 1.0 doesn't
// allow (the C0 controls but tab, line feed and carriage return; U+FFFE; U+FFFF) become U+FFFD.
// A null text gives an empty string.
std::string toXmlUtf8(const char16* text);
std::string toXmlUtf8(const char8* text);

} // namespace Xml
} // namespace Halvorn

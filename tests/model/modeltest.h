// Shared helpers of the model tests: reading UTF-16 texts and making named parameters.
#pragma once

#include "foundation/fobject.h"
#include "foundation/fstring.h"
#include "model/cvparameter.h"

#include <string>
#include <utility>

namespace Halvorn {

// A UTF-16 text from the model as UTF-8, for readable comparisons; null reads as "<null>".
inline std::string utf8(const char16* text) {
    if (!text)
        return "<null>";
    String copy(text);
    return copy.text8();
}

// A parameter for the lookups by name and by number.
inline IPtr<CvParameter> namedParameter(const char8* name, const String& id = String(),
                                        uint32 number = 0) {
    auto parameter = newObject<CvParameter>(kUnitLinear, id);
    parameter->setName(name);
    parameter->setParameterId(number);
    return parameter;
}

} // namespace Halvorn

// Model parameters made from host parameters, and numbers read from display texts.
#pragma once

#include "corvelle/ptr.h"
#include "hostapi/hostmixer.h"
#include "model/cvparameter.h"

namespace Halvorn {

// A parameter that carries the host parameter's tag, with bounds 0 and 1 and this value;
// steps 0 means continuous. Empty when memory runs out.
IPtr<CvParameter> makeHostParameter(uint32 unit, const String& id, Quor::IHostParameter& source,
                                    const char8* name, double value, uint32 steps);

// The first number anywhere in text, a comma read as a decimal point ("-24,5 dB" is -24.5);
// false, leaving value alone, when the text holds none.
[[nodiscard]] bool readNumber(const String& text, double& value);

} // namespace Halvorn

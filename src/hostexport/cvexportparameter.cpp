// Model parameters made from host parameters, and numbers read from display texts.
#include "hostexport/cvexportparameter.h"

#include <cstdlib>
#include <string>

namespace Halvorn {

using namespace Quor;

IPtr<CvParameter> makeHostParameter(uint32 unit, const String& id, IHostParameter& source,
                                    const char8* name, double value, uint32 steps) {
    auto parameter = newObject<CvParameter>(unit, id);
    parameter->setParameterId(uint32(source.getTag()));
    parameter->setName(String(name));
    parameter->setMin(0.0);
    parameter->setMax(1.0);
    parameter->setValue(value);
    parameter->setStepCount(steps);
    return parameter;
}

bool readNumber(const String& text, double& value) {
    std::string plain = text.text8();
    for (size_t at = 0; at < plain.size(); ++at) {
        char c = plain[at];
        bool digit = c >= '0' && c <= '9';
        bool signedDigit = (c == '-' || c == '+') && at + 1 < plain.size() &&
                           plain[at + 1] >= '0' && plain[at + 1] <= '9';
        if (!digit && !signedDigit)
            continue;
        std::string number(1, c);
        bool point = false;
        for (size_t next = at + 1; next < plain.size(); ++next) {
            char d = plain[next];
            if (d >= '0' && d <= '9')
                number += d;
            else if ((d == '.' || d == ',') && !point)
                number += '.', point = true;
            else
                break;
        }
        value = std::strtod(number.c_str(), nullptr);
        return true;
    }
    return false;
}

} // namespace Halvorn

// The fader law of the reference host.
#include "faderlaw.h"

#include <algorithm>
#include <cmath>

namespace Halvorn {
namespace RefHost {

double faderGain(double value, int curve, double maximumGain) {
    double v = std::clamp(value, 0.0, 1.0);
    return maximumGain * (curve == kLinearCurve ? v : v * v * v);
}

double faderValue(double gain, int curve, double maximumGain) {
    if (!(gain > 0.0) || !(maximumGain > 0.0))
        return 0.0;
    double ratio = gain / maximumGain;
    return std::clamp(curve == kLinearCurve ? ratio : std::cbrt(ratio), 0.0, 1.0);
}

double gainToDecibel(double gain) {
    return gain > 0.0 ? std::max(kSilence, 20.0 * std::log10(gain)) : kSilence;
}

double decibelToGain(double decibel) {
    return decibel <= kSilence ? 0.0 : std::pow(10.0, decibel / 20.0);
}

int curveForMaximumGain(double maximumGain) { return maximumGain == 4.0 ? kLinearCurve : 0; }

double unityValue(double maximumGain) {
    return faderValue(1.0, curveForMaximumGain(maximumGain), maximumGain);
}

} // namespace RefHost
} // namespace Halvorn

// The reference host's fader law: how a fader value between 0 and 1 maps to a linear gain.
//
// Curve 1 is linear: gain = maximum * value. Every other curve is the console curve:
// gain = maximum * value^3, which puts unity gain at value = (1 / maximum)^(1/3), about 0.794
// for the default maximum of 2.0 (+6.02 dB). Values are clamped to 0..1, and 0 gain reads
// as kSilence decibels.
#pragma once

namespace Halvorn {
namespace RefHost {

constexpr double kDefaultMaximumGain = 2.0;
constexpr double kSilence = -144.0;
constexpr int kLinearCurve = 1;

// The curve that a mixer's top gain puts in force: 4.0 (+12 dB) the linear one, every other
// top (2.0, +6 dB, among them) the console curve.
int curveForMaximumGain(double maximumGain);
// Where a fader stands at unity gain under the curve its top puts in force.
double unityValue(double maximumGain);

double faderGain(double value, int curve, double maximumGain);
double faderValue(double gain, int curve, double maximumGain);
double gainToDecibel(double gain);
double decibelToGain(double decibel);

} // namespace RefHost
} // namespace Halvorn

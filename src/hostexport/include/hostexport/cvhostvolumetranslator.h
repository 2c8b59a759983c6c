// CvHostVolumeTranslator: fader values to linear gain and back, under the host's fader curve.
#pragma once

#include "hostapi/hostapi.h"
#include "model/cvobject.h"

namespace Halvorn {

// The law of the curves lies in the host; this only picks which of its curves is in force,
// from the mixer's top gain: 2.0 (about +6 dB) is curve 0, 4.0 (about +12 dB) curve 1.
class CvHostVolumeTranslator : public CvObject {
public:
    CV_DECLARE_TYPE(CvHostVolumeTranslator, CvObject)

    explicit CvHostVolumeTranslator(Quor::IHostContext* host);

    // 1.0 without the host's curves.
    double gainToValue(double gain) const;
    double valueToGain(double value) const;
    int32 curve() const { return curve_; }

protected:
    ~CvHostVolumeTranslator() override;

private:
    Quor::IHostVolumeCurve* curves_ = nullptr;
    int32 curve_ = 0;
};

} // namespace Halvorn

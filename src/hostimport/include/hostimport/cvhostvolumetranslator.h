// CvHostVolumeTranslator: linear gain to the host's automation value under the fader curve in
// force.
#pragma once

#include "hostimport/importutilities.h"
#include "model/cvobject.h"

namespace Halvorn {

class CvHostVolumeTranslator : public CvObject {
public:
    CV_DECLARE_TYPE(CvHostVolumeTranslator, CvObject)

    // Each link to the host may be missing; the curve then stays 0.
    explicit CvHostVolumeTranslator(IHostContext* host)
        : curves_(CvHostUtilities::getHostInterface<IHostVolumeCurve>(host)) {
        IPtr<IHostObjectRegistry> registry =
            CvHostUtilities::getHostInterface<IHostObjectRegistry>(host);
        IHostParameterOwner* mixer = registry ? registry->findObject("QUOR Mixer", 0) : nullptr;
        IPtr<IHostMixerSettings> settings = Halvorn::queryInterface<IHostMixerSettings>(mixer);
        double gain = 1.0;
        if (settings && settings->getMaximumGain(&gain) == kResultOk)
            curve_ = gain == 4.0 ? 1 : 0;
    }

    // 1.0 without the host's curves.
    double gainToValue(double gain) const {
        return curves_ ? curves_->gainToValue(gain, curve_, true) : 1.0;
    }

protected:
    ~CvHostVolumeTranslator() override = default;

private:
    IPtr<IHostVolumeCurve> curves_;
    int32 curve_ = 0;
};

} // namespace Halvorn

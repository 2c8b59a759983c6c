// CvHostVolumeTranslator: finding the host's curves and the one in force.
#include "hostexport/cvhostvolumetranslator.h"

#include "hostexport/cvhostutilities.h"

namespace Halvorn {

using namespace Quor;
using namespace CvHostUtilities;

CvHostVolumeTranslator::CvHostVolumeTranslator(IHostContext* host) {
    curves_ = hostService<IHostVolumeCurve>(host).release();
    auto registry = hostService<IHostObjectRegistry>(host);
    auto settings = ::Halvorn::queryInterface<IHostMixerSettings>(
        registry ? registry->findObject("QUOR Mixer", 0) : nullptr);
    double maximum = 1.0;
    if (!settings || settings->getMaximumGain(&maximum) != kResultOk)
        return;
    // Exact on purpose: the host offers these two tops only.
    if (maximum == 4.0)
        curve_ = 1;
}

CvHostVolumeTranslator::~CvHostVolumeTranslator() {
    if (curves_)
        curves_->release();
}

double CvHostVolumeTranslator::gainToValue(double gain) const {
    return curves_ ? curves_->gainToValue(gain, curve_, true) : 1.0;
}

double CvHostVolumeTranslator::valueToGain(double value) const {
    return curves_ ? curves_->valueToGain(value, curve_) : 1.0;
}

} // namespace Halvorn

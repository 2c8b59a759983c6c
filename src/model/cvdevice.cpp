// CvDevice, CvEqualizer, CvEqualizerBand and CvInstrument.
#include "model/cvdevice.h"

#include "model/cvlist.h"

namespace Halvorn {

CvDevice::CvDevice(uint32 type, uint32 role, const String& id)
    : CvParameterContainer({}, id), type_(type), role_(role),
      file_(CvFile::make(kCvFilePreset, nullptr, false)) {}

CvDevice::~CvDevice() = default;

tresult CvDevice::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, ICvFileAccessor)
    CV_QUERY(iid, object, IMediaDevice)
    return CvParameterContainer::queryInterface(iid, object);
}

void CvDevice::setFile(const char16* path, bool external) {
    file_ = CvFile::make(kCvFilePreset, path, external);
}

const char16* CvDevice::getStatePath() { return file_->getPath().text16(); }

void CvDevice::setStateFile(const String& path, bool external) { setFile(path.text16(), external); }

tresult CvEqualizerBand::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IMediaEqualizerBand)
    return CvParameterContainer::queryInterface(iid, object);
}

CvEqualizer::~CvEqualizer() = default;

tresult CvEqualizer::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IMediaEqualizer)
    return CvDevice::queryInterface(iid, object);
}

uint32 CvEqualizer::getBandCount() { return listCount(bands_); }

IMediaEqualizerBand* CvEqualizer::getBand(uint32 index) {
    return listElement<IMediaEqualizerBand>(bands_, index);
}

IMediaParameter* CvEqualizer::getInputGain() {
    return findParameterByName(kParamEqualizerInputGain);
}

IMediaParameter* CvEqualizer::getOutputGain() {
    return findParameterByName(kParamEqualizerOutputGain);
}

void CvEqualizer::addBand(CvEqualizerBand* band) { bands_.add(band); }

tresult CvInstrument::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IMediaBuiltinInstrument)
    return CvDevice::queryInterface(iid, object);
}

} // namespace Halvorn

// CvDevice and its kinds: plug-ins and built-in devices, the equalizer with its bands, the
// built-in instrument.
#pragma once

#include "corvelle/mediadevice.h"
#include "model/cvfile.h"
#include "model/cvparameter.h"

namespace Halvorn {

// An insert on a channel. The node's name is the display name; a plug-in's state lives in its
// file, a built-in device's settings in its parameters.
class CvDevice : public CvParameterContainer, public ICvFileAccessor, public IMediaDevice {
public:
    CV_DECLARE_TYPE(CvDevice, CvParameterContainer)
    CV_REFCOUNT_METHODS(CvParameterContainer)

    CvDevice(uint32 type, uint32 role, const String& id);

    tresult queryInterface(const FUID& iid, void** object) override;

    CvFile* getFile() override { return file_.get(); }
    void setFile(const char16* path, bool external) override;

    uint32 getDeviceType() override { return type_; }
    uint32 getDeviceRole() override { return role_; }
    const char8* getDeviceId() override { return deviceId_.text8(); }
    const char16* getStatePath() override;
    bool isEnabled() override { return enabled_; }
    IMediaParameterContainer* getParameters() override { return this; }

    void setDeviceId(const String& deviceId) { deviceId_ = deviceId; }
    void setEnabled(bool enabled) { enabled_ = enabled; }
    void setStateFile(const String& path, bool external);

protected:
    ~CvDevice() override;

private:
    uint32 type_;
    uint32 role_;
    String deviceId_;
    IPtr<CvFile> file_;
    bool enabled_ = true;
};

class CvEqualizerBand : public CvParameterContainer, public IMediaEqualizerBand {
public:
    CV_DECLARE_TYPE(CvEqualizerBand, CvParameterContainer)
    CV_REFCOUNT_METHODS(CvParameterContainer)

    CvEqualizerBand(uint32 bandType, uint32 order, const String& id)
        : CvParameterContainer({}, id), bandType_(bandType), order_(order) {}

    tresult queryInterface(const FUID& iid, void** object) override;

    uint32 getBandType() override { return bandType_; }
    uint32 getOrder() override { return order_; }
    IMediaParameterContainer* getParameters() override { return this; }

protected:
    ~CvEqualizerBand() override = default;

private:
    uint32 bandType_;
    uint32 order_;
};

// Every equalizer is one of these, of type kDeviceEqualizer.
class CvEqualizer : public CvDevice, public IMediaEqualizer {
public:
    CV_DECLARE_TYPE(CvEqualizer, CvDevice)
    CV_REFCOUNT_METHODS(CvDevice)

    CvEqualizer(uint32 role, const String& id) : CvDevice(kDeviceEqualizer, role, id) {}

    tresult queryInterface(const FUID& iid, void** object) override;

    uint32 getBandCount() override;
    IMediaEqualizerBand* getBand(uint32 index) override;
    IMediaParameter* getInputGain() override;
    IMediaParameter* getOutputGain() override;

    // Unique add.
    void addBand(CvEqualizerBand* band);

protected:
    ~CvEqualizer() override;

private:
    CvUniqueList<CvEqualizerBand> bands_;
};

// The host's own instrument, of type kDeviceBuiltinInstrument, named by its preset.
class CvInstrument : public CvDevice, public IMediaBuiltinInstrument {
public:
    CV_DECLARE_TYPE(CvInstrument, CvDevice)
    CV_REFCOUNT_METHODS(CvDevice)

    CvInstrument(uint32 type, uint32 role, const String& id) : CvDevice(type, role, id) {}

    tresult queryInterface(const FUID& iid, void** object) override;

    const char16* getPresetName() override { return presetName_.text16(); }
    void setPresetName(const String& presetName) { presetName_ = presetName; }

protected:
    ~CvInstrument() override = default;

private:
    String presetName_;
};

} // namespace Halvorn

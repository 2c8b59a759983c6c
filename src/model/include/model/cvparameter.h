// CvParameter and CvParameterContainer: named values with unit and bounds, and their holders.
#pragma once

#include "corvelle/mediaparameter.h"
#include "model/cvlist.h"

namespace Halvorn {

// The node's name is the logical name ("MPParam...") or a plug-in parameter's title; the id is
// what automation targets.
class CvParameter : public CvNode, public IMediaParameter {
public:
    CV_DECLARE_TYPE(CvParameter, CvNode)
    CV_REFCOUNT_METHODS(CvNode)

    explicit CvParameter(uint32 unit, const String& id = String()) : CvNode({}, id), unit_(unit) {}

    tresult queryInterface(const FUID& iid, void** object) override;

    uint32 getUnit() override { return unit_; }
    double getValue() override { return value_; }
    double getMin() override { return min_; }
    double getMax() override { return max_; }
    uint32 getParameterId() override { return parameterId_; }
    double getNormalizedValue() override;
    bool isContinuous() override { return stepCount_ == 0; }
    uint32 getStepCount() override { return stepCount_; }
    void setValue(double value) override { value_ = value; }
    void setMin(double min) override { min_ = min; }
    void setMax(double max) override { max_ = max; }
    void setParameterId(uint32 parameterId) override { parameterId_ = parameterId; }
    void setStepCount(uint32 stepCount) override { stepCount_ = stepCount; }

protected:
    ~CvParameter() override = default;

private:
    double value_ = 0.0;
    double max_ = 1.0;
    double min_ = 0.0;
    uint32 unit_;
    uint32 parameterId_ = 0;
    uint32 stepCount_ = 0;
};

// The base of everything that holds parameters: channels, sends, devices, equalizer bands.
class CvParameterContainer : public CvNode, public IMediaParameterContainer {
public:
    CV_DECLARE_TYPE(CvParameterContainer, CvNode)
    CV_REFCOUNT_METHODS(CvNode)

    CvParameterContainer(const String& name, const String& id) : CvNode(name, id) {}

    tresult queryInterface(const FUID& iid, void** object) override;

    uint32 getParameterCount() override;
    IMediaParameter* getParameter(uint32 index) override;
    IMediaParameter* findParameterById(const char16* id) override;
    IMediaParameter* findParameterByNumber(uint32 parameterId) override;
    IMediaParameter* findParameterByName(const char8* name) override;
    bool hasParameterNumber(uint32 parameterId) override;
    bool hasParameterName(const char8* name) override;

    // Unique add.
    void addParameter(CvParameter* parameter);

protected:
    ~CvParameterContainer() override;

private:
    CvUniqueList<CvParameter> parameters_{true};
};

} // namespace Halvorn

// CvAutomation and CvAutomationPoint: a lane of parameter changes over time and its points.
#pragma once

#include "corvelle/mediaautomation.h"
#include "model/cvlist.h"

namespace Halvorn {

// The id stays empty; the name is the document's point id, if any.
class CvAutomationPoint : public CvNode, public IMediaAutomationPoint {
public:
    CV_DECLARE_TYPE(CvAutomationPoint, CvNode)
    CV_REFCOUNT_METHODS(CvNode)

    explicit CvAutomationPoint(const String& name = String()) : CvNode(name, {}) {}

    tresult queryInterface(const FUID& iid, void** object) override;

    double getValue() override { return value_; }
    double getTime() override { return time_; }
    uint32 getInterpolation() override { return interpolation_; }
    void setValue(double value) { value_ = value; }
    void setTime(double seconds) { time_ = seconds; }
    void setInterpolation(uint32 interpolation) { interpolation_ = interpolation; }

protected:
    ~CvAutomationPoint() override = default;

private:
    double value_ = 0.0;
    double time_ = 0.0;
    uint32 interpolation_ = kInterpolationHold;
};

// Moves the parameter whose id is the target; a target that names nothing stays as it is.
class CvAutomation : public CvNode, public IMediaAutomation {
public:
    CV_DECLARE_TYPE(CvAutomation, CvNode)
    CV_REFCOUNT_METHODS(CvNode)

    CvAutomation(uint32 unit, const String& id);

    tresult queryInterface(const FUID& iid, void** object) override;

    uint32 getUnit() override { return unit_; }
    const char16* getTarget() override { return target_.text16(); }
    uint32 getPointCount() override;
    IMediaAutomationPoint* getPoint(uint32 index) override;

    void setTarget(const String& target) { target_ = target; }
    // Unique add, in order of adding; nothing sorts the points.
    void addPoint(CvAutomationPoint* point);

protected:
    ~CvAutomation() override;

private:
    CvUniqueList<CvAutomationPoint> points_;
    String target_;
    uint32 unit_;
};

} // namespace Halvorn

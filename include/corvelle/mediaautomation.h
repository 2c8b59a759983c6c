// IMediaAutomation and IMediaAutomationPoint: lanes of parameter changes over time.
//
// A lane belongs to a track and names the parameter it moves by that parameter's id
// (getTarget), which may sit on any channel, send or device of the project; a target that
// names nothing is left as it is. Points stand in the order the lane was filled, times in
// seconds on the timeline. Pointers given are borrowed, valid while the project lives.
#pragma once

#include "corvelle/mediaobject.h"
#include "corvelle/mediaparameter.h"

namespace Halvorn {

struct IMediaAutomationPoint : FUnknown {
    // In the lane's unit.
    virtual double getValue() = 0;
    virtual double getTime() = 0;
    // A CvInterpolation: linear points for continuous parameters, hold points for stepped.
    virtual uint32 getInterpolation() = 0;

    static constexpr FUID iid = FUID::make(0x1D79F25C, 0xF14F, 0x4092, 0x9F11, 0x390916B8A5B8);
};

struct IMediaAutomation : FUnknown {
    virtual uint32 getUnit() = 0; // a CvParameterUnit
    // Borrowed, valid while the object lives: the id of the parameter moved.
    virtual const char16* getTarget() = 0;
    virtual uint32 getPointCount() = 0;
    // Borrowed, valid while the project lives; null at or beyond the count.
    virtual IMediaAutomationPoint* getPoint(uint32 index) = 0;

    static constexpr FUID iid = FUID::make(0xA9D74D84, 0x6BCE, 0x43C4, 0x9DDE, 0x3F3BFBC410A5);
};

} // namespace Halvorn

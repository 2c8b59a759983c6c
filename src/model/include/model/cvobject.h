// CvObject: marks the system's own classes, and carries the tag that the unique lists keep.
#pragma once

#include "foundation/fobject.h"

namespace Halvorn {

template <class T> class CvUniqueList;

class CvObject : public FObject {
protected:
    ~CvObject() override = default;

private:
    template <class T> friend class CvUniqueList;

    // Which unique list holds the object: none, the one list that ever took it, or several;
    // see CvUniqueList. It sits in FObject's tail padding, so it costs no memory.
    uint32 listTag_ = 0;
};

} // namespace Halvorn

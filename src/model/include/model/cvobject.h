// CvObject: marks the system's own classes; adds nothing to FObject.
#pragma once

#include "foundation/fobject.h"

namespace Halvorn {

class CvObject : public FObject {
protected:
    ~CvObject() override = default;
};

} // namespace Halvorn

// CvService::importProject: the import command, which this build doesn't offer yet.
#include "shell/cvservice.h"

namespace Halvorn {

tresult CvService::importProject(FUnknown*, FUnknown* target) {
    if (!target)
        return kResultFalse;
    return kResultFalse;
}

} // namespace Halvorn

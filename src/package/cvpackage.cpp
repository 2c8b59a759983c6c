// CvPackage: its one interface.
#include "package/cvpackage.h"

namespace Halvorn {

tresult CvPackage::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IMediaProjectPackage)
    return CvObject::queryInterface(iid, object);
}

} // namespace Halvorn

// CvAutomation and CvAutomationPoint.
#include "model/cvautomation.h"

#include "model/cvlist.h"

namespace Halvorn {

tresult CvAutomationPoint::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IMediaAutomationPoint)
    return CvNode::queryInterface(iid, object);
}

CvAutomation::CvAutomation(uint32 unit, const String& id) : CvNode({}, id), unit_(unit) {}

CvAutomation::~CvAutomation() = default;

tresult CvAutomation::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IMediaAutomation)
    return CvNode::queryInterface(iid, object);
}

uint32 CvAutomation::getPointCount() { return listCount(points_); }

IMediaAutomationPoint* CvAutomation::getPoint(uint32 index) {
    return listElement<IMediaAutomationPoint>(points_, index);
}

void CvAutomation::addPoint(CvAutomationPoint* point) { points_.add(point); }

} // namespace Halvorn

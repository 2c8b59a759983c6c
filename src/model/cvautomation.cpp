// CvAutomation and CvAutomationPoint.
#include "model/cvautomation.h"

#include "model/cvlist.h"

namespace Halvorn {

tresult CvAutomationPoint::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IMediaAutomationPoint)
    return CvNode::queryInterface(iid, object);
}

// A lane can hold very many points: its list doubles as it grows instead of adding 10 slots.
CvAutomation::CvAutomation(uint32 unit, const String& id)
    : CvNode({}, id), points_(-1), unit_(unit) {}

CvAutomation::~CvAutomation() = default;

tresult CvAutomation::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IMediaAutomation)
    return CvNode::queryInterface(iid, object);
}

uint32 CvAutomation::getPointCount() { return listCount(points_); }

IMediaAutomationPoint* CvAutomation::getPoint(uint32 index) {
    return listElement<IMediaAutomationPoint>(points_, index);
}

// A point that no lane ever took can't be in this one, so the usual fill of fresh points skips
// the search that would make a long lane quadratic to build.
void CvAutomation::addPoint(CvAutomationPoint* point) {
    if (!point || (point->inLane_ && listHolds(points_, point)))
        return;
    point->inLane_ = true;
    points_.add(IPtr<CvAutomationPoint>(point));
}

} // namespace Halvorn

// CvTime, CvEvent, CvClip and CvWarpPoint.
#include "model/cvevent.h"

#include "model/cvlist.h"

namespace Halvorn {

tresult CvTime::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IMediaTime)
    return CvObject::queryInterface(iid, object);
}

CvEvent::CvEvent(uint32 eventType, const String& id)
    : CvNode({}, id), time_(newObject<CvTime>()), eventType_(eventType) {}

CvEvent::~CvEvent() = default;

tresult CvEvent::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IMediaEvent)
    return CvNode::queryInterface(iid, object);
}

// A clip can hold very many events: its list doubles as it grows instead of adding 10 slots.
CvClip::CvClip(uint32 eventType, const String& id) : CvEvent(eventType, id), events_(-1) {}

CvClip::~CvClip() = default;

tresult CvClip::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IMediaClip)
    return CvEvent::queryInterface(iid, object);
}

uint32 CvClip::getEventCount() { return listCount(events_); }

IMediaEvent* CvClip::getEvent(uint32 index) { return listElement<IMediaEvent>(events_, index); }

void CvClip::addEvent(CvEvent* event) { addToList(events_, event); }

TArray<CvEvent*> CvClip::getEvents() const { return rawList(events_); }

tresult CvWarpPoint::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IMediaWarpPoint)
    return CvObject::queryInterface(iid, object);
}

} // namespace Halvorn

// The fields every clip passes on: place, mute and colour; and the note velocity scale.
#include "hostimport/clipfields.h"
#include "hostimport/importutilities.h"

#include <cmath>

namespace Halvorn {

ClipFields::ClipFields(IMediaClip* clip)
    : time(clip->getTime()), object(queryInterface<IMediaObject>(clip)), muted(false) {
    if (IPtr<IMediaEvent> event = queryInterface<IMediaEvent>(clip))
        muted = event->isMuted();
}

void ClipFields::place(IHostTimelineObject* item, IHostEditContext* local, IHostEditSession* step,
                       IHostEditSession* offsetSession) const {
    item->setStart(local, time->getStart(), step);
    item->setLength(local, time->getDuration(), step);
    item->setOffset(local, time->getOffset(), offsetSession);
    item->setMuted(local, muted, step);
}

void ClipFields::color(IHostTimelineObject* item, IHostEditContext* context) const {
    IPtr<IHostTimelineEvent> event = queryInterface<IHostTimelineEvent>(item);
    uint32 argb = 0;
    if (event && CvHostUtilities::packColor(object.get(), &argb))
        event->setColor(context, argb, nullptr);
}

int32 velocityOf(double velocity) {
    double scaled = std::trunc(velocity * 127.0);
    if (!(scaled > -2147483648.0))
        return scaled < 0.0 ? INT32_MIN : 0;
    return scaled < 2147483647.0 ? int32(scaled) : INT32_MAX;
}

} // namespace Halvorn

// What every clip kind passes to its host part or event: name, place, mute and colour.
#pragma once

#include "corvelle/mediaclip.h"
#include "corvelle/mediaobject.h"
#include "corvelle/ptr.h"
#include "hostapi/hostapi.h"

namespace Halvorn {

// The fields of one clip; time and object are set for a clip that importClip let through.
struct ClipFields {
    explicit ClipFields(IMediaClip* clip);

    // Start, length, offset and mute; the offset is recorded in offsetSession.
    void place(IHostTimelineObject* item, IHostEditContext* local, IHostEditSession* step,
               IHostEditSession* offsetSession) const;
    // The clip's colour, if it has one and the item can show it.
    void color(IHostTimelineObject* item, IHostEditContext* context) const;

    IMediaTime* time;
    IPtr<IMediaObject> object;
    bool muted;
};

// A velocity from 0.0..1.0 to the host's 0..127, cut towards zero; out-of-range values stay
// within int32.
int32 velocityOf(double velocity);

} // namespace Halvorn

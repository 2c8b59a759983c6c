// What the stages of an import pass down: the two edit sessions, the place of the change, and the
// listener that hears of every plug-in and send made, so that automation can find them later.
#pragma once

#include "corvelle/ptr.h"
#include "foundation/fstring.h"
#include "hostapi/hostapi.h"

#include <utility>

namespace Halvorn {

// Told of every host object that a model id stands for once it exists. No FUnknown part: the
// importer owns the listener for the whole import.
struct ICvProjectDeviceListener {
    virtual void deviceImported(const String& id, IHostParameterOwner* object) = 0;

protected:
    ~ICvProjectDeviceListener() = default;
};

// Each field holds one reference. outer names the whole import (and the names of tracks), step
// records the single steps, context is where a change goes; owner is set by the transport only.
struct ImportSessions {
    IPtr<IHostEditSession> outer;
    IPtr<IHostEditSession> step;
    IPtr<IHostEditContext> context;
    IPtr<IHostTimelineObject> owner;

    bool isComplete() const { return outer && step && context; }
    // The same sessions, changing in another place.
    ImportSessions at(IPtr<IHostEditContext> place) const {
        return ImportSessions{outer, step, std::move(place), nullptr};
    }
};

} // namespace Halvorn

// The transport on import: the fixed tempo and the event at the start, and the merge of a model
// tempo or signature track into the host's by exact position.
#pragma once

#include "corvelle/mediatrack.h"
#include "hostapi/hostapi.h"
#include "hostimport/importsessions.h"

namespace Halvorn {
namespace CvHostUtilities {

// Sets the fixed tempo, and the tempo of a host tempo event at exactly 0.0 if there is one.
void setTempoAtStart(IHostProject* project, IHostEditContext* context, double tempo);

// Changes the host's event at each model event's position, or adds one where there is none.
// sessions.context is the tempo or signature track's context, sessions.owner that track. False
// for a track that is neither a tempo nor a signature track.
bool importTransportEvents(IHostContext* host, IMediaTrack* track, ImportSessions& sessions);

} // namespace CvHostUtilities
} // namespace Halvorn

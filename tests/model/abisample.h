// The sample model of the ABI tests, built from the classes and handed over as a bare FUnknown.
#pragma once

#include "corvelle/base.h"

namespace Halvorn {

// One reference, the caller releases: the IMediaProject of a small project with a folder, an
// audio track with its channel, device, send, clip and automation, a marker track, an effect
// and a master channel.
FUnknown* buildSampleProject();

} // namespace Halvorn

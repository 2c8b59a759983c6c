// The sample model of the ABI tests, built from the classes and handed over as a bare FUnknown.
#pragma once

#include "corvelle/base.h"

namespace Halvorn {

// One reference, the caller releases: the IMediaProject of a small project with one item of
// every kind (folder, audio, notes and marker tracks, channels with devices, sends,
// automation).
FUnknown* buildSampleProject();

} // namespace Halvorn

// Free functions over host objects that the importer shares between its stages: host services,
// tracks, colours, media files, mixer children, parameters and routing.
#pragma once

#include "corvelle/mediaobject.h"
#include "corvelle/mediatrack.h"
#include "corvelle/ptr.h"
#include "foundation/fstring.h"
#include "hostapi/hostapi.h"
#include "hostexport/cvhostutilities.h"
#include "hostimport/importsessions.h"

namespace Halvorn {
namespace CvHostUtilities {

// The folder of the host's active project, "/" separated; empty when any link is missing.
String getProjectFolderPath(IHostContext* host);

// The first project track that says it is of this type; borrowed, or null.
FUnknown* findTrackOfType(IHostProject* project, const char8* type);

// One reference, or null: a new track for the model track's content, or for a channel role
// ("FX Channel" for effect, "Group Channel" for submix).
IPtr<IHostObjectType> createTrackFor(IHostProject* project, IMediaTrack* track);
IPtr<IHostObjectType> createChannelTrack(IHostProject* project, uint32 role);

// The speaker mask of a channel count; counts without a layout fall back to mono.
uint32 speakerMaskFromChannels(uint32 count);
bool setTrackArrangement(FUnknown* track, uint32 audioChannels);
void setTrackLoaded(IHostContext* host, FUnknown* track, bool loaded);

// The colour as alpha, red, green, blue from the top byte down; false for no colour.
[[nodiscard]] bool packColor(IMediaObject* object, uint32* argb);
void applyName(FUnknown* track, IMediaObject* object, ImportSessions& sessions);
void applyColor(FUnknown* track, IMediaObject* object, ImportSessions& sessions);

// Borrowed from the pool, or null.
IHostMediaFile* findPoolFile(IHostContext* host, IHostProject* project, const String& path);
// One reference, or null when the file is missing or not of the kind.
IPtr<IHostAudioClip> createAudioClip(IHostContext* host, const String& path);
IPtr<IHostMediaFile> createVideoClip(IHostContext* host, const String& path);

// Borrowed: the mixer channel of a track, or null.
IHostParameterOwner* getMixerChannel(FUnknown* track);
// findParameter(id), then setValue(value, true); false when the parameter is missing.
bool setParameterValue(IHostParameterOwner* owner, const char8* id, float value);
void setOutputDestination(IHostParameterOwner* source, IHostParameterOwner* destination);

} // namespace CvHostUtilities
} // namespace Halvorn

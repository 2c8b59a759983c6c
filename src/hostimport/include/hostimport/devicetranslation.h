// Device translation on import: plug-ins into insert slots with their state, the instrument of an
// instrument track, and the four built-in device types onto channel strip modules or stand-ins.
#pragma once

#include "corvelle/mediadevice.h"
#include "corvelle/mediatrack.h"
#include "foundation/fstring.h"
#include "hostapi/hostapi.h"
#include "hostimport/importsessions.h"

namespace Halvorn {
namespace CvHostUtilities {

// object is a host track, or an FX or group channel's track; listener may be null.
bool importInstrument(IHostContext* host, FUnknown* object, IMediaTrack* model,
                      ICvProjectDeviceListener* listener);
bool importTrackInserts(IHostContext* host, FUnknown* object, IMediaTrack* model,
                        ICvProjectDeviceListener* listener);
bool importInserts(IHostContext* host, FUnknown* object, IMediaChannel* channel,
                   ICvProjectDeviceListener* listener);

// 32 hex digits: a uint32, two uint16 and eight bytes. Any other length leaves classId alone.
bool parseClassId(FUID& classId, const char8* text);

bool translateCompressor(IHostContext* host, FUnknown* object, IMediaDevice* device);
bool translateLimiter(IHostContext* host, FUnknown* object, IMediaDevice* device);
bool translateGate(IHostContext* host, FUnknown* object, IMediaDevice* device);
bool translateEqualizer(IHostContext* host, FUnknown* object, IMediaDevice* device);

// Loads the state file into the plug-in; false when it has no state face or the file won't open.
// The state has the last word over any parameter set before.
bool loadStateFile(IHostParameterOwner* plugin, const char16* statePath);
bool loadPluginClass(IHostContext* host, IHostParameterOwner* owner, const char8* parameterId,
                     const FUID& classId);
bool setParameterByText(IHostParameterOwner* plugin, const char8* id, const String& text);
bool setParameterByTitle(IHostParameterOwner* plugin, const String& title,
                         IMediaParameter* parameter);
bool selectListEntry(IHostParameterOwner* plugin, const String& title, const String& entry);
void selectPreset(IHostParameter* parameter, const String& name);

// A model value as the text a plug-in parses: seconds as milliseconds, and with titleWay
// semitones as hertz; whole numbers plain, others with at most six decimals.
String parameterText(IMediaParameter* parameter, bool titleWay);

} // namespace CvHostUtilities
} // namespace Halvorn

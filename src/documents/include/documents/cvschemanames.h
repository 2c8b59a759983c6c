// The names of the project document: elements, attributes and the texts of its own enumerations.
//
// Reader and writer both take their names from here, so the two can't drift apart. The texts
// of enumerations that the model already knows (units, content types, channel roles, device
// kinds and roles, band types, send types, interpolation) stay in the model's tables
// (model/cvtables.h) and are not repeated.
// Every name compares case-sensitively.
#pragma once

#include "corvelle/base.h"

namespace Halvorn {
namespace CvSchema {

// Element names, by family.
namespace Element {
// The document frame.
constexpr const char8* kProject = "Project";
constexpr const char8* kApplication = "Application";
constexpr const char8* kTransport = "Transport";
constexpr const char8* kTempo = "Tempo";
constexpr const char8* kTimeSignature = "TimeSignature";
constexpr const char8* kStructure = "Structure";
constexpr const char8* kArrangement = "Arrangement";

// Tracks, channels and sends.
constexpr const char8* kTrack = "Track";
constexpr const char8* kChannel = "Channel";
constexpr const char8* kMute = "Mute";
constexpr const char8* kPan = "Pan";
constexpr const char8* kVolume = "Volume";
constexpr const char8* kSends = "Sends";
constexpr const char8* kSend = "Send";
constexpr const char8* kEnable = "Enable";

// Devices; the device elements themselves are named by the model's device-kind table.
constexpr const char8* kDevices = "Devices";
constexpr const char8* kParameters = "Parameters";
constexpr const char8* kRealParameter = "RealParameter";
constexpr const char8* kBand = "Band";
constexpr const char8* kPreset = "Preset";
constexpr const char8* kEnabled = "Enabled";
constexpr const char8* kState = "State";

// Lanes, clips and their content.
constexpr const char8* kLanes = "Lanes";
constexpr const char8* kClips = "Clips";
constexpr const char8* kClip = "Clip";
constexpr const char8* kAudio = "Audio";
constexpr const char8* kFile = "File";
constexpr const char8* kWarps = "Warps";
constexpr const char8* kWarp = "Warp";
constexpr const char8* kVideo = "Video";
constexpr const char8* kNotes = "Notes";
constexpr const char8* kNote = "Note";

// Automation, tempo, signature and markers.
constexpr const char8* kPoints = "Points";
constexpr const char8* kTarget = "Target";
constexpr const char8* kRealPoint = "RealPoint";
constexpr const char8* kBoolPoint = "BoolPoint";
constexpr const char8* kTempoAutomation = "TempoAutomation";
constexpr const char8* kTimeSignatureAutomation = "TimeSignatureAutomation";
constexpr const char8* kTimeSignaturePoint = "TimeSignaturePoint";
constexpr const char8* kMarkers = "Markers";
constexpr const char8* kMarker = "Marker";
} // namespace Element

// Attribute names.
namespace Attribute {
constexpr const char8* kVersion = "version";
constexpr const char8* kId = "id";
constexpr const char8* kName = "name";
constexpr const char8* kColor = "color";

// Values and parameters.
constexpr const char8* kValue = "value";
constexpr const char8* kUnit = "unit";
constexpr const char8* kMin = "min";
constexpr const char8* kMax = "max";
constexpr const char8* kParameterId = "parameterID";
constexpr const char8* kNumerator = "numerator";
constexpr const char8* kDenominator = "denominator";

// Structure.
constexpr const char8* kContentType = "contentType";
constexpr const char8* kLoaded = "loaded";
constexpr const char8* kRole = "role";
constexpr const char8* kAudioChannels = "audioChannels";
constexpr const char8* kSolo = "solo";
constexpr const char8* kDestination = "destination";
constexpr const char8* kType = "type";
constexpr const char8* kOrder = "order";
constexpr const char8* kDeviceRole = "deviceRole";
constexpr const char8* kDeviceName = "deviceName";
constexpr const char8* kDeviceId = "deviceID";
constexpr const char8* kPath = "path";
constexpr const char8* kExternal = "external";

// Arrangement.
constexpr const char8* kTimeUnit = "timeUnit";
constexpr const char8* kContentTimeUnit = "contentTimeUnit";
constexpr const char8* kFadeTimeUnit = "fadeTimeUnit";
constexpr const char8* kTrack = "track";
constexpr const char8* kTime = "time";
constexpr const char8* kDuration = "duration";
constexpr const char8* kPlayStart = "playStart";
constexpr const char8* kPlayStop = "playStop";
constexpr const char8* kFadeInTime = "fadeInTime";
constexpr const char8* kFadeOutTime = "fadeOutTime";
constexpr const char8* kEnable = "enable";
constexpr const char8* kSampleRate = "sampleRate";
constexpr const char8* kChannels = "channels";
constexpr const char8* kContentTime = "contentTime";
constexpr const char8* kChannel = "channel";
constexpr const char8* kKey = "key";
constexpr const char8* kVelocity = "vel";
constexpr const char8* kRelease = "rel";
constexpr const char8* kParameter = "parameter";
constexpr const char8* kInterpolation = "interpolation";
} // namespace Attribute

// Texts of the format's own enumerations and of the values it writes or assumes.
namespace Text {
constexpr const char8* kTrue = "true";
constexpr const char8* kFalse = "false";
constexpr const char8* kSeconds = "seconds"; // a time unit; every other text means beats
constexpr const char8* kBeats = "beats";
constexpr const char8* kUnknown = "unknown";
constexpr const char8* kDocumentVersion = "1.0";
constexpr const char8* kStateFolder = "plugins/";
constexpr const char8* kAudioFolder = "audio/";
constexpr const char8* kVideoFolder = "video/";

// What stands in for a missing Application.
constexpr const char8* kDefaultApplicationName = "DAW";
constexpr const char8* kDefaultApplicationVersion = "1.0";

// Names of the tracks and clips that tempo, signature and markers are read into.
constexpr const char8* kTempoName = "Tempo";
constexpr const char8* kSignatureName = "Signature";
constexpr const char8* kMarkersName = "Markers";
} // namespace Text

} // namespace CvSchema
} // namespace Halvorn

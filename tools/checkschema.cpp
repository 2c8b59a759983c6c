// The table of the project document's elements, attributes and enumeration texts.
#include "checkschema.h"

#include <string>
#include <unordered_map>

namespace CorvelleTool {

namespace {

using T = ValueType;

// Attributes shared by several kinds.
const std::vector<AttributeRule> kLabelledReal = {
    {"value", T::kReal}, {"unit", T::kUnit}, {"min", T::kReal},           {"max", T::kReal},
    {"name", T::kText},  {"id", T::kId},     {"parameterID", T::kInteger}};
const std::vector<AttributeRule> kSwitch = {
    {"value", T::kBoolean}, {"name", T::kText}, {"id", T::kId}};
const std::vector<AttributeRule> kDevice = {{"id", T::kId},
                                            {"deviceRole", T::kDeviceRole},
                                            {"deviceName", T::kText},
                                            {"deviceID", T::kText}};

using Children = std::vector<std::pair<std::string_view, std::string_view>>;

Children deviceChildren(Children own) {
    own.insert(own.end(),
               {{"Parameters", "Parameters"}, {"Enabled", "DeviceEnabled"}, {"State", "State"}});
    return own;
}

const std::vector<ElementKind>& kinds() {
    static const std::vector<ElementKind> table = {
        {"Project",
         {{"version", T::kText}},
         {{"Application", "Application"},
          {"Transport", "Transport"},
          {"Structure", "Structure"},
          {"Arrangement", "Arrangement"}}},
        {"Application", {{"name", T::kText}, {"version", T::kText}}, {}},
        {"Transport", {}, {{"Tempo", "Tempo"}, {"TimeSignature", "TimeSignature"}}},
        {"Tempo",
         {{"unit", T::kUnit},
          {"value", T::kReal},
          {"id", T::kId},
          {"min", T::kReal},
          {"max", T::kReal}},
         {}},
        {"TimeSignature",
         {{"numerator", T::kInteger}, {"denominator", T::kInteger}, {"id", T::kId}},
         {}},
        {"Structure", {}, {{"Track", "Track"}, {"Channel", "Channel"}}},
        {"Track",
         {{"contentType", T::kContentType},
          {"loaded", T::kBoolean},
          {"id", T::kId},
          {"name", T::kText},
          {"color", T::kColor}},
         {{"Channel", "Channel"}, {"Track", "Track"}}},
        {"Channel",
         {{"role", T::kChannelRole},
          {"audioChannels", T::kInteger},
          {"id", T::kId},
          {"name", T::kText},
          {"color", T::kColor},
          {"solo", T::kBoolean},
          {"destination", T::kChannelRef}},
         {{"Mute", "Switch"},
          {"Pan", "LabelledReal"},
          {"Volume", "LabelledReal"},
          {"Devices", "Devices"},
          {"Sends", "Sends"},
          {"Send", "Send"}},
         false,
         {{"Send", "Send"}}},
        {"LabelledReal", kLabelledReal, {}, true},
        {"Switch", kSwitch, {}, true},
        {"Devices",
         {},
         {{"Quor2Plugin", "Plugin"},
          {"Quor3Plugin", "Plugin"},
          {"AuPlugin", "Plugin"},
          {"ClapPlugin", "Plugin"},
          {"BuiltinDevice", "Plugin"},
          {"BuiltinInstrument", "Instrument"},
          {"Compressor", "Compressor"},
          {"Limiter", "Limiter"},
          {"NoiseGate", "NoiseGate"},
          {"Equalizer", "Equalizer"}}},
        {"Plugin", kDevice, deviceChildren({})},
        {"Instrument", kDevice, deviceChildren({{"Preset", "Preset"}})},
        {"Compressor", kDevice,
         deviceChildren({{"Threshold", "LabelledReal"},
                         {"Attack", "LabelledReal"},
                         {"Release", "LabelledReal"},
                         {"InputGain", "LabelledReal"},
                         {"OutputGain", "LabelledReal"},
                         {"Ratio", "LabelledReal"},
                         {"AutoMakeup", "Switch"}})},
        {"Limiter", kDevice,
         deviceChildren({{"Threshold", "LabelledReal"},
                         {"Attack", "LabelledReal"},
                         {"Release", "LabelledReal"},
                         {"InputGain", "LabelledReal"},
                         {"OutputGain", "LabelledReal"}})},
        {"NoiseGate", kDevice,
         deviceChildren({{"Threshold", "LabelledReal"},
                         {"Ratio", "LabelledReal"},
                         {"Attack", "LabelledReal"},
                         {"Release", "LabelledReal"},
                         {"Range", "LabelledReal"}})},
        {"Equalizer",
         kDevice,
         deviceChildren(
             {{"InputGain", "LabelledReal"}, {"OutputGain", "LabelledReal"}, {"Band", "Band"}}),
         false,
         {{"Band", "Band"}}},
        {"Parameters",
         {},
         {{"RealParameter", "RealParameter"}},
         false,
         {{"RealParameter", "RealParameter"}}},
        {"RealParameter",
         {{"min", T::kReal},
          {"max", T::kReal},
          {"value", T::kReal},
          {"unit", T::kUnit},
          {"parameterID", T::kInteger},
          {"id", T::kId},
          {"name", T::kText}},
         {},
         true},
        {"Preset", {{"name", T::kText}}, {}},
        {"DeviceEnabled", {{"value", T::kBoolean}}, {}},
        {"State", {{"path", T::kText}, {"external", T::kBoolean}}, {}},
        {"Band",
         {{"type", T::kBandType}, {"order", T::kInteger}, {"id", T::kId}},
         {{"Freq", "LabelledReal"},
          {"Gain", "LabelledReal"},
          {"Q", "LabelledReal"},
          {"Enabled", "Switch"}}},
        {"Sends", {}, {{"Send", "Send"}}},
        {"Send",
         {{"type", T::kSendType}, {"destination", T::kChannelRef}, {"id", T::kId}},
         {{"Enable", "SendEnable"}, {"Volume", "LabelledReal"}}},
        {"SendEnable", {{"value", T::kBoolean}, {"id", T::kId}}, {}, true},
        {"Arrangement",
         {},
         {{"Lanes", "OuterLanes"},
          {"TempoAutomation", "TempoAutomation"},
          {"TimeSignatureAutomation", "TimeSignatureAutomation"},
          {"Markers", "Markers"}}},
        {"OuterLanes", {{"timeUnit", T::kTimeUnit}}, {{"Lanes", "Lane"}}},
        {"Lane",
         {{"track", T::kTrackRef}, {"timeUnit", T::kTimeUnit}},
         {{"Clips", "LaneClips"}, {"Points", "Points"}}},
        {"LaneClips",
         {{"track", T::kTrackRef}, {"timeUnit", T::kTimeUnit}},
         {{"Clip", "LaneClip"}}},
        {"LaneClip",
         {{"time", T::kReal},
          {"duration", T::kReal},
          {"contentTimeUnit", T::kTimeUnit},
          {"playStart", T::kReal},
          {"playStop", T::kReal},
          {"fadeTimeUnit", T::kTimeUnit},
          {"fadeInTime", T::kReal},
          {"fadeOutTime", T::kReal},
          {"name", T::kText},
          {"enable", T::kBoolean},
          {"color", T::kColor}},
         // An audio clip without inner Clips is its own single inner clip.
         {{"Clips", "AudioClips"},
          {"Audio", "Audio"},
          {"Warps", "Warps"},
          {"Notes", "Notes"},
          {"Video", "Video"}},
         false,
         {{"Audio", "Audio"}, {"Notes", "Notes"}}},
        {"AudioClips", {{"timeUnit", T::kTimeUnit}}, {{"Clip", "AudioClip"}}},
        {"AudioClip",
         {{"contentTimeUnit", T::kTimeUnit},
          {"time", T::kReal},
          {"duration", T::kReal},
          {"playStart", T::kReal},
          {"playStop", T::kReal}},
         {{"Audio", "Audio"}, {"Warps", "Warps"}},
         false,
         {{"Audio", "Audio"}}},
        {"Warps",
         {{"contentTimeUnit", T::kTimeUnit}, {"timeUnit", T::kTimeUnit}},
         {{"Audio", "Audio"}, {"Warp", "Warp"}}},
        {"Warp", {{"time", T::kReal}, {"contentTime", T::kReal}}, {}},
        {"Audio",
         {{"sampleRate", T::kInteger}, {"channels", T::kInteger}, {"duration", T::kReal}},
         {{"File", "File"}}},
        {"File", {{"path", T::kText}, {"external", T::kBoolean}}, {}},
        {"Video", {{"duration", T::kReal}}, {{"File", "File"}}},
        {"Notes", {}, {{"Note", "Note"}}},
        {"Note",
         {{"time", T::kReal},
          {"duration", T::kReal},
          {"channel", T::kInteger},
          {"key", T::kInteger},
          {"vel", T::kReal},
          {"rel", T::kText}},
         {}},
        {"Points",
         {{"unit", T::kUnit}, {"id", T::kId}, {"track", T::kTrackRef}},
         {{"Target", "Target"}, {"RealPoint", "RealPoint"}, {"BoolPoint", "BoolPoint"}}},
        {"Target", {{"parameter", T::kParameterRef}}, {}},
        {"RealPoint",
         {{"time", T::kReal},
          {"value", T::kReal},
          {"interpolation", T::kInterpolation},
          {"id", T::kId},
          {"color", T::kColor}},
         {}},
        {"BoolPoint", {{"time", T::kReal}, {"value", T::kBoolean}, {"id", T::kId}}, {}},
        {"TempoAutomation",
         {{"unit", T::kText}, {"id", T::kId}, {"name", T::kText}},
         {{"RealPoint", "RealPoint"}}},
        {"TimeSignatureAutomation",
         {{"timeUnit", T::kTimeUnit}, {"id", T::kId}, {"name", T::kText}},
         {{"TimeSignaturePoint", "TimeSignaturePoint"}}},
        {"TimeSignaturePoint",
         {{"time", T::kReal},
          {"numerator", T::kInteger},
          {"denominator", T::kInteger},
          {"color", T::kColor}},
         {}},
        {"Markers",
         {{"timeUnit", T::kTimeUnit}, {"id", T::kId}, {"name", T::kText}},
         {{"Marker", "Marker"}}},
        {"Marker", {{"time", T::kReal}, {"name", T::kText}, {"color", T::kColor}}, {}},
    };
    return table;
}

const ElementKind& kindNamed(std::string_view name) {
    static const auto index = [] {
        std::unordered_map<std::string_view, const ElementKind*> byName;
        for (const ElementKind& kind : kinds())
            byName.emplace(kind.kind, &kind);
        return byName;
    }();
    return *index.at(name);
}

} // namespace

const ElementKind& projectKind() { return kindNamed("Project"); }

const ElementKind* childKind(const ElementKind& parent, std::string_view name) {
    for (const auto& [childName, kind] : parent.children)
        if (childName == name)
            return &kindNamed(kind);
    return nullptr;
}

const ElementKind* deepKind(const ElementKind& context, std::string_view name) {
    for (const auto& [deepName, kind] : context.deep)
        if (deepName == name)
            return &kindNamed(kind);
    return nullptr;
}

const AttributeRule* attributeRule(const ElementKind& kind, std::string_view name) {
    for (const AttributeRule& rule : kind.attributes)
        if (rule.name == name)
            return &rule;
    return nullptr;
}

const std::vector<std::string_view>& enumerationTexts(ValueType type) {
    static const std::vector<std::string_view> none;
    static const std::unordered_map<int, std::vector<std::string_view>> texts = {
        {int(T::kTimeUnit), {"seconds", "beats"}},
        {int(T::kUnit),
         {"linear", "normalized", "percent", "decibel", "hertz", "semitones", "seconds", "beats",
          "bpm"}},
        {int(T::kContentType),
         {"tracks", "audio", "notes", "automation", "video", "markers", "audio notes"}},
        {int(T::kChannelRole), {"regular", "master", "effect", "submix", "vca"}},
        {int(T::kDeviceRole), {"instrument", "noteFX", "audioFX", "analyzer"}},
        {int(T::kSendType), {"pre", "post"}},
        {int(T::kBandType),
         {"highPass", "lowPass", "bandPass", "highShelf", "lowShelf", "bell", "notch", "unknown"}},
        {int(T::kInterpolation), {"linear", "hold"}},
    };
    const auto found = texts.find(int(type));
    return found == texts.end() ? none : found->second;
}

} // namespace CorvelleTool

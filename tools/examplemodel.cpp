// The example project of "corvelle new": a small model of the tool's own behind IMedia faces.
#include "examplemodel.h"

#include "corvelle/mediaproject.h"
#include "packagereading.h"
#include "support/counted.h"

#include <string>
#include <utility>
#include <vector>

namespace CorvelleTool {

namespace {

using namespace Halvorn;

using Support::Counted;

struct Color : Counted<IMediaColor> {
    uint8 rgba[4] = {0, 0, 0, 0};
    uint8 getRed() override { return rgba[0]; }
    uint8 getGreen() override { return rgba[1]; }
    uint8 getBlue() override { return rgba[2]; }
    uint8 getAlpha() override { return rgba[3]; }
};

// The identity every node shares.
template <class... Faces> struct Node : Counted<IMediaObject, Faces...> {
    std::u16string id;
    std::u16string name;
    Color color;
    const char16* getId() override { return id.c_str(); }
    const char16* getName() override { return name.c_str(); }
    IMediaColor* getColor() override { return &color; }
};

struct Parameter : Node<IMediaParameter> {
    uint32 unit = kUnitNormalized;
    double value = 0.0, min = 0.0, max = 1.0;
    uint32 steps = 0;
    uint32 getUnit() override { return unit; }
    double getValue() override { return value; }
    double getMin() override { return min; }
    double getMax() override { return max; }
    uint32 getParameterId() override { return 0; }
    double getNormalizedValue() override { return max == min ? 0.0 : (value - min) / (max - min); }
    bool isContinuous() override { return steps == 0; }
    uint32 getStepCount() override { return steps; }
    void setValue(double v) override { value = v; }
    void setMin(double v) override { min = v; }
    void setMax(double v) override { max = v; }
    void setParameterId(uint32) override {}
    void setStepCount(uint32 v) override { steps = v; }
};

struct Time : Counted<IMediaTime> {
    double start = 0.0, duration = 0.0;
    double getStart() override { return start; }
    double getDuration() override { return duration; }
    double getOffset() override { return 0.0; }
};

struct Note : Node<IMediaEvent, IMediaMidiEvent, IMediaMidiNoteEvent> {
    Time time;
    uint32 key = 60;
    double velocity = 0.8;
    uint32 getEventType() override { return kEventMidi; }
    IMediaTime* getTime() override { return &time; }
    bool isMuted() override { return false; }
    uint32 getStatus() override { return 144; }
    uint32 getChannel() override { return 0; }
    uint32 getData1() override { return key; }
    uint32 getData2() override { return static_cast<uint32>(velocity * 127.0); }
    uint32 getKey() override { return key; }
    double getVelocity() override { return velocity; }
};

struct Marker : Node<IMediaEvent, IMediaMarkerEvent> {
    Time time;
    uint32 getEventType() override { return kEventMarker; }
    IMediaTime* getTime() override { return &time; }
    bool isMuted() override { return false; }
    bool getFlag() override { return false; }
};

struct Clip : Node<IMediaClip, IMediaEvent> {
    uint32 type = kEventMidi;
    Time time;
    std::vector<IMediaEvent*> events;
    uint32 getEventType() override { return type; }
    IMediaTime* getTime() override { return &time; }
    bool isMuted() override { return false; }
    uint32 getEventCount() override { return static_cast<uint32>(events.size()); }
    IMediaEvent* getEvent(uint32 i) override { return i < events.size() ? events[i] : nullptr; }
    double getFadeInTime() override { return 0.0; }
    double getFadeOutTime() override { return 0.0; }
};

struct Channel : Node<IMediaChannel, IMediaParameterContainer> {
    std::vector<Parameter*> parameters;
    IMediaParameter* findParameterByName(const char8* wanted) override {
        for (Parameter* parameter : parameters)
            if (wanted && std::string(wanted) == logicalName(parameter))
                return parameter;
        return nullptr;
    }
    static std::string logicalName(Parameter* parameter) {
        return std::string(parameter->name.begin(), parameter->name.end());
    }
    uint32 getKind() override { return 1; }
    uint32 getRole() override { return kChannelRoleRegular; }
    uint32 getDeviceCount() override { return 0; }
    IMediaDevice* getDevice(uint32) override { return nullptr; }
    IMediaParameter* findParameter(const char8* name) override { return findParameterByName(name); }
    bool hasParameter(const char8* name) override { return findParameterByName(name) != nullptr; }
    uint32 getAudioChannels() override { return 2; }
    const char16* getDestination() override { return u""; }
    uint32 getSendCount() override { return 0; }
    IMediaSend* getSend(uint32) override { return nullptr; }
    uint32 getParameterCount() override { return static_cast<uint32>(parameters.size()); }
    IMediaParameter* getParameter(uint32 i) override {
        return i < parameters.size() ? parameters[i] : nullptr;
    }
    IMediaParameter* findParameterById(const char16* wanted) override {
        for (Parameter* parameter : parameters)
            if (wanted && parameter->id == wanted)
                return parameter;
        return nullptr;
    }
    IMediaParameter* findParameterByNumber(uint32) override { return nullptr; }
    bool hasParameterNumber(uint32) override { return false; }
    bool hasParameterName(const char8* name) override { return hasParameter(name); }
};

struct Track : Node<IMediaTrack> {
    uint32 content = kContentNotes;
    Channel* channel = nullptr;
    std::vector<Clip*> clips;
    uint32 getContentType() override { return content; }
    uint32 getTrackCount() override { return 0; }
    IMediaTrack* getTrack(uint32) override { return nullptr; }
    uint32 getClipCount() override { return static_cast<uint32>(clips.size()); }
    IMediaClip* getClip(uint32 i) override { return i < clips.size() ? clips[i] : nullptr; }
    IMediaChannel* getChannel() override { return channel; }
    FUnknown* getReserved() override { return nullptr; }
    bool isLoaded() override { return true; }
    uint32 getAutomationCount() override { return 0; }
    IMediaAutomation* getAutomation(uint32) override { return nullptr; }
};

struct Signature : Counted<IMediaSignature> {
    uint16 getNumerator() override { return 4; }
    uint16 getDenominator() override { return 4; }
};

// Owns every node below it: the faces hand out borrowed pointers, as the interfaces say, and
// the values inside a node (its color, its time) live and die with it.
struct Project : Counted<IMediaProject> {
    std::vector<Support::RefCounted*> owned;
    std::vector<Track*> tracks;
    Parameter* tempo = nullptr;
    Signature signature;
    Channel* channel = nullptr;

    ~Project() override {
        for (Support::RefCounted* object : owned)
            object->drop();
    }

    template <class T> T* make() {
        T* object = new T();
        owned.push_back(object);
        return object;
    }

    const char16* getApplicationName() override { return u"corvelle new"; }
    const char16* getApplicationVersion() override { return u"1.0"; }
    uint32 getTrackCount() override { return static_cast<uint32>(tracks.size()); }
    IMediaTrack* getTrack(uint32 i) override { return i < tracks.size() ? tracks[i] : nullptr; }
    IMediaParameter* getTempo() override { return tempo; }
    IMediaSignature* getTimeSignature() override { return &signature; }
    uint32 getChannelCount() override { return channel ? 1 : 0; }
    IMediaChannel* getChannel(uint32 i) override { return i == 0 ? channel : nullptr; }
    IMediaChannel* findChannel(const char16* id) override {
        return channel && id && channel->id == id ? channel : nullptr;
    }
};

// The caller holds the package, the package the project.
struct Package final : Counted<IMediaProjectPackage> {
    IMediaProject* getProject() override { return &project; }
    Project project;
};

Parameter* parameter(Project& project, const char16* id, const char16* name, uint32 unit,
                     double value, double min, double max, uint32 steps = 0) {
    Parameter* result = project.make<Parameter>();
    result->id = id;
    result->name = name;
    result->unit = unit;
    result->value = value;
    result->min = min;
    result->max = max;
    result->steps = steps;
    return result;
}

} // namespace

IPtr<IMediaProjectPackage> makeExamplePackage() {
    auto* package = new Package();
    Project& project = package->project;
    project.tempo = parameter(project, u"", u"", kUnitBpm, 96.0, 1.0, 300.0);

    Channel* channel = project.make<Channel>();
    channel->id = u"id2";
    channel->name = u"Piano";
    channel->parameters = {
        parameter(project, u"id3", u"MPParamVolume", kUnitLinear, 1.0, 0.0, 2.0),
        parameter(project, u"id4", u"MPParamPan", kUnitNormalized, 0.5, 0.0, 1.0),
        parameter(project, u"id5", u"MPParamMute", kUnitNormalized, 0.0, 0.0, 1.0, 2)};
    project.channel = channel;

    Track* piano = project.make<Track>();
    piano->id = u"id1";
    piano->name = u"Piano";
    piano->color.rgba[0] = 0x40, piano->color.rgba[1] = 0x80, piano->color.rgba[2] = 0xff;
    piano->color.rgba[3] = 0xff;
    piano->channel = channel;
    Clip* clip = project.make<Clip>();
    clip->name = u"Arpeggio";
    clip->time.duration = 2.5; // two bars of 4/4 at 96 bpm
    const uint32 keys[] = {60, 64, 67, 72, 67, 64, 60, 55};
    for (int i = 0; i < 8; ++i) {
        Note* note = project.make<Note>();
        note->key = keys[i];
        note->time.start = i * 0.3125; // an eighth note
        note->time.duration = 0.3;
        note->velocity = i % 4 == 0 ? 0.9 : 0.7;
        clip->events.push_back(note);
    }
    piano->clips.push_back(clip);
    project.tracks.push_back(piano);

    Track* markers = project.make<Track>();
    markers->id = u"id6";
    markers->name = u"Markers";
    markers->content = kContentMarkers;
    Clip* markerClip = project.make<Clip>();
    markerClip->type = kEventMarker;
    markerClip->time.duration = 2.5;
    for (const auto& [start, name] : {std::pair{0.0, u"Start"}, std::pair{2.5, u"End"}}) {
        Marker* marker = project.make<Marker>();
        marker->time.start = start;
        marker->name = name;
        markerClip->events.push_back(marker);
    }
    markers->clips.push_back(markerClip);
    project.tracks.push_back(markers);
    return IPtr<IMediaProjectPackage>::adopt(package);
}

int writeExamplePackage(const std::string& out) {
    return writePackageFile(makeExamplePackage().get(), out);
}

} // namespace CorvelleTool

// The model walk: one function per interface family, each filling its node of the tree.
#include "support/modelwalk.h"

#include "corvelle/ptr.h"
#include "support/enumnames.h"
#include "support/utf.h"

#include <cstdio>
#include <type_traits>

namespace CorvelleSupport {

using namespace Halvorn;

namespace {

template <class T, class = std::enable_if_t<std::is_arithmetic_v<T>>> FieldValue valueOf(T value) {
    if constexpr (std::is_same_v<T, bool>)
        return value;
    else if constexpr (std::is_floating_point_v<T>)
        return static_cast<double>(value);
    else
        return static_cast<int64_t>(value);
}

FieldValue valueOf(const char16* text) { return toUtf8(text); }
FieldValue valueOf(const char* text) { return std::string(text ? text : ""); }
FieldValue valueOf(const std::string& text) { return text; }
FieldValue named(int64_t value, const char* name) { return Named{value, name}; }

struct Builder {
    ModelNode node;

    Builder(const char* kind, FUnknown* object) {
        node.kind = kind;
        node.object = object;
    }

    template <class T> Builder& add(const char* name, const T& value) {
        node.fields.push_back({name, valueOf(value)});
        return *this;
    }

    Builder& add(const char* name, FieldValue value) {
        node.fields.push_back({name, std::move(value)});
        return *this;
    }

    ModelGroup& group(const char* name, bool single = false) {
        node.groups.push_back({name, single, {}});
        return node.groups.back();
    }

    // Id, name and colour of anything that answers for IMediaObject.
    Builder& identity() {
        const auto object = queryInterface<IMediaObject>(node.object);
        if (!object)
            return *this;
        add("id", object->getId()).add("name", object->getName());
        IMediaColor* color = object->getColor();
        if (color && (color->getRed() | color->getGreen() | color->getBlue() | color->getAlpha())) {
            char text[10];
            std::snprintf(text, sizeof text, "#%02x%02x%02x%02x", color->getRed(),
                          color->getGreen(), color->getBlue(), color->getAlpha());
            add("color", std::string(text));
        }
        return *this;
    }

    void addTime(IMediaTime* time) {
        if (time)
            add("start", time->getStart())
                .add("duration", time->getDuration())
                .add("offset", time->getOffset());
    }
};

// The walk proper: one function per interface family, each filling its node of the tree and
// offering every finished child to the visitor before it joins its group.
class Walk {
public:
    explicit Walk(const NodeVisitor& visit) : visit_(visit) {}

    ModelNode project(IMediaProject& project) {
        Builder out("project", &project);
        out.add("application.name", project.getApplicationName())
            .add("application.version", project.getApplicationVersion());
        if (IMediaSignature* signature = project.getTimeSignature())
            out.add("signature.numerator", signature->getNumerator())
                .add("signature.denominator", signature->getDenominator());
        ModelGroup& tempo = out.group("tempo", true);
        if (IMediaParameter* item = project.getTempo())
            keep(tempo, parameter(item));
        ModelGroup& tracks = out.group("tracks");
        for (uint32 i = 0; i < project.getTrackCount(); ++i)
            if (IMediaTrack* item = project.getTrack(i))
                keep(tracks, track(item));
        ModelGroup& channels = out.group("channels");
        for (uint32 i = 0; i < project.getChannelCount(); ++i)
            if (IMediaChannel* item = project.getChannel(i))
                keep(channels, channel(item));
        return std::move(out.node);
    }

private:
    void keep(ModelGroup& group, ModelNode node) {
        if (!visit_ || visit_(node))
            group.items.push_back(std::move(node));
    }

    ModelNode parameter(IMediaParameter* parameter) {
        Builder out("parameter", parameter);
        out.identity()
            .add("unit", named(parameter->getUnit(), unitName(parameter->getUnit())))
            .add("value", parameter->getValue())
            .add("min", parameter->getMin())
            .add("max", parameter->getMax())
            .add("parameterId", parameter->getParameterId())
            .add("stepCount", parameter->getStepCount());
        return std::move(out.node);
    }

    void addParameters(Builder& out, IMediaParameterContainer* container) {
        ModelGroup& group = out.group("parameters");
        for (uint32 i = 0; container && i < container->getParameterCount(); ++i)
            if (IMediaParameter* item = container->getParameter(i))
                keep(group, parameter(item));
    }

    ModelNode band(IMediaEqualizerBand* band) {
        Builder out("band", band);
        out.identity()
            .add("type", named(band->getBandType(), bandTypeName(band->getBandType())))
            .add("order", band->getOrder());
        addParameters(out, band->getParameters());
        return std::move(out.node);
    }

    ModelNode device(IMediaDevice* device) {
        Builder out("device", device);
        out.identity()
            .add("type", named(device->getDeviceType(), deviceTypeName(device->getDeviceType())))
            .add("role", named(device->getDeviceRole(), deviceRoleName(device->getDeviceRole())))
            .add("deviceId", device->getDeviceId())
            .add("statePath", device->getStatePath())
            .add("enabled", device->isEnabled());
        if (const auto instrument = queryInterface<IMediaBuiltinInstrument>(device))
            out.add("presetName", instrument->getPresetName());
        addParameters(out, device->getParameters());
        if (const auto equalizer = queryInterface<IMediaEqualizer>(device)) {
            ModelGroup& bands = out.group("bands");
            for (uint32 i = 0; i < equalizer->getBandCount(); ++i)
                if (IMediaEqualizerBand* item = equalizer->getBand(i))
                    keep(bands, band(item));
        }
        return std::move(out.node);
    }

    ModelNode send(IMediaSend* send) {
        Builder out("send", send);
        out.identity()
            .add("type", named(send->getType(), send->getType() == kSendPost ? "post" : "pre"))
            .add("destination", send->getDestination())
            .add("enabled", send->isEnabled());
        addParameters(out, queryInterface<IMediaParameterContainer>(send).get());
        return std::move(out.node);
    }

    ModelNode channel(IMediaChannel* channel) {
        Builder out("channel", channel);
        out.identity()
            .add("kind", channel->getKind())
            .add("role", named(channel->getRole(), channelRoleName(channel->getRole())))
            .add("audioChannels", channel->getAudioChannels())
            .add("destination", channel->getDestination());
        addParameters(out, queryInterface<IMediaParameterContainer>(channel).get());
        ModelGroup& devices = out.group("devices");
        for (uint32 i = 0; i < channel->getDeviceCount(); ++i)
            if (IMediaDevice* item = channel->getDevice(i))
                keep(devices, device(item));
        ModelGroup& sends = out.group("sends");
        for (uint32 i = 0; i < channel->getSendCount(); ++i)
            if (IMediaSend* item = channel->getSend(i))
                keep(sends, send(item));
        return std::move(out.node);
    }

    void addAudio(Builder& out, IMediaAudioEvent* audio) {
        uint32 sampleRate = 0, channels = 0;
        double duration = 0;
        audio->getFormat(&sampleRate, &channels, &duration);
        out.add("file", audio->getFilePath())
            .add("format.sampleRate", sampleRate)
            .add("format.channels", channels)
            .add("format.duration", duration)
            .add("playbackRate", audio->getPlaybackRate());
        ModelGroup& warps = out.group("warps");
        for (uint32 i = 0; i < audio->getWarpCount(); ++i)
            if (IMediaWarpPoint* warp = audio->getWarp(i)) {
                Builder point("warp", warp);
                point.add("time", warp->getTime()).add("contentTime", warp->getContentTime());
                keep(warps, std::move(point.node));
            }
    }

    ModelNode event(IMediaEvent* event) {
        Builder out("event", event);
        out.identity().add("type",
                           named(event->getEventType(), eventTypeName(event->getEventType())));
        out.addTime(event->getTime());
        out.add("muted", event->isMuted());
        if (const auto audio = queryInterface<IMediaAudioEvent>(event))
            addAudio(out, audio.get());
        if (const auto video = queryInterface<IMediaVideoEvent>(event)) {
            uint32 sampleRate = 0;
            uint64 frames = 0;
            double duration = 0;
            video->getFormat(&sampleRate, &frames, &duration);
            out.add("file", video->getFilePath())
                .add("format.sampleRate", sampleRate)
                .add("format.frameCount", frames)
                .add("format.duration", duration);
        }
        if (const auto midi = queryInterface<IMediaMidiEvent>(event))
            out.add("midi.status", midi->getStatus())
                .add("midi.channel", midi->getChannel())
                .add("midi.data1", midi->getData1())
                .add("midi.data2", midi->getData2());
        if (const auto note = queryInterface<IMediaMidiNoteEvent>(event))
            out.add("key", note->getKey()).add("velocity", note->getVelocity());
        if (const auto marker = queryInterface<IMediaMarkerEvent>(event))
            out.add("flag", marker->getFlag());
        if (const auto tempo = queryInterface<IMediaTempoEvent>(event))
            out.add("tempo", tempo->getTempo())
                .add("interpolation", named(tempo->getInterpolation(),
                                            interpolationName(tempo->getInterpolation())));
        if (const auto signature = queryInterface<IMediaSignatureEvent>(event))
            out.add("numerator", signature->getNumerator())
                .add("denominator", signature->getDenominator());
        return std::move(out.node);
    }

    ModelNode clip(IMediaClip* clip) {
        Builder out("clip", clip);
        out.identity().add("eventType",
                           named(clip->getEventType(), eventTypeName(clip->getEventType())));
        out.addTime(clip->getTime());
        if (const auto asEvent = queryInterface<IMediaEvent>(clip))
            out.add("muted", asEvent->isMuted());
        out.add("fadeIn", clip->getFadeInTime()).add("fadeOut", clip->getFadeOutTime());
        ModelGroup& events = out.group("events");
        for (uint32 i = 0; i < clip->getEventCount(); ++i)
            if (IMediaEvent* item = clip->getEvent(i))
                keep(events, event(item));
        return std::move(out.node);
    }

    ModelNode automation(IMediaAutomation* lane) {
        Builder out("automation", lane);
        out.identity()
            .add("target", lane->getTarget())
            .add("unit", named(lane->getUnit(), unitName(lane->getUnit())));
        ModelGroup& points = out.group("points");
        for (uint32 i = 0; i < lane->getPointCount(); ++i)
            if (IMediaAutomationPoint* item = lane->getPoint(i)) {
                Builder point("point", item);
                point.identity()
                    .add("time", item->getTime())
                    .add("value", item->getValue())
                    .add("interpolation", named(item->getInterpolation(),
                                                interpolationName(item->getInterpolation())));
                keep(points, std::move(point.node));
            }
        return std::move(out.node);
    }

    ModelNode track(IMediaTrack* track) {
        Builder out("track", track);
        out.identity()
            .add("contentType",
                 named(track->getContentType(), contentTypeName(track->getContentType())))
            .add("loaded", track->isLoaded());
        ModelGroup& own = out.group("channel", true);
        if (IMediaChannel* item = track->getChannel())
            keep(own, channel(item));
        ModelGroup& clips = out.group("clips");
        for (uint32 i = 0; i < track->getClipCount(); ++i)
            if (IMediaClip* item = track->getClip(i))
                keep(clips, clip(item));
        ModelGroup& lanes = out.group("automation");
        for (uint32 i = 0; i < track->getAutomationCount(); ++i)
            if (IMediaAutomation* item = track->getAutomation(i))
                keep(lanes, automation(item));
        ModelGroup& tracks = out.group("tracks");
        for (uint32 i = 0; i < track->getTrackCount(); ++i)
            if (IMediaTrack* item = track->getTrack(i))
                keep(tracks, this->track(item));
        return std::move(out.node);
    }

    const NodeVisitor& visit_;
};

template <class Value, class Node> Value* findField(Node& node, const std::string& name) {
    for (auto& field : node.fields)
        if (field.name == name)
            return &field.value;
    return nullptr;
}

template <class Group, class Node> Group* findGroup(Node& node, const std::string& name) {
    for (auto& group : node.groups)
        if (group.name == name)
            return &group;
    return nullptr;
}

} // namespace

const FieldValue* ModelNode::field(const std::string& name) const {
    return findField<const FieldValue>(*this, name);
}
FieldValue* ModelNode::field(const std::string& name) { return findField<FieldValue>(*this, name); }
const ModelGroup* ModelNode::group(const std::string& name) const {
    return findGroup<const ModelGroup>(*this, name);
}
ModelGroup* ModelNode::group(const std::string& name) { return findGroup<ModelGroup>(*this, name); }

ModelNode walkModel(IMediaProject& project, const NodeVisitor& visit) {
    return Walk(visit).project(project);
}

} // namespace CorvelleSupport

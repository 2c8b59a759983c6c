// The model walk: one function per interface family, each filling its part of the tree.
#include "modelwalk.h"

#include "corvelle/ptr.h"
#include "support/enumnames.h"
#include "support/utf.h"

#include <cstdio>

namespace CorvelleTool {

using namespace CorvelleSupport;
namespace {

using namespace Halvorn;
using Json = nlohmann::ordered_json;

// Id, name and colour of anything that answers for IMediaObject.
void addIdentity(FUnknown* node, Json& out) {
    const auto object = queryInterface<IMediaObject>(node);
    if (!object)
        return;
    out["id"] = toUtf8(object->getId());
    out["name"] = toUtf8(object->getName());
    IMediaColor* color = object->getColor();
    if (color && (color->getRed() | color->getGreen() | color->getBlue() | color->getAlpha())) {
        char text[10];
        std::snprintf(text, sizeof text, "#%02x%02x%02x%02x", color->getRed(), color->getGreen(),
                      color->getBlue(), color->getAlpha());
        out["color"] = text;
    }
}

Json parameterJson(IMediaParameter* parameter) {
    Json out = Json::object();
    addIdentity(parameter, out);
    out["unit"] = unitName(parameter->getUnit());
    out["value"] = parameter->getValue();
    out["min"] = parameter->getMin();
    out["max"] = parameter->getMax();
    out["parameterId"] = parameter->getParameterId();
    out["stepCount"] = parameter->getStepCount();
    return out;
}

Json parametersJson(IMediaParameterContainer* container) {
    Json out = Json::array();
    if (!container)
        return out;
    for (uint32 i = 0; i < container->getParameterCount(); ++i)
        if (IMediaParameter* parameter = container->getParameter(i))
            out.push_back(parameterJson(parameter));
    return out;
}

void addTime(IMediaTime* time, Json& out) {
    if (!time)
        return;
    out["start"] = time->getStart();
    out["duration"] = time->getDuration();
    out["offset"] = time->getOffset();
}

class Walker {
public:
    ModelSummary summary;

    Json project(IMediaProject& project) {
        Json out = Json::object();
        out["application"] = {{"name", toUtf8(project.getApplicationName())},
                              {"version", toUtf8(project.getApplicationVersion())}};
        if (IMediaParameter* tempo = project.getTempo())
            out["tempo"] = parameterJson(tempo);
        if (IMediaSignature* signature = project.getTimeSignature())
            out["signature"] = {{"numerator", signature->getNumerator()},
                                {"denominator", signature->getDenominator()}};
        Json tracks = Json::array();
        for (uint32 i = 0; i < project.getTrackCount(); ++i)
            if (IMediaTrack* item = project.getTrack(i))
                tracks.push_back(track(item));
        out["tracks"] = tracks;
        // A track's channel stands under its track; the rest of the project's list here.
        Json channels = Json::array();
        for (uint32 i = 0; i < project.getChannelCount(); ++i) {
            IMediaChannel* item = project.getChannel(i);
            if (item && !seenChannels_.count(item))
                channels.push_back(channel(item));
        }
        out["channels"] = channels;
        return out;
    }

private:
    Json track(IMediaTrack* track) {
        ++summary.tracks;
        Json out = Json::object();
        addIdentity(track, out);
        out["contentType"] = contentTypeName(track->getContentType());
        out["loaded"] = track->isLoaded();
        if (IMediaChannel* item = track->getChannel())
            out["channel"] = channel(item);
        Json clips = Json::array();
        for (uint32 i = 0; i < track->getClipCount(); ++i)
            if (IMediaClip* item = track->getClip(i))
                clips.push_back(clip(item));
        out["clips"] = clips;
        Json lanes = Json::array();
        for (uint32 i = 0; i < track->getAutomationCount(); ++i)
            if (IMediaAutomation* item = track->getAutomation(i))
                lanes.push_back(automation(item));
        out["automation"] = lanes;
        Json tracks = Json::array();
        for (uint32 i = 0; i < track->getTrackCount(); ++i)
            if (IMediaTrack* item = track->getTrack(i))
                tracks.push_back(this->track(item));
        out["tracks"] = tracks;
        return out;
    }

    Json channel(IMediaChannel* channel) {
        if (seenChannels_.insert(channel).second)
            ++summary.channels;
        Json out = Json::object();
        addIdentity(channel, out);
        out["role"] = channelRoleName(channel->getRole());
        out["audioChannels"] = channel->getAudioChannels();
        out["destination"] = toUtf8(channel->getDestination());
        out["parameters"] = parametersJson(queryInterface<IMediaParameterContainer>(channel).get());
        Json devices = Json::array();
        for (uint32 i = 0; i < channel->getDeviceCount(); ++i)
            if (IMediaDevice* item = channel->getDevice(i))
                devices.push_back(device(item));
        out["devices"] = devices;
        Json sends = Json::array();
        for (uint32 i = 0; i < channel->getSendCount(); ++i)
            if (IMediaSend* item = channel->getSend(i))
                sends.push_back(send(item));
        out["sends"] = sends;
        return out;
    }

    Json device(IMediaDevice* device) {
        ++summary.devices;
        Json out = Json::object();
        addIdentity(device, out);
        out["type"] = deviceTypeName(device->getDeviceType());
        out["role"] = deviceRoleName(device->getDeviceRole());
        out["deviceId"] = device->getDeviceId() ? device->getDeviceId() : "";
        out["statePath"] = media(device->getStatePath());
        out["enabled"] = device->isEnabled();
        out["parameters"] = parametersJson(device->getParameters());
        if (const auto equalizer = queryInterface<IMediaEqualizer>(device)) {
            Json bands = Json::array();
            for (uint32 i = 0; i < equalizer->getBandCount(); ++i) {
                IMediaEqualizerBand* band = equalizer->getBand(i);
                if (!band)
                    continue;
                bands.push_back({{"type", bandTypeName(band->getBandType())},
                                 {"order", band->getOrder()},
                                 {"parameters", parametersJson(band->getParameters())}});
            }
            out["bands"] = bands;
        }
        if (const auto instrument = queryInterface<IMediaBuiltinInstrument>(device))
            out["presetName"] = toUtf8(instrument->getPresetName());
        return out;
    }

    Json send(IMediaSend* send) {
        Json out = Json::object();
        addIdentity(send, out);
        out["type"] = send->getType() == kSendPost ? "post" : "pre";
        out["destination"] = toUtf8(send->getDestination());
        out["enabled"] = send->isEnabled();
        out["parameters"] = parametersJson(queryInterface<IMediaParameterContainer>(send).get());
        return out;
    }

    Json clip(IMediaClip* clip) {
        ++summary.clips;
        Json out = Json::object();
        addIdentity(clip, out);
        out["eventType"] = eventTypeName(clip->getEventType());
        addTime(clip->getTime(), out);
        if (const auto asEvent = queryInterface<IMediaEvent>(clip))
            out["muted"] = asEvent->isMuted();
        out["fadeIn"] = clip->getFadeInTime();
        out["fadeOut"] = clip->getFadeOutTime();
        Json events = Json::array();
        for (uint32 i = 0; i < clip->getEventCount(); ++i)
            if (IMediaEvent* item = clip->getEvent(i))
                events.push_back(event(item));
        out["events"] = events;
        return out;
    }

    Json event(IMediaEvent* event) {
        ++summary.events;
        Json out = Json::object();
        addIdentity(event, out);
        out["type"] = eventTypeName(event->getEventType());
        addTime(event->getTime(), out);
        out["muted"] = event->isMuted();
        if (const auto audio = queryInterface<IMediaAudioEvent>(event)) {
            out["file"] = media(audio->getFilePath());
            uint32 sampleRate = 0, channels = 0;
            double duration = 0;
            audio->getFormat(&sampleRate, &channels, &duration);
            out["format"] = {
                {"sampleRate", sampleRate}, {"channels", channels}, {"duration", duration}};
            out["playbackRate"] = audio->getPlaybackRate();
            Json warps = Json::array();
            for (uint32 i = 0; i < audio->getWarpCount(); ++i)
                if (IMediaWarpPoint* warp = audio->getWarp(i))
                    warps.push_back(
                        {{"time", warp->getTime()}, {"contentTime", warp->getContentTime()}});
            out["warps"] = warps;
        }
        if (const auto video = queryInterface<IMediaVideoEvent>(event)) {
            out["file"] = media(video->getFilePath());
            uint32 sampleRate = 0;
            uint64 frames = 0;
            double duration = 0;
            video->getFormat(&sampleRate, &frames, &duration);
            out["format"] = {
                {"sampleRate", sampleRate}, {"frameCount", frames}, {"duration", duration}};
        }
        if (const auto midi = queryInterface<IMediaMidiEvent>(event))
            out["midi"] = {{"status", midi->getStatus()},
                           {"channel", midi->getChannel()},
                           {"data1", midi->getData1()},
                           {"data2", midi->getData2()}};
        if (const auto note = queryInterface<IMediaMidiNoteEvent>(event)) {
            out["key"] = note->getKey();
            out["velocity"] = note->getVelocity();
        }
        if (const auto tempo = queryInterface<IMediaTempoEvent>(event)) {
            out["tempo"] = tempo->getTempo();
            out["interpolation"] = interpolationName(tempo->getInterpolation());
        }
        if (const auto signature = queryInterface<IMediaSignatureEvent>(event)) {
            out["numerator"] = signature->getNumerator();
            out["denominator"] = signature->getDenominator();
        }
        return out;
    }

    Json automation(IMediaAutomation* lane) {
        Json out = Json::object();
        addIdentity(lane, out);
        out["target"] = toUtf8(lane->getTarget());
        out["unit"] = unitName(lane->getUnit());
        Json points = Json::array();
        for (uint32 i = 0; i < lane->getPointCount(); ++i) {
            IMediaAutomationPoint* point = lane->getPoint(i);
            if (!point)
                continue;
            ++summary.automationPoints;
            points.push_back({{"time", point->getTime()},
                              {"value", point->getValue()},
                              {"interpolation", interpolationName(point->getInterpolation())}});
        }
        out["points"] = points;
        return out;
    }

    std::string media(const char16* path) {
        std::string text = toUtf8(path);
        // A device without state carries the bare folder "plugins/": no file to count.
        if (!text.empty() && text.back() != '/')
            summary.mediaFiles.insert(text);
        return text;
    }

    std::set<IMediaChannel*> seenChannels_;
};

} // namespace

ModelDump walkProject(IMediaProject& project) {
    Walker walker;
    ModelDump dump;
    dump.tree = walker.project(project);
    dump.summary = std::move(walker.summary);
    return dump;
}

} // namespace CorvelleTool

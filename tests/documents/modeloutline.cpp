// An outline of a project model as text, read through the IMedia faces only.
#include "modeloutline.h"

#include "corvelle/ptr.h"
#include "foundation/fstring.h"
#include "model/cvfile.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace Halvorn {
namespace DocumentTest {
namespace {

std::string text(const char16* value) { return String(value).text8(); }

// Marks a media file outside the package.
std::string external(FUnknown* object) {
    IPtr<ICvFileAccessor> accessor = queryInterface<ICvFileAccessor>(object);
    return accessor && accessor->getFile()->isExternal() ? " external" : "";
}

std::string number(double value) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.15g", value);
    return buffer;
}

// id, quoted name and colour of anything with an identity.
std::string identity(FUnknown* object) {
    IPtr<IMediaObject> face = queryInterface<IMediaObject>(object);
    if (!face)
        return "";
    std::string line = " id=" + text(face->getId()) + " name=\"" + text(face->getName()) + "\"";
    IMediaColor* c = face->getColor();
    if (c->getRed() || c->getGreen() || c->getBlue() || c->getAlpha()) {
        char color[16];
        std::snprintf(color, sizeof color, "#%02x%02x%02x%02x", c->getRed(), c->getGreen(),
                      c->getBlue(), c->getAlpha());
        line += std::string(" color=") + color;
    }
    return line;
}

struct Writer {
    std::string out;
    std::vector<IMediaChannel*> trackChannels;

    void line(int depth, const std::string& content) {
        out += std::string(static_cast<size_t>(depth) * 2, ' ') + content + "\n";
    }

    void parameters(int depth, IMediaParameterContainer* container) {
        for (uint32 i = 0; container && i < container->getParameterCount(); ++i) {
            IMediaParameter* p = container->getParameter(i);
            line(depth, "parameter" + identity(p) + " value=" + number(p->getValue()) + " [" +
                            number(p->getMin()) + ".." + number(p->getMax()) +
                            "] unit=" + std::to_string(p->getUnit()) +
                            " number=" + std::to_string(p->getParameterId()) +
                            " steps=" + std::to_string(p->getStepCount()));
        }
    }

    void device(int depth, IMediaDevice* device) {
        std::string head = "device type=" + std::to_string(device->getDeviceType()) +
                           " role=" + std::to_string(device->getDeviceRole()) + identity(device) +
                           " deviceId=" + device->getDeviceId() + " state=\"" +
                           text(device->getStatePath()) + "\"" + external(device) +
                           (device->isEnabled() ? "" : " disabled");
        if (IPtr<IMediaBuiltinInstrument> instrument =
                queryInterface<IMediaBuiltinInstrument>(device))
            head += " preset=\"" + text(instrument->getPresetName()) + "\"";
        line(depth, head);
        parameters(depth + 1, device->getParameters());
        if (IPtr<IMediaEqualizer> equalizer = queryInterface<IMediaEqualizer>(device))
            for (uint32 i = 0; i < equalizer->getBandCount(); ++i) {
                IMediaEqualizerBand* band = equalizer->getBand(i);
                line(depth + 1, "band type=" + std::to_string(band->getBandType()) +
                                    " order=" + std::to_string(band->getOrder()) + identity(band));
                parameters(depth + 2, band->getParameters());
            }
    }

    void channel(int depth, IMediaChannel* channel) {
        line(depth, "channel" + identity(channel) + " kind=" + std::to_string(channel->getKind()) +
                        " role=" + std::to_string(channel->getRole()) +
                        " width=" + std::to_string(channel->getAudioChannels()) +
                        " destination=\"" + text(channel->getDestination()) + "\"");
        parameters(depth + 1, queryInterface<IMediaParameterContainer>(channel).get());
        for (uint32 i = 0; i < channel->getDeviceCount(); ++i)
            device(depth + 1, channel->getDevice(i));
        for (uint32 i = 0; i < channel->getSendCount(); ++i) {
            IMediaSend* send = channel->getSend(i);
            line(depth + 1, "send" + identity(send) + " type=" + std::to_string(send->getType()) +
                                " destination=\"" + text(send->getDestination()) + "\"" +
                                (send->isEnabled() ? "" : " disabled"));
            parameters(depth + 2, queryInterface<IMediaParameterContainer>(send).get());
        }
    }

    static std::string times(IMediaTime* time) {
        return " start=" + number(time->getStart()) + " duration=" + number(time->getDuration()) +
               " offset=" + number(time->getOffset());
    }

    void event(int depth, IMediaEvent* event) {
        std::string head = times(event->getTime()) + (event->isMuted() ? " muted" : "");
        if (IPtr<IMediaAudioEvent> audio = queryInterface<IMediaAudioEvent>(event)) {
            uint32 rate = 0, channels = 0;
            double length = 0.0;
            audio->getFormat(&rate, &channels, &length);
            line(depth, "audio path=\"" + text(audio->getFilePath()) + "\"" + external(event) +
                            " format=" + std::to_string(rate) + "/" + std::to_string(channels) +
                            "/" + number(length) + head);
            for (uint32 i = 0; i < audio->getWarpCount(); ++i)
                line(depth + 1, "warp time=" + number(audio->getWarp(i)->getTime()) +
                                    " content=" + number(audio->getWarp(i)->getContentTime()));
        } else if (IPtr<IMediaMidiNoteEvent> note = queryInterface<IMediaMidiNoteEvent>(event)) {
            IPtr<IMediaMidiEvent> midi = queryInterface<IMediaMidiEvent>(event);
            line(depth, "note key=" + std::to_string(note->getKey()) +
                            " velocity=" + number(note->getVelocity()) +
                            " channel=" + std::to_string(midi->getChannel()) + head);
        } else if (IPtr<IMediaVideoEvent> video = queryInterface<IMediaVideoEvent>(event)) {
            line(depth,
                 "video path=\"" + text(video->getFilePath()) + "\"" + external(event) + head);
        } else if (IPtr<IMediaTempoEvent> tempo = queryInterface<IMediaTempoEvent>(event)) {
            line(depth, "tempo bpm=" + number(tempo->getTempo()) + " interpolation=" +
                            std::to_string(tempo->getInterpolation()) + identity(event) + head);
        } else if (IPtr<IMediaSignatureEvent> signature =
                       queryInterface<IMediaSignatureEvent>(event)) {
            line(depth, "signature " + std::to_string(signature->getNumerator()) + "/" +
                            std::to_string(signature->getDenominator()) + identity(event) + head);
        } else {
            line(depth,
                 "event type=" + std::to_string(event->getEventType()) + identity(event) + head);
        }
    }

    void track(int depth, IMediaTrack* track) {
        line(depth, "track content=" + std::to_string(track->getContentType()) + identity(track) +
                        (track->isLoaded() ? "" : " unloaded"));
        if (IMediaChannel* own = track->getChannel()) {
            trackChannels.push_back(own);
            channel(depth + 1, own);
        }
        for (uint32 i = 0; i < track->getClipCount(); ++i) {
            IMediaClip* clip = track->getClip(i);
            IPtr<IMediaEvent> face = queryInterface<IMediaEvent>(clip);
            line(depth + 1, "clip type=" + std::to_string(clip->getEventType()) + identity(clip) +
                                times(clip->getTime()) + " fades=" + number(clip->getFadeInTime()) +
                                "/" + number(clip->getFadeOutTime()) +
                                (face && face->isMuted() ? " muted" : ""));
            for (uint32 e = 0; e < clip->getEventCount(); ++e)
                event(depth + 2, clip->getEvent(e));
        }
        for (uint32 i = 0; i < track->getAutomationCount(); ++i) {
            IMediaAutomation* automation = track->getAutomation(i);
            line(depth + 1, "automation" + identity(automation) + " target=\"" +
                                text(automation->getTarget()) +
                                "\" unit=" + std::to_string(automation->getUnit()));
            for (uint32 p = 0; p < automation->getPointCount(); ++p) {
                IMediaAutomationPoint* point = automation->getPoint(p);
                line(depth + 2, "point" + identity(point) + " time=" + number(point->getTime()) +
                                    " value=" + number(point->getValue()) +
                                    " interpolation=" + std::to_string(point->getInterpolation()));
            }
        }
        for (uint32 i = 0; i < track->getTrackCount(); ++i)
            this->track(depth + 1, track->getTrack(i));
    }
};

} // namespace

std::string outline(IMediaProject* project) {
    Writer writer;
    for (uint32 i = 0; i < project->getTrackCount(); ++i)
        writer.track(0, project->getTrack(i));
    std::string ids = "channels:";
    for (uint32 i = 0; i < project->getChannelCount(); ++i)
        ids += " " + text(queryInterface<IMediaObject>(project->getChannel(i))->getId());
    writer.line(0, ids);
    for (uint32 i = 0; i < project->getChannelCount(); ++i) {
        IMediaChannel* channel = project->getChannel(i);
        if (std::find(writer.trackChannels.begin(), writer.trackChannels.end(), channel) ==
            writer.trackChannels.end())
            writer.channel(0, channel);
    }
    return writer.out;
}

} // namespace DocumentTest
} // namespace Halvorn

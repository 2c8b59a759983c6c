// Compares two project models through their public IMedia interfaces alone, field by field.
//
// For round trips (read, write, read again) and for any test that wants to know whether two
// models say the same. Every difference comes back as one line naming where it is, such as
// "track[0]/track[1]/clip[0]/event[2]: start 1.5 != 2".
#pragma once

#include "corvelle/mediaproject.h"
#include "corvelle/ptr.h"

#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

namespace ModelCompare {

using namespace Halvorn;

struct Options {
    // The document format's two known asymmetries between writing and reading. A plug-in
    // parameter's number goes out 4201 lower than the model holds it and reads back as written,
    // so a model read from a package it was written to holds pluginParameterShift = -4201 on
    // the parameters of its Quor3 plug-ins. A warp point's two times are read into each other's
    // places, so the read model has them exchanged.
    int64_t pluginParameterShift = 0;
    bool warpTimesExchanged = false;
    // Compares file references by the name behind their last "/" only: a read places media in
    // the client's folders, so full paths differ between two reads into different folders.
    bool fileLeafNamesOnly = false;
    // The format writes only the tempo's value: its bounds and id come from the reader's
    // defaults, so a model whose tempo never went through a document differs there.
    bool tempoValueOnly = false;
};

class Comparer {
public:
    explicit Comparer(const Options& options) : options_(options) {}

    std::vector<std::string> run(IMediaProject* a, IMediaProject* b) {
        if (!a || !b) {
            if (a != b)
                note("project", "one project is null");
            return differences_;
        }
        same("project", "application name", text(a->getApplicationName()),
             text(b->getApplicationName()));
        same("project", "application version", text(a->getApplicationVersion()),
             text(b->getApplicationVersion()));
        if (options_.tempoValueOnly) {
            if (present("tempo", a->getTempo(), b->getTempo()))
                same("tempo", "value", a->getTempo()->getValue(), b->getTempo()->getValue());
        } else {
            parameter("tempo", a->getTempo(), b->getTempo(), 0);
        }
        IMediaSignature* sa = a->getTimeSignature();
        IMediaSignature* sb = b->getTimeSignature();
        if (present("signature", sa, sb)) {
            same("signature", "numerator", sa->getNumerator(), sb->getNumerator());
            same("signature", "denominator", sa->getDenominator(), sb->getDenominator());
        }
        if (same("project", "track count", a->getTrackCount(), b->getTrackCount()))
            for (uint32 i = 0; i < a->getTrackCount(); ++i)
                track(indexed("track", i), a->getTrack(i), b->getTrack(i));
        if (same("project", "channel count", a->getChannelCount(), b->getChannelCount()))
            for (uint32 i = 0; i < a->getChannelCount(); ++i)
                channel(indexed("channel", i), a->getChannel(i), b->getChannel(i));
        return differences_;
    }

private:
    static std::string text(const char16* value) {
        std::string out;
        for (; value && *value; ++value) {
            const char32_t c = *value;
            if (c < 0x80) {
                out += static_cast<char>(c);
            } else if (c < 0x800) {
                out += static_cast<char>(0xC0 | (c >> 6));
                out += static_cast<char>(0x80 | (c & 0x3F));
            } else {
                out += static_cast<char>(0xE0 | (c >> 12));
                out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
                out += static_cast<char>(0x80 | (c & 0x3F));
            }
        }
        return out;
    }

    std::string path(const char16* value) const {
        std::string full = text(value);
        if (!options_.fileLeafNamesOnly)
            return full;
        const size_t slash = full.find_last_of('/');
        return slash == std::string::npos ? full : full.substr(slash + 1);
    }

    static std::string indexed(const std::string& prefix, uint32 index) {
        return prefix + "[" + std::to_string(index) + "]";
    }

    void note(const std::string& where, const std::string& what) {
        differences_.push_back(where + ": " + what);
    }

    template <class T>
    bool same(const std::string& where, const char* field, const T& a, const T& b) {
        if (a == b)
            return true;
        std::ostringstream line;
        line.precision(17);
        line << field << " " << a << " != " << b;
        note(where, line.str());
        return false;
    }

    // True when both are there; notes a difference when only one is.
    bool present(const std::string& where, const void* a, const void* b) {
        if ((a == nullptr) != (b == nullptr))
            note(where, a ? "missing in the second" : "missing in the first");
        return a && b;
    }

    void object(const std::string& where, FUnknown* a, FUnknown* b) {
        IPtr<IMediaObject> oa = queryInterface<IMediaObject>(a);
        IPtr<IMediaObject> ob = queryInterface<IMediaObject>(b);
        if (!present(where + " object", oa.get(), ob.get()))
            return;
        same(where, "id", text(oa->getId()), text(ob->getId()));
        same(where, "name", text(oa->getName()), text(ob->getName()));
        IMediaColor* ca = oa->getColor();
        IMediaColor* cb = ob->getColor();
        if (present(where + " colour", ca, cb)) {
            same(where, "red", int(ca->getRed()), int(cb->getRed()));
            same(where, "green", int(ca->getGreen()), int(cb->getGreen()));
            same(where, "blue", int(ca->getBlue()), int(cb->getBlue()));
            same(where, "alpha", int(ca->getAlpha()), int(cb->getAlpha()));
        }
    }

    void parameter(const std::string& where, IMediaParameter* a, IMediaParameter* b,
                   int64_t shift) {
        if (!present(where, a, b))
            return;
        same(where, "unit", a->getUnit(), b->getUnit());
        same(where, "value", a->getValue(), b->getValue());
        same(where, "min", a->getMin(), b->getMin());
        same(where, "max", a->getMax(), b->getMax());
        same(where, "parameter id", static_cast<uint32>(a->getParameterId() + shift),
             b->getParameterId());
        same(where, "step count", a->getStepCount(), b->getStepCount());
        object(where, a, b);
    }

    void container(const std::string& where, FUnknown* a, FUnknown* b, int64_t shift = 0) {
        IPtr<IMediaParameterContainer> pa = queryInterface<IMediaParameterContainer>(a);
        IPtr<IMediaParameterContainer> pb = queryInterface<IMediaParameterContainer>(b);
        if (!present(where + " parameters", pa.get(), pb.get()))
            return;
        if (same(where, "parameter count", pa->getParameterCount(), pb->getParameterCount()))
            for (uint32 i = 0; i < pa->getParameterCount(); ++i)
                parameter(indexed(where + "/parameter", i), pa->getParameter(i),
                          pb->getParameter(i), shift);
    }

    void track(const std::string& where, IMediaTrack* a, IMediaTrack* b) {
        if (!present(where, a, b))
            return;
        same(where, "content type", a->getContentType(), b->getContentType());
        same(where, "loaded", a->isLoaded(), b->isLoaded());
        object(where, a, b);
        channel(where + "/channel", a->getChannel(), b->getChannel(), true);
        if (same(where, "clip count", a->getClipCount(), b->getClipCount()))
            for (uint32 i = 0; i < a->getClipCount(); ++i)
                clip(indexed(where + "/clip", i), a->getClip(i), b->getClip(i));
        if (same(where, "automation count", a->getAutomationCount(), b->getAutomationCount()))
            for (uint32 i = 0; i < a->getAutomationCount(); ++i)
                automation(indexed(where + "/automation", i), a->getAutomation(i),
                           b->getAutomation(i));
        if (same(where, "track count", a->getTrackCount(), b->getTrackCount()))
            for (uint32 i = 0; i < a->getTrackCount(); ++i)
                track(indexed(where + "/track", i), a->getTrack(i), b->getTrack(i));
    }

    void channel(const std::string& where, IMediaChannel* a, IMediaChannel* b,
                 bool mayBeNull = false) {
        if ((mayBeNull && !a && !b) || !present(where, a, b))
            return;
        same(where, "kind", a->getKind(), b->getKind());
        same(where, "role", a->getRole(), b->getRole());
        same(where, "audio channels", a->getAudioChannels(), b->getAudioChannels());
        same(where, "destination", text(a->getDestination()), text(b->getDestination()));
        object(where, a, b);
        container(where, a, b);
        if (same(where, "device count", a->getDeviceCount(), b->getDeviceCount()))
            for (uint32 i = 0; i < a->getDeviceCount(); ++i)
                device(indexed(where + "/device", i), a->getDevice(i), b->getDevice(i));
        if (same(where, "send count", a->getSendCount(), b->getSendCount()))
            for (uint32 i = 0; i < a->getSendCount(); ++i)
                send(indexed(where + "/send", i), a->getSend(i), b->getSend(i));
    }

    void send(const std::string& where, IMediaSend* a, IMediaSend* b) {
        if (!present(where, a, b))
            return;
        same(where, "type", a->getType(), b->getType());
        same(where, "destination", text(a->getDestination()), text(b->getDestination()));
        same(where, "enabled", a->isEnabled(), b->isEnabled());
        object(where, a, b);
        container(where, a, b);
    }

    void device(const std::string& where, IMediaDevice* a, IMediaDevice* b) {
        if (!present(where, a, b))
            return;
        const bool types = same(where, "type", a->getDeviceType(), b->getDeviceType());
        same(where, "role", a->getDeviceRole(), b->getDeviceRole());
        same(where, "device id", std::string(a->getDeviceId() ? a->getDeviceId() : ""),
             std::string(b->getDeviceId() ? b->getDeviceId() : ""));
        same(where, "state path", path(a->getStatePath()), path(b->getStatePath()));
        same(where, "enabled", a->isEnabled(), b->isEnabled());
        object(where, a, b);
        const bool plugin = types && a->getDeviceType() == 2; // Quor3 plug-in numbers shift
        container(where, a, b, plugin ? options_.pluginParameterShift : 0);
        IPtr<IMediaEqualizer> ea = queryInterface<IMediaEqualizer>(a);
        IPtr<IMediaEqualizer> eb = queryInterface<IMediaEqualizer>(b);
        if (present(where + " equalizer", ea.get(), eb.get()) &&
            same(where, "band count", ea->getBandCount(), eb->getBandCount())) {
            for (uint32 i = 0; i < ea->getBandCount(); ++i) {
                const std::string at = indexed(where + "/band", i);
                IMediaEqualizerBand* ba = ea->getBand(i);
                IMediaEqualizerBand* bb = eb->getBand(i);
                if (!present(at, ba, bb))
                    continue;
                same(at, "type", ba->getBandType(), bb->getBandType());
                same(at, "order", ba->getOrder(), bb->getOrder());
                container(at, ba->getParameters(), bb->getParameters());
            }
        }
        IPtr<IMediaBuiltinInstrument> ia = queryInterface<IMediaBuiltinInstrument>(a);
        IPtr<IMediaBuiltinInstrument> ib = queryInterface<IMediaBuiltinInstrument>(b);
        if (present(where + " instrument", ia.get(), ib.get()))
            same(where, "preset", text(ia->getPresetName()), text(ib->getPresetName()));
    }

    void time(const std::string& where, IMediaTime* a, IMediaTime* b) {
        if (!present(where + " time", a, b))
            return;
        same(where, "start", a->getStart(), b->getStart());
        same(where, "duration", a->getDuration(), b->getDuration());
        same(where, "offset", a->getOffset(), b->getOffset());
    }

    void clip(const std::string& where, IMediaClip* a, IMediaClip* b) {
        if (!present(where, a, b))
            return;
        same(where, "event type", a->getEventType(), b->getEventType());
        time(where, a->getTime(), b->getTime());
        same(where, "fade in", a->getFadeInTime(), b->getFadeInTime());
        same(where, "fade out", a->getFadeOutTime(), b->getFadeOutTime());
        IPtr<IMediaEvent> va = queryInterface<IMediaEvent>(a);
        IPtr<IMediaEvent> vb = queryInterface<IMediaEvent>(b);
        if (present(where + " event face", va.get(), vb.get()))
            same(where, "muted", va->isMuted(), vb->isMuted());
        object(where, a, b);
        if (same(where, "event count", a->getEventCount(), b->getEventCount()))
            for (uint32 i = 0; i < a->getEventCount(); ++i)
                event(indexed(where + "/event", i), a->getEvent(i), b->getEvent(i));
    }

    template <class I, class Fields>
    void face(const std::string& where, const char* name, IMediaEvent* a, IMediaEvent* b,
              Fields fields) {
        IPtr<I> fa = queryInterface<I>(a);
        IPtr<I> fb = queryInterface<I>(b);
        if (present(where + " " + name, fa.get(), fb.get()))
            fields(fa.get(), fb.get());
    }

    void event(const std::string& where, IMediaEvent* a, IMediaEvent* b) {
        if (!present(where, a, b))
            return;
        same(where, "event type", a->getEventType(), b->getEventType());
        time(where, a->getTime(), b->getTime());
        same(where, "muted", a->isMuted(), b->isMuted());
        object(where, a, b);
        face<IMediaAudioEvent>(where, "audio", a, b, [&](IMediaAudioEvent* x, IMediaAudioEvent* y) {
            same(where, "file", path(x->getFilePath()), path(y->getFilePath()));
            uint32 rateX = 0, rateY = 0, channelsX = 0, channelsY = 0;
            double lengthX = 0, lengthY = 0;
            x->getFormat(&rateX, &channelsX, &lengthX);
            y->getFormat(&rateY, &channelsY, &lengthY);
            same(where, "sample rate", rateX, rateY);
            same(where, "channels", channelsX, channelsY);
            same(where, "file duration", lengthX, lengthY);
            if (!same(where, "warp count", x->getWarpCount(), y->getWarpCount()))
                return;
            for (uint32 i = 0; i < x->getWarpCount(); ++i) {
                const std::string at = indexed(where + "/warp", i);
                IMediaWarpPoint* wx = x->getWarp(i);
                IMediaWarpPoint* wy = y->getWarp(i);
                if (!present(at, wx, wy))
                    continue;
                const bool swap = options_.warpTimesExchanged;
                same(at, "time", swap ? wx->getContentTime() : wx->getTime(), wy->getTime());
                same(at, "content time", swap ? wx->getTime() : wx->getContentTime(),
                     wy->getContentTime());
            }
        });
        face<IMediaVideoEvent>(where, "video", a, b, [&](IMediaVideoEvent* x, IMediaVideoEvent* y) {
            same(where, "file", path(x->getFilePath()), path(y->getFilePath()));
            uint32 rateX = 0, rateY = 0;
            uint64 framesX = 0, framesY = 0;
            double lengthX = 0, lengthY = 0;
            x->getFormat(&rateX, &framesX, &lengthX);
            y->getFormat(&rateY, &framesY, &lengthY);
            same(where, "sample rate", rateX, rateY);
            same(where, "frames", framesX, framesY);
            same(where, "file duration", lengthX, lengthY);
        });
        face<IMediaMidiEvent>(where, "midi", a, b, [&](IMediaMidiEvent* x, IMediaMidiEvent* y) {
            same(where, "status", x->getStatus(), y->getStatus());
            same(where, "channel", x->getChannel(), y->getChannel());
            same(where, "data1", x->getData1(), y->getData1());
            same(where, "data2", x->getData2(), y->getData2());
        });
        face<IMediaMidiNoteEvent>(where, "note", a, b,
                                  [&](IMediaMidiNoteEvent* x, IMediaMidiNoteEvent* y) {
                                      same(where, "key", x->getKey(), y->getKey());
                                      same(where, "velocity", x->getVelocity(), y->getVelocity());
                                  });
        face<IMediaMarkerEvent>(where, "marker", a, b,
                                [&](IMediaMarkerEvent* x, IMediaMarkerEvent* y) {
                                    same(where, "flag", x->getFlag(), y->getFlag());
                                });
        face<IMediaTempoEvent>(where, "tempo", a, b, [&](IMediaTempoEvent* x, IMediaTempoEvent* y) {
            same(where, "tempo", x->getTempo(), y->getTempo());
            same(where, "interpolation", x->getInterpolation(), y->getInterpolation());
        });
        face<IMediaSignatureEvent>(
            where, "signature", a, b, [&](IMediaSignatureEvent* x, IMediaSignatureEvent* y) {
                same(where, "numerator", x->getNumerator(), y->getNumerator());
                same(where, "denominator", x->getDenominator(), y->getDenominator());
            });
    }

    void automation(const std::string& where, IMediaAutomation* a, IMediaAutomation* b) {
        if (!present(where, a, b))
            return;
        same(where, "unit", a->getUnit(), b->getUnit());
        same(where, "target", text(a->getTarget()), text(b->getTarget()));
        object(where, a, b);
        if (!same(where, "point count", a->getPointCount(), b->getPointCount()))
            return;
        for (uint32 i = 0; i < a->getPointCount(); ++i) {
            const std::string at = indexed(where + "/point", i);
            IMediaAutomationPoint* pa = a->getPoint(i);
            IMediaAutomationPoint* pb = b->getPoint(i);
            if (!present(at, pa, pb))
                continue;
            same(at, "value", pa->getValue(), pb->getValue());
            same(at, "time", pa->getTime(), pb->getTime());
            same(at, "interpolation", pa->getInterpolation(), pb->getInterpolation());
            object(at, pa, pb);
        }
    }

    Options options_;
    std::vector<std::string> differences_;
};

// Every difference between the two models, one line each; empty when they are equal.
inline std::vector<std::string> differences(IMediaProject* a, IMediaProject* b,
                                            const Options& options = {}) {
    return Comparer(options).run(a, b);
}

// The differences as one text for a test's failure message.
inline std::string describe(const std::vector<std::string>& differences) {
    std::string text;
    for (const std::string& line : differences)
        text += line + "\n";
    return text;
}

} // namespace ModelCompare

// An outline of a project model as text, rendered from the support library's model walk.
#include "modeloutline.h"

#include "corvelle/ptr.h"
#include "model/cvfile.h"
#include "support/modelwalk.h"

#include <cstdio>
#include <set>

namespace Halvorn {
namespace DocumentTest {
namespace {

using CorvelleSupport::FieldValue;
using CorvelleSupport::ModelNode;

std::string number(double value) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.15g", value);
    return buffer;
}

// A field as the outline prints it: enumerations by value, numbers with 15 digits.
std::string text(const FieldValue* value) {
    if (!value)
        return "";
    if (const auto* named = std::get_if<CorvelleSupport::Named>(value))
        return std::to_string(named->value);
    if (const auto* real = std::get_if<double>(value))
        return number(*real);
    if (const auto* integer = std::get_if<int64_t>(value))
        return std::to_string(*integer);
    if (const auto* flag = std::get_if<bool>(value))
        return *flag ? "1" : "0";
    return std::get<std::string>(*value);
}

std::string get(const ModelNode& node, const char* name) { return text(node.field(name)); }

bool isSet(const ModelNode& node, const char* name) {
    const FieldValue* value = node.field(name);
    return value && std::get<bool>(*value);
}

// Marks a media file outside the package.
std::string external(const ModelNode& node) {
    IPtr<ICvFileAccessor> accessor = queryInterface<ICvFileAccessor>(node.object);
    return accessor && accessor->getFile()->isExternal() ? " external" : "";
}

// id, quoted name and colour of anything with an identity.
std::string identity(const ModelNode& node) {
    if (!node.field("id"))
        return "";
    const std::string color = get(node, "color");
    return " id=" + get(node, "id") + " name=\"" + get(node, "name") + "\"" +
           (color.empty() ? "" : " color=" + color);
}

std::string times(const ModelNode& node) {
    return " start=" + get(node, "start") + " duration=" + get(node, "duration") +
           " offset=" + get(node, "offset");
}

struct Writer {
    std::string out;
    std::set<FUnknown*> trackChannels;

    void line(int depth, const std::string& content) {
        out += std::string(static_cast<size_t>(depth) * 2, ' ') + content + "\n";
    }

    // Each child of the group, printed one level deeper by print.
    template <class Print> void each(const ModelNode& node, const char* group, Print print) {
        if (const auto* items = node.group(group))
            for (const ModelNode& item : items->items)
                print(item);
    }

    void parameters(int depth, const ModelNode& node) {
        each(node, "parameters", [&](const ModelNode& p) {
            line(depth, "parameter" + identity(p) + " value=" + get(p, "value") + " [" +
                            get(p, "min") + ".." + get(p, "max") + "] unit=" + get(p, "unit") +
                            " number=" + get(p, "parameterId") + " steps=" + get(p, "stepCount"));
        });
    }

    void device(int depth, const ModelNode& device) {
        std::string head = "device type=" + get(device, "type") + " role=" + get(device, "role") +
                           identity(device) + " deviceId=" + get(device, "deviceId") + " state=\"" +
                           get(device, "statePath") + "\"" + external(device) +
                           (isSet(device, "enabled") ? "" : " disabled");
        if (device.field("presetName"))
            head += " preset=\"" + get(device, "presetName") + "\"";
        line(depth, head);
        parameters(depth + 1, device);
        each(device, "bands", [&](const ModelNode& band) {
            line(depth + 1, "band type=" + get(band, "type") + " order=" + get(band, "order") +
                                identity(band));
            parameters(depth + 2, band);
        });
    }

    void channel(int depth, const ModelNode& channel) {
        line(depth, "channel" + identity(channel) + " kind=" + get(channel, "kind") + " role=" +
                        get(channel, "role") + " width=" + get(channel, "audioChannels") +
                        " destination=\"" + get(channel, "destination") + "\"");
        parameters(depth + 1, channel);
        each(channel, "devices", [&](const ModelNode& item) { device(depth + 1, item); });
        each(channel, "sends", [&](const ModelNode& send) {
            line(depth + 1, "send" + identity(send) + " type=" + get(send, "type") +
                                " destination=\"" + get(send, "destination") + "\"" +
                                (isSet(send, "enabled") ? "" : " disabled"));
            parameters(depth + 2, send);
        });
    }

    void event(int depth, const ModelNode& event) {
        const std::string tail = times(event) + (isSet(event, "muted") ? " muted" : "");
        const std::string path = "path=\"" + get(event, "file") + "\"" + external(event);
        if (event.group("warps")) {
            line(depth, "audio " + path + " format=" + get(event, "format.sampleRate") + "/" +
                            get(event, "format.channels") + "/" + get(event, "format.duration") +
                            tail);
            each(event, "warps", [&](const ModelNode& warp) {
                line(depth + 1,
                     "warp time=" + get(warp, "time") + " content=" + get(warp, "contentTime"));
            });
        } else if (event.field("key")) {
            line(depth, "note key=" + get(event, "key") + " velocity=" + get(event, "velocity") +
                            " channel=" + get(event, "midi.channel") + tail);
        } else if (event.field("format.frameCount")) {
            line(depth, "video " + path + tail);
        } else if (event.field("tempo")) {
            line(depth, "tempo bpm=" + get(event, "tempo") + " interpolation=" +
                            get(event, "interpolation") + identity(event) + tail);
        } else if (event.field("numerator")) {
            line(depth, "signature " + get(event, "numerator") + "/" + get(event, "denominator") +
                            identity(event) + tail);
        } else {
            line(depth, "event type=" + get(event, "type") + identity(event) + tail);
        }
    }

    void track(int depth, const ModelNode& track) {
        line(depth, "track content=" + get(track, "contentType") + identity(track) +
                        (isSet(track, "loaded") ? "" : " unloaded"));
        each(track, "channel", [&](const ModelNode& own) {
            trackChannels.insert(own.object);
            channel(depth + 1, own);
        });
        each(track, "clips", [&](const ModelNode& clip) {
            line(depth + 1, "clip type=" + get(clip, "eventType") + identity(clip) + times(clip) +
                                " fades=" + get(clip, "fadeIn") + "/" + get(clip, "fadeOut") +
                                (isSet(clip, "muted") ? " muted" : ""));
            each(clip, "events", [&](const ModelNode& item) { event(depth + 2, item); });
        });
        each(track, "automation", [&](const ModelNode& lane) {
            line(depth + 1, "automation" + identity(lane) + " target=\"" + get(lane, "target") +
                                "\" unit=" + get(lane, "unit"));
            each(lane, "points", [&](const ModelNode& point) {
                line(depth + 2, "point" + identity(point) + " time=" + get(point, "time") +
                                    " value=" + get(point, "value") +
                                    " interpolation=" + get(point, "interpolation"));
            });
        });
        each(track, "tracks", [&](const ModelNode& item) { this->track(depth + 1, item); });
    }
};

} // namespace

std::string outline(IMediaProject* project) {
    const ModelNode model = CorvelleSupport::walkModel(*project);
    Writer writer;
    writer.each(model, "tracks", [&](const ModelNode& track) { writer.track(0, track); });
    std::string ids = "channels:";
    writer.each(model, "channels",
                [&](const ModelNode& channel) { ids += " " + get(channel, "id"); });
    writer.line(0, ids);
    writer.each(model, "channels", [&](const ModelNode& channel) {
        if (!writer.trackChannels.count(channel.object))
            writer.channel(0, channel);
    });
    return writer.out;
}

} // namespace DocumentTest
} // namespace Halvorn

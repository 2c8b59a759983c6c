// Reading a session file into a workstation. Every fault names its place as a JSON path and
// leaves nothing loaded.
#include "faderlaw.h"
#include "sessionchecks.h"
#include "text.h"
#include "workstation.h"

#include <filesystem>
#include <fstream>
#include <sstream>

namespace Halvorn {
namespace RefHost {

using nlohmann::json;

namespace {

struct SessionError {
    std::string message;
};

[[noreturn]] void fail(const std::string& where, const std::string& what) {
    throw SessionError{where + ": " + what};
}

std::string at(const std::string& where, const char* key) { return where + "." + key; }
std::string at(const std::string& where, size_t index) {
    return where + "[" + std::to_string(index) + "]";
}

const json* find(const json& object, const char* key) {
    auto found = object.find(key);
    return found == object.end() || found->is_null() ? nullptr : &*found;
}

const json& object(const json& value, const std::string& where) {
    if (!value.is_object())
        fail(where, "expected an object");
    return value;
}

double number(const json& o, const char* key, const std::string& where, double fallback) {
    const json* value = find(o, key);
    if (!value)
        return fallback;
    if (!value->is_number())
        fail(at(where, key), "expected a number");
    return value->get<double>();
}

int64 integer(const json& o, const char* key, const std::string& where, int64 fallback, int64 low,
              int64 high) {
    const json* value = find(o, key);
    if (!value)
        return fallback;
    if (!value->is_number_integer())
        fail(at(where, key), "expected an integer");
    auto result = value->get<int64>();
    if (result < low || result > high)
        fail(at(where, key), "out of range " + std::to_string(low) + ".." + std::to_string(high));
    return result;
}

double unit(const json& o, const char* key, const std::string& where, double fallback) {
    double value = number(o, key, where, fallback);
    if (value < 0.0 || value > 1.0)
        fail(at(where, key), "expected a value from 0 to 1");
    return value;
}

bool flag(const json& o, const char* key, const std::string& where, bool fallback) {
    const json* value = find(o, key);
    if (!value)
        return fallback;
    if (!value->is_boolean())
        fail(at(where, key), "expected true or false");
    return value->get<bool>();
}

std::string text(const json& o, const char* key, const std::string& where,
                 const std::string& fallback) {
    const json* value = find(o, key);
    if (!value)
        return fallback;
    if (!value->is_string())
        fail(at(where, key), "expected a string");
    return value->get<std::string>();
}

std::string required(const json& o, const char* key, const std::string& where) {
    if (!find(o, key))
        fail(at(where, key), "missing");
    std::string value = text(o, key, where, {});
    if (value.empty())
        fail(at(where, key), "empty");
    return value;
}

const json& list(const json& o, const char* key, const std::string& where) {
    static const json empty = json::array();
    const json* value = find(o, key);
    if (!value)
        return empty;
    if (!value->is_array())
        fail(at(where, key), "expected a list");
    return *value;
}

class Loader {
public:
    Loader(Workstation& station, std::string baseFolder)
        : s_(station), base_(std::move(baseFolder)) {}

    void run(const json& root);

private:
    std::string resolve(const std::string& path) const;
    void claim(const std::string& id, const std::string& where);
    void loadPlugins(const json& root);
    void loadMedia(const json& root);
    void loadMixer(const json& root);
    void loadChannel(const json& entry, const std::string& where);
    void routeChannel(const json& entry, const std::string& where);
    void loadTrack(const json& entry, const std::string& where, TimelineNode& parent, int depth);
    void loadLanes(Track& track, const json& entry, const std::string& where);
    IPtr<TimelineNode> loadItem(const json& entry, const std::string& where);
    void loadCommon(TimelineNode& node, const json& entry, const std::string& where);
    MediaFile* media(const json& entry, const std::string& where, bool audio);

    Workstation& s_;
    std::string base_;
    std::set<const Channel*> taken_;
    int partDepth_ = 0;
};

std::string Loader::resolve(const std::string& path) const {
    if (path.empty() || path[0] == '/' || base_.empty())
        return path;
    return base_ + "/" + path;
}

void Loader::claim(const std::string& id, const std::string& where) {
    if (!s_.claimId(id))
        fail(where, "the id '" + id + "' is used twice");
}

void Loader::loadPlugins(const json& root) {
    const json& entries = list(root, "plugins", "$");
    for (size_t i = 0; i < entries.size(); ++i) {
        std::string where = at("$.plugins", i);
        const json& entry = object(entries[i], where);
        PluginClass type;
        if (!parseFuid(required(entry, "cid", where), type.cid))
            fail(at(where, "cid"),
                 "expected an identifier like C99757FF-07E6-4C38-AFC8-FFDA50EC2041");
        if (s_.catalogue.find(type.cid))
            fail(at(where, "cid"), "the class is listed twice");
        type.name = required(entry, "name", where);
        type.instrument = flag(entry, "instrument", where, false);
        const json& parameters = list(entry, "parameters", where);
        for (size_t k = 0; k < parameters.size(); ++k) {
            std::string place = at(at(where, "parameters"), k);
            const json& p = object(parameters[k], place);
            if (!find(p, "id"))
                fail(at(place, "id"), "missing");
            PluginParameterInfo info;
            info.id = uint32(
                integer(p, "id", place, 0, 0, 0x7FFFFFFF - IHostParameter::kPluginTagOffset));
            for (auto& earlier : type.parameters)
                if (earlier.id == info.id)
                    fail(at(place, "id"), "the parameter id is used twice");
            info.title = toUtf16(text(p, "title", place, {}));
            info.defaultValue = unit(p, "default", place, 0.0);
            info.unit = text(p, "unit", place, {});
            info.minimum = number(p, "min", place, 0.0);
            info.maximum = number(p, "max", place, 1.0);
            info.infiniteBottom = flag(p, "infinite", place, false);
            const json& choices = list(p, "choices", place);
            for (size_t c = 0; c < choices.size(); ++c) {
                if (!choices[c].is_string())
                    fail(at(at(place, "choices"), c), "expected a text");
                info.choices.push_back(choices[c].get<std::string>());
            }
            type.parameters.push_back(info);
        }
        const json& presets = list(entry, "presets", where);
        for (size_t k = 0; k < presets.size(); ++k) {
            std::string place = at(at(where, "presets"), k);
            const json& p = object(presets[k], place);
            type.presets.push_back({toUtf16(required(p, "file", place)),
                                    int32(integer(p, "index", place, int64(k), 0, 0xFFFF))});
        }
        s_.catalogue.add(std::move(type));
    }
}

void Loader::loadMedia(const json& root) {
    const json& entries = list(root, "media", "$");
    for (size_t i = 0; i < entries.size(); ++i) {
        std::string where = at("$.media", i);
        const json& entry = object(entries[i], where);
        std::string id = required(entry, "id", where);
        claim(id, at(where, "id"));
        std::string kind = text(entry, "kind", where, "audio");
        std::string pathText = required(entry, "path", where);
        std::string path = resolve(pathText);
        if (!isRegularFile(path))
            fail(at(where, "path"), "'" + path + "' is missing or not a regular file");
        IPtr<MediaFile> file;
        if (kind == "audio") {
            auto clip = s_.ledger.make<AudioClip>();
            if (!readAudioFacts(path, clip->facts))
                fail(at(where, "path"), "'" + path + "' is missing or not audio");
            file = IPtr<MediaFile>(clip.get());
        } else if (kind == "video") {
            auto clip = s_.ledger.make<VideoClip>();
            if (!fileExists(path))
                fail(at(where, "path"), "'" + path + "' is missing");
            clip->sampleRate = float(number(entry, "sampleRate", where, 0.0));
            clip->frames = integer(entry, "frameCount", where, 0, 0, INT64_MAX);
            file = IPtr<MediaFile>(clip.get());
        } else {
            fail(at(where, "kind"), "expected \"audio\" or \"video\"");
        }
        file->id = id;
        file->pathText = pathText;
        file->location = s_.ledger.make<Url>(toUtf16(path));
        s_.pool()->files.push_back(file);
    }
}

IPtr<Plugin> loadPlugin(Workstation& s, const json& entry, const std::string& where) {
    object(entry, where);
    FUID cid{};
    if (!parseFuid(required(entry, "class", where), cid))
        fail(at(where, "class"), "expected a class identifier");
    const PluginClass* type = s.catalogue.find(cid);
    if (!type)
        fail(at(where, "class"), "no installed plug-in has this class");
    IPtr<Plugin> plugin = s.makePlugin(*type);
    plugin->param("on")->normalized = flag(entry, "on", where, true) ? 1.0 : 0.0;
    if (const json* values = find(entry, "values")) {
        object(*values, at(where, "values"));
        for (auto& [key, value] : values->items()) {
            std::string place = at(at(where, "values"), key.c_str());
            char* end = nullptr;
            unsigned long id = std::strtoul(key.c_str(), &end, 10);
            Parameter* target = *end == 0 && !key.empty() ? plugin->own(uint32(id)) : nullptr;
            if (!target)
                fail(place, "the plug-in has no parameter with this id");
            if (!value.is_number() || value.get<double>() < 0.0 || value.get<double>() > 1.0)
                fail(place, "expected a value from 0 to 1");
            target->normalized = value.get<double>();
        }
    }
    if (find(entry, "preset")) {
        Parameter* list = plugin->param(Plugin::kPresetParameter);
        if (!list)
            fail(at(where, "preset"), "the plug-in has no presets");
        list->setPlain(double(integer(entry, "preset", where, 0, 0, list->maximum)));
    }
    return plugin;
}

void loadSlot(Workstation& s, Slot& slot, const json& entry, const std::string& where) {
    slot.param("on")->normalized = flag(entry, "on", where, true) ? 1.0 : 0.0;
    if (const json* plugin = find(entry, "plugin"))
        slot.setPlugin(loadPlugin(s, *plugin, at(where, "plugin")).get());
}

bool isSlotName(const std::string& name) {
    return name.size() > 5 && name.compare(name.size() - 5, 5, " Slot") == 0;
}

} // namespace

void addModules(Workstation& s, Channel& channel, const json& modules, const std::string& where) {
    if (!modules.is_array())
        fail(where, "expected a list");
    for (size_t i = 0; i < modules.size(); ++i) {
        std::string place = at(where, i);
        const json& entry = object(modules[i], place);
        std::string name = required(entry, "name", place);
        if (channel.findModule(name.c_str()))
            fail(at(place, "name"), "the channel has this module twice");
        if (isSlotName(name)) {
            auto slot = s.ledger.make<Slot>(name);
            loadSlot(s, *slot, entry, place);
            channel.addModule(slot.get());
            continue;
        }
        // A module with a plug-in is that plug-in, held by its slot "<name> Slot" as the
        // host's own modules are; its host parameters sit beside the plug-in's own.
        IPtr<ParamOwner> module;
        if (const json* plugin = find(entry, "plugin"))
            module = IPtr<ParamOwner>(loadPlugin(s, *plugin, at(place, "plugin")).get());
        else
            module = s.ledger.make<ParamOwner>("channel strip module", name);
        module->name = name;
        const json& parameters = list(entry, "parameters", place);
        for (size_t k = 0; k < parameters.size(); ++k) {
            std::string p = at(at(place, "parameters"), k);
            const json& row = object(parameters[k], p);
            std::string id = required(row, "id", p);
            if (module->param(id))
                fail(at(p, "id"), "the module has this parameter twice");
            auto low = int32(integer(row, "min", p, 0, INT32_MIN, INT32_MAX));
            auto high = int32(integer(row, "max", p, 1, INT32_MIN, INT32_MAX));
            if (high < low)
                fail(at(p, "max"), "below min");
            module
                ->addParameter(id, toUtf16(text(row, "title", p, id)), Parameter::Kind::Number, low,
                               high)
                .normalized = unit(row, "value", p, 0.0);
        }
        channel.addModule(module.get());
        if (auto* plugin = dynamic_cast<Plugin*>(module.get())) {
            std::string slotName = name + " Slot";
            if (channel.findModule(slotName.c_str()))
                fail(at(place, "name"), "the channel has the slot of this module twice");
            auto slot = s.ledger.make<Slot>(slotName);
            slot->param("on")->normalized = flag(entry, "on", place, true) ? 1.0 : 0.0;
            slot->setPlugin(plugin);
            channel.addModule(slot.get());
        }
    }
}

void Loader::loadChannel(const json& entry, const std::string& where) {
    object(entry, where);
    std::string id = required(entry, "id", where);
    claim(id, at(where, "id"));
    std::string kind = required(entry, "kind", where);
    if (kind != "InputChannel" && kind != "OutputChannel" && kind != "FxChannel" &&
        kind != "GroupChannel" && kind != "AudioChannel" && kind != "InstrumentChannel")
        fail(at(where, "kind"), "unknown channel kind '" + kind + "'");
    auto channel = s_.ledger.make<Channel>(kind, id, &s_.mixer->maximumGain);
    channel->title = toUtf16(text(entry, "title", where, id));
    channel->param("volume")->normalized =
        unit(entry, "volume", where, unityValue(s_.mixer->maximumGain));
    channel->param("mute")->normalized = flag(entry, "mute", where, false) ? 1.0 : 0.0;
    channel->param("solo")->normalized = flag(entry, "solo", where, false) ? 1.0 : 0.0;
    channel->panner()->param("panX")->normalized = unit(entry, "pan", where, 0.5);
    std::string colour = text(entry, "color", where, "#00000000");
    if (!parseColor(colour, channel->color))
        fail(at(where, "color"), "expected a colour like #FF3366CC");
    channel->speakers = uint64(integer(entry, "speakers", where, 3, 1, INT64_MAX));
    const json& inserts = list(entry, "inserts", where);
    for (size_t i = 0; i < inserts.size(); ++i) {
        std::string place = at(at(where, "inserts"), i);
        const json& row = object(inserts[i], place);
        if (!find(row, "slot"))
            fail(at(place, "slot"), "missing");
        Slot* slot =
            channel->insert(int32(integer(row, "slot", place, 1, 1, Channel::kInsertSlots)) - 1);
        if (slot->plugin())
            fail(at(place, "slot"), "the slot is filled twice");
        loadSlot(s_, *slot, row, place);
    }
    if (const json* instrument = find(entry, "instrument")) {
        if (!channel->instrumentSlot())
            fail(at(where, "instrument"), "only an InstrumentChannel has an instrument");
        channel->instrumentSlot()->setPlugin(
            loadPlugin(s_, *instrument, at(where, "instrument")).get());
    }
    addModules(s_, *channel, list(entry, "modules", where), at(where, "modules"));
    s_.mixer->attach(channel.get());
}

void Loader::routeChannel(const json& entry, const std::string& where) {
    Channel* channel = s_.mixer->channel(entry["id"].get<std::string>());
    std::string output = text(entry, "output", where, {});
    if (!output.empty()) {
        Channel* target = s_.mixer->channel(output);
        if (!target)
            fail(at(where, "output"), "no channel has the id '" + output + "'");
        if (target == channel)
            fail(at(where, "output"), "a channel can't be routed to itself");
        if (channel->setDestination(target) != kResultOk)
            fail(at(where, "output"), "the channel can't be routed to '" + output + "'");
    }
    const json& sends = list(entry, "sends", where);
    for (size_t i = 0; i < sends.size(); ++i) {
        std::string place = at(at(where, "sends"), i);
        const json& row = object(sends[i], place);
        Send* send = channel->addSend();
        send->param("volume")->normalized = unit(row, "volume", place, 0.0);
        send->param("on")->normalized = flag(row, "on", place, true) ? 1.0 : 0.0;
        send->param("prePost")->setPlain(flag(row, "preFader", place, false) ? 1.0 : -1.0);
        std::string to = text(row, "to", place, {});
        if (to.empty())
            continue;
        Channel* target = s_.mixer->channel(to);
        if (!target)
            fail(at(place, "to"), "no channel has the id '" + to + "'");
        if (target == channel)
            fail(at(place, "to"), "a channel can't send to itself");
        if (send->setDestination(target) != kResultOk)
            fail(at(place, "to"), "a send goes to an FX or group channel only");
    }
}

void Loader::loadMixer(const json& root) {
    const json* found = find(root, "mixer");
    if (!found)
        return;
    const json& mixer = object(*found, "$.mixer");
    double maximum = number(mixer, "maximumGain", "$.mixer", kDefaultMaximumGain);
    if (!(maximum > 0.0))
        fail("$.mixer.maximumGain", "expected a gain above 0");
    s_.mixer->maximumGain = maximum;
    s_.mixer->param("autoOpenPluginEditor")->normalized =
        flag(mixer, "autoOpenPluginEditor", "$.mixer", false) ? 1.0 : 0.0;
    s_.stripTemplate = list(mixer, "strip", "$.mixer");
    {
        // Checks the template once, on a channel that goes away again.
        auto probe = s_.ledger.make<Channel>("AudioChannel", "", &s_.mixer->maximumGain);
        addModules(s_, *probe, s_.stripTemplate, "$.mixer.strip");
    }
    const json& channels = list(mixer, "channels", "$.mixer");
    for (size_t i = 0; i < channels.size(); ++i)
        loadChannel(channels[i], at("$.mixer.channels", i));
    for (size_t i = 0; i < channels.size(); ++i)
        routeChannel(channels[i], at("$.mixer.channels", i));
}

MediaFile* Loader::media(const json& entry, const std::string& where, bool audio) {
    std::string id = required(entry, "media", where);
    MediaFile* file = s_.pool()->find(id);
    bool fits = file && (audio ? dynamic_cast<AudioClip*>(file) != nullptr
                               : dynamic_cast<VideoClip*>(file) != nullptr);
    if (!fits)
        fail(at(where, "media"),
             std::string("no ") + (audio ? "audio" : "video") + " media has the id '" + id + "'");
    return file;
}

void Loader::loadCommon(TimelineNode& node, const json& entry, const std::string& where) {
    node.id = text(entry, "id", where, {});
    if (!node.id.empty())
        claim(node.id, at(where, "id"));
    node.name = toUtf16(text(entry, "name", where, {}));
    node.muted = flag(entry, "muted", where, false);
    node.start = number(entry, "start", where, 0.0);
    node.length = number(entry, "length", where, 0.0);
    node.offset = number(entry, "offset", where, 0.0);
    if (find(entry, "color")) {
        if (!parseColor(text(entry, "color", where, {}), node.color))
            fail(at(where, "color"), "expected a colour like #FF3366CC");
        node.hasColor = true;
    }
}

IPtr<TimelineNode> Loader::loadItem(const json& entry, const std::string& where) {
    object(entry, where);
    std::string kind = required(entry, "kind", where);
    IPtr<TimelineNode> node;
    Ledger& l = s_.ledger;
    if (kind == "audio") {
        auto event = l.make<AudioEvent>();
        event->clip = IPtr<AudioClip>(static_cast<AudioClip*>(media(entry, where, true)));
        event->fadeIn = number(entry, "fadeIn", where, 0.0);
        event->fadeOut = number(entry, "fadeOut", where, 0.0);
        event->stretch = number(entry, "stretch", where, 1.0);
        if (!(event->stretch > 0.0))
            fail(at(where, "stretch"), "expected a ratio above 0");
        event->warped = flag(entry, "warped", where, false);
        node = IPtr<TimelineNode>(event.get());
    } else if (kind == "audioPart") {
        if (partDepth_ >= kDeepestPart)
            fail(where, "parts nest too deep");
        node = IPtr<TimelineNode>(l.make<AudioPart>().get());
        const json& events = list(entry, "events", where);
        ++partDepth_;
        for (size_t i = 0; i < events.size(); ++i) {
            IPtr<TimelineNode> child = loadItem(events[i], at(at(where, "events"), i));
            if (!node->accepts(*child))
                fail(at(at(where, "events"), i), "an audio part holds audio events only");
            node->append(child);
        }
        --partDepth_;
    } else if (kind == "midiPart") {
        node = IPtr<TimelineNode>(l.make<MidiPart>().get());
        const json& notes = list(entry, "notes", where);
        for (size_t i = 0; i < notes.size(); ++i) {
            std::string place = at(at(where, "notes"), i);
            auto note = l.make<NoteEvent>();
            loadCommon(*note, object(notes[i], place), place);
            note->pitch = int32(integer(notes[i], "pitch", place, 60, 0, 127));
            note->velocity = int32(integer(notes[i], "velocity", place, 100, 0, 127));
            note->releaseVelocity = int32(integer(notes[i], "releaseVelocity", place, 0, 0, 127));
            note->channel = int32(integer(notes[i], "channel", place, 0, 0, 15));
            node->append(IPtr<TimelineNode>(note.get()));
        }
    } else if (kind == "video") {
        auto event = l.make<VideoEvent>();
        event->clip = IPtr<VideoClip>(static_cast<VideoClip*>(media(entry, where, false)));
        node = IPtr<TimelineNode>(event.get());
    } else if (kind == "marker") {
        node = IPtr<TimelineNode>(l.make<MarkerEvent>().get());
    } else if (kind == "tempo") {
        auto event = l.make<TempoEvent>();
        event->bpm = number(entry, "bpm", where, 120.0);
        if (!(event->bpm > 0.0))
            fail(at(where, "bpm"), "expected a tempo above 0");
        event->ramp = flag(entry, "ramp", where, false);
        node = IPtr<TimelineNode>(event.get());
    } else if (kind == "signature") {
        auto event = l.make<SignatureEvent>();
        event->numerator = uint16(integer(entry, "numerator", where, 4, 1, 0xFFFF));
        event->denominator = uint16(integer(entry, "denominator", where, 4, 1, 0xFFFF));
        node = IPtr<TimelineNode>(event.get());
    } else {
        fail(at(where, "kind"), "unknown item kind '" + kind + "'");
    }
    loadCommon(*node, entry, where);
    return node;
}

void Loader::loadLanes(Track& track, const json& entry, const std::string& where) {
    const json& lanes = list(entry, "automation", where);
    if (!lanes.empty() && !track.folder)
        fail(at(where, "automation"), "a track without a channel has no automation");
    for (size_t i = 0; i < lanes.size(); ++i) {
        std::string place = at(at(where, "automation"), i);
        const json& row = object(lanes[i], place);
        std::string path = text(row, "path", place, {});
        ParamOwner* owner = track.channel->resolve(path);
        if (!owner)
            fail(at(place, "path"),
                 "nothing below the track's channel has the path '" + path + "'");
        std::string name = required(row, "parameter", place);
        uint32 number = 0;
        if (name[0] == '#' && !parseParameterNumber(name, number))
            fail(at(place, "parameter"), "expected '#' and a parameter number, not '" + name + "'");
        Parameter* parameter = name[0] == '#' && dynamic_cast<Plugin*>(owner)
                                   ? static_cast<Plugin*>(owner)->own(number)
                                   : owner->param(name);
        if (!parameter)
            fail(at(place, "parameter"), "'" + path + "' has no parameter '" + name + "'");
        Lane* lane = track.folder->lane(path, parameter->tag, true);
        if (!lane->children().empty())
            fail(place, "the lane is listed twice");
        loadCommon(*lane, row, place);
        const json& points = list(row, "points", place);
        for (size_t k = 0; k < points.size(); ++k) {
            std::string p = at(at(place, "points"), k);
            auto point = s_.ledger.make<AutomationPoint>();
            loadCommon(*point, object(points[k], p), p);
            point->value = unit(points[k], "value", p, 0.0);
            lane->append(IPtr<TimelineNode>(point.get()));
        }
    }
}

void Loader::loadTrack(const json& entry, const std::string& where, TimelineNode& parent,
                       int depth) {
    // Folders nest, but not without end.
    constexpr int kDeepestFolder = 64;
    if (depth > kDeepestFolder)
        fail(where, "folders nest too deep");
    object(entry, where);
    std::string type = required(entry, "type", where);
    if (!isTrackType(type) && type != "tempo" && type != "signature")
        fail(at(where, "type"), "unknown track type '" + type + "'");
    IPtr<Track> track;
    if (type == "tempo")
        track = IPtr<Track>(s_.ledger.make<TempoTrack>(s_.mixer.get()).get());
    else if (type == "signature")
        track = IPtr<Track>(s_.ledger.make<SignatureTrack>(s_.mixer.get()).get());
    else
        track = s_.ledger.make<Track>(type, s_.mixer.get());
    if (!parent.accepts(*track))
        fail(where, "a " + type + " track can't stand here");
    loadCommon(*track, entry, where);
    if (track->id.empty())
        fail(at(where, "id"), "missing");
    track->loaded = flag(entry, "loaded", where, true);
    if (const char* kind = channelKindOf(type)) {
        std::string id = required(entry, "channel", where);
        Channel* channel = s_.mixer->channel(id);
        if (!channel || channel->name != kind)
            fail(at(where, "channel"), std::string("no ") + kind + " has the id '" + id + "'");
        if (!taken_.insert(channel).second)
            fail(at(where, "channel"), "the channel '" + id + "' belongs to another track");
        track->channel = IPtr<Channel>(channel);
        track->folder = s_.ledger.make<AutomationFolder>(*track);
    } else if (find(entry, "channel")) {
        fail(at(where, "channel"), "a " + type + " track has no channel");
    }
    if (auto* tempo = dynamic_cast<TempoTrack*>(track.get())) {
        tempo->fixedTempo = number(entry, "bpm", where, 120.0);
        if (!(tempo->fixedTempo > 0.0))
            fail(at(where, "bpm"), "expected a tempo above 0");
        tempo->fixed = flag(entry, "fixed", where, true);
    }
    if (auto* signature = dynamic_cast<SignatureTrack*>(track.get())) {
        signature->numerator = uint16(integer(entry, "numerator", where, 4, 1, 0xFFFF));
        signature->denominator = uint16(integer(entry, "denominator", where, 4, 1, 0xFFFF));
    }
    const json& items = list(entry, "items", where);
    for (size_t i = 0; i < items.size(); ++i) {
        IPtr<TimelineNode> item = loadItem(items[i], at(at(where, "items"), i));
        if (!track->accepts(*item))
            fail(at(at(where, "items"), i), "a " + type + " track can't hold this item");
        track->append(item);
    }
    const json& tracks = list(entry, "tracks", where);
    if (!tracks.empty() && type != "folder")
        fail(at(where, "tracks"), "only a folder track holds tracks");
    for (size_t i = 0; i < tracks.size(); ++i)
        loadTrack(tracks[i], at(at(where, "tracks"), i), *track, depth + 1);
    loadLanes(*track, entry, where);
    parent.append(IPtr<TimelineNode>(track.get()));
}

void Loader::run(const json& root) {
    object(root, "$");
    if (const json* application = find(root, "application")) {
        object(*application, "$.application");
        s_.applicationName =
            toUtf16(text(*application, "name", "$.application", "Quor Reference Host"));
        s_.applicationVersion = toUtf16(text(*application, "version", "$.application", "1.0"));
    }
    loadPlugins(root);
    loadMedia(root);
    loadMixer(root);
    if (const json* project = find(root, "project")) {
        object(*project, "$.project");
        s_.project->name = toUtf16(text(*project, "name", "$.project", "Untitled"));
        std::string folder = text(*project, "folder", "$.project", {});
        if (!folder.empty()) {
            s_.project->folder = s_.ledger.make<Url>(toUtf16(resolve(folder)));
            s_.project->folder->flags = 1;
            s_.project->folderText = folder;
        }
        const json& tracks = list(*project, "tracks", "$.project");
        for (size_t i = 0; i < tracks.size(); ++i)
            loadTrack(tracks[i], at("$.project.tracks", i), *s_.project, 0);
    }
    if (const json* defaults = find(root, "defaults")) {
        for (auto& [section, keys] : object(*defaults, "$.defaults").items()) {
            std::string place = "$.defaults." + section;
            for (auto& [key, value] : object(keys, place).items()) {
                if (!value.is_string())
                    fail(place + "." + key, "expected a string");
                s_.defaults->values[section][key] = toUtf16(value.get<std::string>());
            }
        }
    }
    const json& history = list(root, "history", "$");
    for (size_t i = 0; i < history.size(); ++i) {
        std::string where = at("$.history", i);
        EditStep step{required(object(history[i], where), "name", where), {}};
        const json& actions = list(history[i], "actions", where);
        for (size_t k = 0; k < actions.size(); ++k) {
            if (!actions[k].is_string())
                fail(at(at(where, "actions"), k), "expected a string");
            step.actions.push_back(actions[k].get<std::string>());
        }
        s_.history.push_back(std::move(step));
    }
}

std::unique_ptr<Workstation>
Workstation::fromJson(const json& session, const std::string& baseFolder, std::string& error) {
    auto station = std::make_unique<Workstation>();
    try {
        Loader(*station, baseFolder).run(session);
    } catch (const SessionError& fault) {
        error = fault.message;
        return nullptr;
    } catch (const std::exception& fault) {
        error = std::string("$: ") + fault.what();
        return nullptr;
    }
    return station;
}

std::unique_ptr<Workstation> Workstation::load(const std::string& path, std::string& error) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        error = path + ": can't be read";
        return nullptr;
    }
    json session;
    try {
        session = json::parse(in);
    } catch (const json::exception& fault) {
        // A number that JSON allows but a double can't hold (1e999) is no parse_error.
        error = path + ": $: not JSON (" + fault.what() + ")";
        return nullptr;
    }
    // Relative paths in the file are taken from its folder, made absolute so that what a
    // plug-in is told (the project folder, media it brings in) still holds after a save elsewhere.
    std::error_code ignored;
    std::string base = std::filesystem::absolute(std::filesystem::path(path).parent_path(), ignored)
                           .lexically_normal()
                           .string();
    if (base.size() > 1 && base.back() == '/')
        base.pop_back();
    auto station = fromJson(session, base, error);
    if (!station)
        error = path + ": " + error;
    return station;
}

} // namespace RefHost
} // namespace Halvorn

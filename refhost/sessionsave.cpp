// Writing a workstation back as a session file, in the shape that loading reads.
#include "text.h"
#include "workstation.h"

#include <fstream>

namespace Halvorn {
namespace RefHost {

using nlohmann::json;

namespace {

json pluginJson(const Plugin& plugin) {
    json values = json::object();
    for (auto& info : plugin.type.parameters)
        values[std::to_string(info.id)] = plugin.own(info.id)->normalized;
    json out = {{"class", fuidText(plugin.type.cid)},
                {"on", plugin.param("on")->normalized > 0.5},
                {"values", values}};
    if (Parameter* presets = plugin.param(Plugin::kPresetParameter))
        out["preset"] = int32(presets->getIntValue());
    return out;
}

json slotJson(const Slot& slot) {
    json out = {{"on", slot.param("on")->normalized > 0.5}};
    out["plugin"] = slot.plugin() ? pluginJson(*slot.plugin()) : json();
    return out;
}

json modulesJson(const Channel& channel) {
    json out = json::array();
    for (auto& module : channel.modules) {
        json entry;
        auto* plugin = dynamic_cast<const Plugin*>(module.get());
        if (auto* slot = dynamic_cast<const Slot*>(module.get())) {
            // The slot of a module plug-in comes back with its module.
            if (slot->plugin() && slot->plugin()->name + " Slot" == slot->name)
                continue;
            entry = slotJson(*slot);
            entry["name"] = slot->name;
        } else {
            json parameters = json::array();
            for (auto& parameter : module->params) {
                // A module plug-in's own parameters and "on" live in its plug-in entry.
                if (plugin && (parameter->tag >= uint32(IHostParameter::kPluginTagOffset) ||
                               parameter->id == "on"))
                    continue;
                parameters.push_back({{"id", parameter->id},
                                      {"title", toUtf8(parameter->title)},
                                      {"min", parameter->minimum},
                                      {"max", parameter->maximum},
                                      {"value", parameter->normalized}});
            }
            entry = {{"name", module->name}, {"parameters", parameters}};
            if (plugin) {
                entry["plugin"] = pluginJson(*plugin);
                const ParamOwner* slot = dynamic_cast<const ParamOwner*>(plugin->parent);
                if (slot && slot->param("on"))
                    entry["on"] = slot->param("on")->normalized > 0.5;
            }
        }
        out.push_back(entry);
    }
    return out;
}

json channelJson(const Channel& channel) {
    json inserts = json::array();
    for (int32 index = 0; index < Channel::kInsertSlots; ++index) {
        Slot* slot = channel.insert(index);
        if (!slot->plugin())
            continue;
        json entry = slotJson(*slot);
        entry["slot"] = index + 1;
        inserts.push_back(entry);
    }
    json sends = json::array();
    for (auto& owner : channel.sends()->children) {
        auto& send = static_cast<const Send&>(*owner);
        sends.push_back({{"to", send.destination ? json(send.destination->id) : json()},
                         {"volume", send.param("volume")->normalized},
                         {"on", send.param("on")->normalized > 0.5},
                         {"preFader", send.param("prePost")->normalized > 0.5}});
    }
    json out = {{"id", channel.id},
                {"kind", channel.name},
                {"title", toUtf8(channel.title)},
                {"volume", channel.param("volume")->normalized},
                {"mute", channel.param("mute")->normalized > 0.5},
                {"solo", channel.param("solo")->normalized > 0.5},
                {"pan", channel.panner()->param("panX")->normalized},
                {"color", colorText(channel.color)},
                {"speakers", channel.speakers},
                {"output", channel.destination ? json(channel.destination->id) : json()},
                {"inserts", inserts},
                {"sends", sends},
                {"modules", modulesJson(channel)}};
    if (Slot* slot = channel.instrumentSlot())
        out["instrument"] = slot->plugin() ? pluginJson(*slot->plugin()) : json();
    return out;
}

void commonJson(const TimelineNode& node, json& out) {
    if (!node.id.empty())
        out["id"] = node.id;
    out["name"] = toUtf8(node.name);
    out["muted"] = node.muted;
    out["start"] = node.start;
    out["length"] = node.length;
    out["offset"] = node.offset;
    if (node.hasColor)
        out["color"] = colorText(node.color);
}

json itemJson(const TimelineNode& node) {
    json out = json::object();
    if (auto* audio = dynamic_cast<const AudioEvent*>(&node)) {
        out = {{"kind", "audio"},           {"media", audio->clip ? json(audio->clip->id) : json()},
               {"fadeIn", audio->fadeIn},   {"fadeOut", audio->fadeOut},
               {"stretch", audio->stretch}, {"warped", audio->warped}};
    } else if (dynamic_cast<const AudioPart*>(&node)) {
        json events = json::array();
        for (auto& child : node.children())
            events.push_back(itemJson(*child));
        out = {{"kind", "audioPart"}, {"events", events}};
    } else if (dynamic_cast<const MidiPart*>(&node)) {
        json notes = json::array();
        for (auto& child : node.children()) {
            auto& note = static_cast<const NoteEvent&>(*child);
            json entry = {{"pitch", note.pitch},
                          {"velocity", note.velocity},
                          {"releaseVelocity", note.releaseVelocity},
                          {"channel", note.channel}};
            commonJson(note, entry);
            notes.push_back(entry);
        }
        out = {{"kind", "midiPart"}, {"notes", notes}};
    } else if (auto* video = dynamic_cast<const VideoEvent*>(&node)) {
        out = {{"kind", "video"}, {"media", video->clip ? json(video->clip->id) : json()}};
    } else if (dynamic_cast<const MarkerEvent*>(&node)) {
        out = {{"kind", "marker"}};
    } else if (auto* tempo = dynamic_cast<const TempoEvent*>(&node)) {
        out = {{"kind", "tempo"}, {"bpm", tempo->bpm}, {"ramp", tempo->ramp}};
    } else if (auto* signature = dynamic_cast<const SignatureEvent*>(&node)) {
        out = {{"kind", "signature"},
               {"numerator", signature->numerator},
               {"denominator", signature->denominator}};
    }
    commonJson(node, out);
    return out;
}

json lanesJson(const Track& track) {
    json out = json::array();
    if (!track.folder)
        return out;
    for (auto& lane : track.folder->lanes) {
        Parameter* parameter = lane->owner->paramByTag(lane->tag);
        bool own = dynamic_cast<const Plugin*>(lane->owner) &&
                   lane->tag >= uint32(IHostParameter::kPluginTagOffset);
        json points = json::array();
        for (auto& child : lane->children()) {
            json entry = {{"value", static_cast<const AutomationPoint&>(*child).value}};
            commonJson(*child, entry);
            points.push_back(entry);
        }
        json entry = {
            {"path", lane->path},
            {"parameter", own ? "#" + std::to_string(lane->tag - IHostParameter::kPluginTagOffset)
                              : parameter->id},
            {"points", points}};
        commonJson(*lane, entry);
        out.push_back(entry);
    }
    return out;
}

json trackJson(const Track& track) {
    json items = json::array();
    json tracks = json::array();
    for (auto& child : track.children()) {
        if (auto* inner = dynamic_cast<const Track*>(child.get()))
            tracks.push_back(trackJson(*inner));
        else
            items.push_back(itemJson(*child));
    }
    json out = {{"type", track.type}, {"loaded", track.loaded}, {"items", items}};
    commonJson(track, out);
    if (track.channel)
        out["channel"] = track.channel->id;
    if (track.type == "folder")
        out["tracks"] = tracks;
    if (track.folder)
        out["automation"] = lanesJson(track);
    if (auto* tempo = dynamic_cast<const TempoTrack*>(&track)) {
        out["bpm"] = tempo->fixedTempo;
        out["fixed"] = tempo->fixed;
    }
    if (auto* signature = dynamic_cast<const SignatureTrack*>(&track)) {
        out["numerator"] = signature->numerator;
        out["denominator"] = signature->denominator;
    }
    return out;
}

json pluginsJson(const Catalogue& catalogue) {
    json out = json::array();
    for (auto& type : catalogue.classes()) {
        json parameters = json::array();
        for (auto& info : type.parameters) {
            json row = {
                {"id", info.id}, {"title", toUtf8(info.title)}, {"default", info.defaultValue}};
            if (!info.unit.empty())
                row["unit"] = info.unit;
            if (info.minimum != 0.0 || info.maximum != 1.0) {
                row["min"] = info.minimum;
                row["max"] = info.maximum;
            }
            if (info.infiniteBottom)
                row["infinite"] = true;
            if (!info.choices.empty())
                row["choices"] = info.choices;
            parameters.push_back(row);
        }
        json presets = json::array();
        for (auto& preset : type.presets)
            presets.push_back({{"file", toUtf8(preset.fileName)}, {"index", preset.index}});
        out.push_back({{"cid", fuidText(type.cid)},
                       {"name", type.name},
                       {"instrument", type.instrument},
                       {"parameters", parameters},
                       {"presets", presets}});
    }
    return out;
}

void poolClips(MediaPool& pool, const TimelineNode& node) {
    MediaFile* clip = nullptr;
    if (auto* audio = dynamic_cast<const AudioEvent*>(&node))
        clip = audio->clip.get();
    if (auto* video = dynamic_cast<const VideoEvent*>(&node))
        clip = video->clip.get();
    if (clip)
        pool.addFile(clip, 0);
    for (auto& child : node.children())
        poolClips(pool, *child);
}

} // namespace

json Workstation::toJson() {
    poolClips(*project->pool, *project);
    for (auto& file : project->pool->files)
        if (file->id.empty())
            file->id = newId("media");
    json media = json::array();
    for (auto& file : project->pool->files) {
        json entry = {{"id", file->id}, {"path", file->pathText}};
        if (auto* video = dynamic_cast<const VideoClip*>(file.get())) {
            entry["kind"] = "video";
            entry["sampleRate"] = video->sampleRate;
            entry["frameCount"] = video->frames;
        } else {
            entry["kind"] = "audio";
        }
        media.push_back(entry);
    }
    json channels = json::array();
    for (auto& owner : mixer->channelList().children)
        channels.push_back(channelJson(static_cast<const Channel&>(*owner)));
    json tracks = json::array();
    for (auto& child : project->children())
        tracks.push_back(trackJson(static_cast<const Track&>(*child)));
    json defaultsOut = json::object();
    for (auto& [section, keys] : defaults->values)
        for (auto& [key, value] : keys)
            defaultsOut[section][key] = toUtf8(value);
    json historyOut = json::array();
    for (auto& step : history)
        historyOut.push_back({{"name", step.name}, {"actions", step.actions}});
    json projectOut = {{"name", toUtf8(project->name)}, {"tracks", tracks}};
    if (project->folder)
        projectOut["folder"] = project->folderText;
    return {{"application",
             {{"name", toUtf8(applicationName)}, {"version", toUtf8(applicationVersion)}}},
            {"plugins", pluginsJson(catalogue)},
            {"media", media},
            {"mixer",
             {{"maximumGain", mixer->maximumGain},
              {"autoOpenPluginEditor", mixer->param("autoOpenPluginEditor")->normalized > 0.5},
              {"strip", stripTemplate},
              {"channels", channels}}},
            {"project", projectOut},
            {"defaults", defaultsOut},
            {"history", historyOut}};
}

bool Workstation::save(const std::string& path, std::string& error) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out) {
        error = path + ": can't be written";
        return false;
    }
    out << toJson().dump(2) << "\n";
    if (!out) {
        error = path + ": writing failed";
        return false;
    }
    return true;
}

} // namespace RefHost
} // namespace Halvorn

// Printing a session as a tree.
#include "showtree.h"
#include "faderlaw.h"
#include "text.h"

#include <iomanip>
#include <sstream>
#include <string>

namespace Halvorn {
namespace RefHost {

namespace {

std::string indent(int depth) { return std::string(size_t(depth) * 2, ' '); }

std::string times(const TimelineNode& node) {
    std::ostringstream text;
    text << "@" << node.start << "s";
    if (node.length > 0.0)
        text << " +" << node.length << "s";
    if (node.offset != 0.0)
        text << " offset " << node.offset << "s";
    if (node.muted)
        text << " muted";
    return text.str();
}

void printItem(const TimelineNode& node, int depth, std::ostream& out) {
    out << indent(depth) << node.kind();
    if (!node.name.empty())
        out << " \"" << toUtf8(node.name) << "\"";
    out << " " << times(node);
    if (auto* audio = dynamic_cast<const AudioEvent*>(&node); audio && audio->clip)
        out << " file " << audio->clip->path() << " (" << audio->clip->facts.channels << " ch, "
            << audio->clip->facts.sampleRate << " Hz, " << audio->clip->facts.frames << " frames)";
    if (auto* video = dynamic_cast<const VideoEvent*>(&node); video && video->clip)
        out << " file " << video->clip->path();
    if (auto* note = dynamic_cast<const NoteEvent*>(&node))
        out << " pitch " << note->pitch << " velocity " << note->velocity;
    if (auto* tempo = dynamic_cast<const TempoEvent*>(&node))
        out << " " << tempo->bpm << " bpm" << (tempo->ramp ? " ramp" : "");
    if (auto* signature = dynamic_cast<const SignatureEvent*>(&node))
        out << " " << signature->numerator << "/" << signature->denominator;
    if (auto* point = dynamic_cast<const AutomationPoint*>(&node))
        out << " value " << point->value;
    out << "\n";
    for (auto& child : node.children())
        if (!dynamic_cast<const Track*>(child.get()))
            printItem(*child, depth + 1, out);
}

void printTrack(const Track& track, int depth, std::ostream& out) {
    out << indent(depth) << track.type << " track \"" << toUtf8(track.name) << "\" [" << track.id
        << "]";
    if (track.channel)
        out << " channel " << track.channel->id;
    if (!track.loaded)
        out << " unloaded";
    if (auto* tempo = dynamic_cast<const TempoTrack*>(&track))
        out << " " << tempo->fixedTempo << " bpm" << (tempo->fixed ? " fixed" : "");
    if (auto* signature = dynamic_cast<const SignatureTrack*>(&track))
        out << " " << signature->numerator << "/" << signature->denominator;
    out << "\n";
    for (auto& child : track.children()) {
        if (auto* inner = dynamic_cast<const Track*>(child.get()))
            printTrack(*inner, depth + 1, out);
        else
            printItem(*child, depth + 1, out);
    }
    if (track.folder)
        for (auto& lane : track.folder->lanes) {
            Parameter* parameter = lane->owner->paramByTag(lane->tag);
            out << indent(depth + 1) << "automation " << lane->owner->path() << " "
                << (parameter ? parameter->id : "?") << " (tag " << lane->tag << ")\n";
            for (auto& point : lane->children())
                printItem(*point, depth + 2, out);
        }
}

void printOwner(const ParamOwner& owner, int depth, std::ostream& out) {
    if (auto* slot = dynamic_cast<const Slot*>(&owner);
        slot && !slot->plugin() && slot->name.rfind("slot", 0) == 0)
        return;
    out << indent(depth) << owner.name;
    if (!owner.title.empty())
        out << " \"" << toUtf8(owner.title) << "\"";
    if (auto* channel = dynamic_cast<const Channel*>(&owner)) {
        out << " [" << channel->id << "] speakers " << channel->speakers;
        if (channel->destination)
            out << " -> " << channel->destination->id;
    }
    if (auto* send = dynamic_cast<const Send*>(&owner))
        out << " -> " << (send->destination ? send->destination->id : "nowhere");
    out << "\n";
    for (auto& parameter : owner.params) {
        if (parameter->kind == Parameter::Kind::Text && parameter->text().empty())
            continue;
        out << indent(depth + 1) << "- " << parameter->id << " = " << toUtf8(parameter->text())
            << " (tag " << parameter->tag << ")\n";
    }
    for (auto& child : owner.children)
        printOwner(*child, depth + 1, out);
    if (auto* channel = dynamic_cast<const Channel*>(&owner))
        for (auto& module : channel->modules)
            printOwner(*module, depth + 1, out);
}

} // namespace

void printTree(Workstation& station, std::ostream& out) {
    out << "application \"" << toUtf8(station.applicationName) << "\" "
        << toUtf8(station.applicationVersion) << "\n";
    out << "project \"" << toUtf8(station.project->name) << "\"";
    if (station.project->folder)
        out << " in " << toUtf8(station.project->folder->path);
    out << "\n";
    for (auto& child : station.project->children())
        printTrack(static_cast<const Track&>(*child), 1, out);
    out << "media pool\n";
    for (auto& file : station.project->pool->files)
        out << "  " << file->kind() << " [" << file->id << "] " << file->path() << "\n";
    out << "plug-ins\n";
    for (auto& type : station.catalogue.classes())
        out << "  " << fuidText(type.cid) << " \"" << type.name << "\""
            << (type.instrument ? " instrument" : "") << ", " << type.parameters.size()
            << " parameter(s)\n";
    out << "mixer, top gain " << std::fixed << std::setprecision(2)
        << gainToDecibel(station.mixer->maximumGain) << " dB" << std::defaultfloat << "\n";
    printOwner(*station.mixer, 1, out);
    out << "defaults\n";
    for (auto& [section, keys] : station.defaults->values)
        for (auto& [key, value] : keys)
            out << "  " << section << "/" << key << " = " << toUtf8(value) << "\n";
    out << "history\n";
    for (auto& step : station.history)
        out << "  \"" << step.name << "\" (" << step.actions.size() << " change(s))\n";
}

} // namespace RefHost
} // namespace Halvorn

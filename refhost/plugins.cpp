// The plug-in catalogue, plug-in objects, their controllers and state, and preset lists.
#include "plugins.h"

#include "text.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <sstream>

namespace Halvorn {
namespace RefHost {

namespace {
constexpr const char* kStateHeader = "QUORPRESET 1";
} // namespace

const PluginClass* Catalogue::find(const FUID& cid) const {
    for (auto& entry : classes_)
        if (entry.cid == cid)
            return &entry;
    return nullptr;
}

const PluginClass* Catalogue::findByName(const std::string& name) const {
    for (auto& entry : classes_)
        if (entry.name == name)
            return &entry;
    return nullptr;
}

const PluginClass& Catalogue::add(PluginClass entry) {
    classes_.push_back(std::move(entry));
    return classes_.back();
}

FUnknown* PresetEntry::faceFor(const FUID& iid) {
    return iid == FUnknown::iid ? static_cast<IHostPresetEntry*>(this) : nullptr;
}

IHostPresetEntry* Presets::getPreset(int32 index) {
    return index >= 0 && size_t(index) < entries.size() ? entries[size_t(index)].get() : nullptr;
}

FUnknown* Presets::faceFor(const FUID& iid) {
    return iid == FUnknown::iid ? static_cast<IHostPresets*>(this) : nullptr;
}

Plugin::Plugin(Ledger& ledger, const PluginClass& type)
    : ParamOwner(ledger, "plug-in", "Plugin", toUtf16(type.name)), type(type),
      controller_(ledger.make<Controller>(*this)) {
    addParameter("on", u"On", Parameter::Kind::Number, 0, 1).normalized = 1.0;
    for (auto& info : type.parameters)
        addParameter(std::to_string(info.id), info.title, Parameter::Kind::Number, 0, 1,
                     info.id + IHostParameter::kPluginTagOffset)
            .normalized = info.defaultValue;
    if (type.instrument && !type.presets.empty()) {
        auto presets = ledger.make<Presets>();
        for (auto& preset : type.presets)
            presets->entries.push_back(ledger.make<PresetEntry>(preset));
        Parameter& list = addParameter(kPresetParameter, u"Preset", Parameter::Kind::Presets, 0,
                                       int32(type.presets.size()) - 1);
        list.presets = presets;
    }
}

std::string displayText(const PluginParameterInfo& info, double normalized) {
    normalized = std::min(1.0, std::max(0.0, normalized));
    if (!info.choices.empty())
        return info.choices[size_t(std::lround(normalized * double(info.choices.size() - 1)))];
    if (info.infiniteBottom && normalized <= 0.0)
        return "-oo";
    double plain = info.minimum + normalized * (info.maximum - info.minimum);
    char buffer[64];
    if (info.unit.empty())
        std::snprintf(buffer, sizeof buffer, "%.3f", plain);
    else if (info.unit == "Hz")
        std::snprintf(buffer, sizeof buffer, "%.0f Hz", plain);
    else if (info.unit == ":1")
        std::snprintf(buffer, sizeof buffer, "%.1f:1", plain);
    else
        std::snprintf(buffer, sizeof buffer, "%.1f %s", plain, info.unit.c_str());
    return buffer;
}

const PluginParameterInfo* Plugin::info(uint32 id) const {
    for (auto& entry : type.parameters)
        if (entry.id == id)
            return &entry;
    return nullptr;
}

Parameter* Plugin::own(uint32 id) const {
    return paramByTag(id + IHostParameter::kPluginTagOffset);
}

std::string Plugin::state() const {
    std::string text = std::string(kStateHeader) + "\n" + fuidText(type.cid) + "\n";
    char line[64];
    for (auto& info : type.parameters) {
        std::snprintf(line, sizeof line, "%u=%.17g\n", info.id, own(info.id)->normalized);
        text += line;
    }
    return text;
}

bool Plugin::restore(const std::string& state) {
    std::istringstream in(state);
    std::string header, cid, line;
    if (!std::getline(in, header) || header != kStateHeader || !std::getline(in, cid) ||
        cid != fuidText(type.cid))
        return false;
    while (std::getline(in, line)) {
        size_t equals = line.find('=');
        if (equals == std::string::npos)
            return false;
        Parameter* target = own(uint32(std::strtoul(line.c_str(), nullptr, 10)));
        if (target)
            target->normalized = std::strtod(line.c_str() + equals + 1, nullptr);
    }
    return true;
}

tresult Plugin::saveState(IBStream* stream) {
    if (!stream)
        return kInvalidArgument;
    std::string text = state();
    int32 done = 0;
    if (stream->write(text.data(), int32(text.size()), &done) != kResultOk ||
        done != int32(text.size()))
        return kResultFalse;
    return kResultOk;
}

tresult Plugin::loadState(IBStream* stream, int32) {
    if (!stream)
        return kInvalidArgument;
    std::string text;
    char buffer[4096];
    int32 done = 0;
    while (stream->read(buffer, int32(sizeof buffer), &done) == kResultOk && done > 0)
        text.append(buffer, size_t(done));
    return restore(text) ? kResultOk : kResultFalse;
}

FUnknown* Plugin::faceFor(const FUID& iid) {
    if (FUnknown* face = Support::faceOf<IHostPluginAccess>(iid, this))
        return face;
    if (FUnknown* face = Support::faceOf<IHostPluginState>(iid, this))
        return face;
    return ParamOwner::faceFor(iid);
}

void Plugin::dispose() {
    controller_ = nullptr;
    ParamOwner::dispose();
}

int32 Controller::getParameterCount() { return int32(plugin_.type.parameters.size()); }

tresult Controller::getParameterInfo(int32 index, QuorParameterInfo* info) {
    auto& list = plugin_.type.parameters;
    if (!info || index < 0 || size_t(index) >= list.size())
        return kInvalidArgument;
    info->id = list[size_t(index)].id;
    toBuffer(list[size_t(index)].title, info->title, 128);
    return kResultOk;
}

tresult Controller::valueToText(uint32 id, double normalized, QuorString128 text) {
    const PluginParameterInfo* info = plugin_.info(id);
    if (!info || !text)
        return kInvalidArgument;
    toBuffer(toUtf16(displayText(*info, normalized)), text, 128);
    return kResultOk;
}

tresult Controller::valueFromText(uint32 id, const char16* text, double* normalized) {
    if (!plugin_.own(id) || !text || !normalized)
        return kInvalidArgument;
    std::string plain = toUtf8(text);
    char* end = nullptr;
    double value = std::strtod(plain.c_str(), &end);
    if (end == plain.c_str() || value < 0.0 || value > 1.0)
        return kResultFalse;
    *normalized = value;
    return kResultOk;
}

double Controller::getNormalized(uint32 id) {
    Parameter* found = plugin_.own(id);
    return found ? found->normalized : 0.0;
}

tresult Controller::setNormalized(uint32 id, double normalized) {
    Parameter* found = plugin_.own(id);
    if (!found)
        return kInvalidArgument;
    found->normalized = std::min(1.0, std::max(0.0, normalized));
    return kResultOk;
}

FUnknown* Controller::faceFor(const FUID& iid) {
    return iid == FUnknown::iid ? static_cast<IQuorController*>(this) : nullptr;
}

} // namespace RefHost
} // namespace Halvorn

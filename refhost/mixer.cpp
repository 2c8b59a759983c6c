// Parameters, parameter owners, channels, sends and "QUOR Mixer".
#include "mixer.h"
#include "faderlaw.h"
#include "plugins.h"
#include "text.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace Halvorn {
namespace RefHost {

namespace {
const std::u16string kEmpty;

bool sameChannelKind(const Channel* channel, const char* kind) {
    return channel && channel->name == kind;
}
} // namespace

Parameter::Parameter(Ledger& ledger, std::string id, std::u16string title, Kind kind, int32 minimum,
                     int32 maximum)
    : HostObject(ledger, "parameter"), id(std::move(id)), title(std::move(title)), kind(kind),
      minimum(minimum), maximum(maximum) {}

int32 Parameter::getIntValue() {
    if (intOf)
        return intOf();
    return int32(std::lround(getValue()));
}

float Parameter::getValue() { return float(minimum + normalized * (maximum - minimum)); }

void Parameter::setPlain(double value) {
    normalized =
        maximum > minimum ? std::clamp((value - minimum) / (maximum - minimum), 0.0, 1.0) : 0.0;
}

std::u16string Parameter::text() const {
    if (textOf)
        return textOf();
    char buffer[64];
    double plain = minimum + normalized * (maximum - minimum);
    if (kind == Kind::Volume && maximumGain)
        std::snprintf(
            buffer, sizeof buffer, "%.2f dB",
            gainToDecibel(faderGain(normalized, curveForMaximumGain(*maximumGain), *maximumGain)));
    else
        std::snprintf(buffer, sizeof buffer, "%g", plain);
    return toUtf16(buffer);
}

tresult Parameter::getValueText(char16* buffer, int32* size) {
    if (!buffer || !size || *size <= 0)
        return kInvalidArgument;
    std::u16string shown = text();
    toBuffer(shown, buffer, *size);
    *size = int32(std::min<size_t>(shown.size(), size_t(*size - 1)));
    return kResultOk;
}

tresult Parameter::setValueText(const char16* text, bool notify) {
    if (!text)
        return kInvalidArgument;
    char* end = nullptr;
    std::string plain = toUtf8(text);
    double value = std::strtod(plain.c_str(), &end);
    if (end == plain.c_str())
        return kResultFalse;
    setPlain(value);
    notifications += notify ? 1 : 0;
    return kResultOk;
}

tresult Parameter::setIntValue(int32 value, bool notify) {
    if (intSetter)
        intSetter(value);
    else
        setPlain(value);
    notifications += notify ? 1 : 0;
    return kResultOk;
}

tresult Parameter::setValue(float value, bool notify) {
    setPlain(value);
    notifications += notify ? 1 : 0;
    return kResultOk;
}

tresult Parameter::setNormalized(float value, bool notify) {
    normalized = std::clamp(double(value), 0.0, 1.0);
    notifications += notify ? 1 : 0;
    return kResultOk;
}

// The fader reads under the curve that the mixer's top puts in force, as automation does.
float Parameter::valueToDecibel(float value) {
    double top = maximumGain ? *maximumGain : 1.0;
    return float(gainToDecibel(faderGain(value, curveForMaximumGain(top), top)));
}

float Parameter::decibelToValue(float decibel) {
    double top = maximumGain ? *maximumGain : 1.0;
    return float(faderValue(decibelToGain(decibel), curveForMaximumGain(top), top));
}

IHostPresets* Parameter::getPresets() { return presets.get(); }

FUnknown* Parameter::faceFor(const FUID& iid) {
    if (iid == FUnknown::iid)
        return static_cast<IHostParameter*>(this);
    if (kind == Kind::Volume)
        return Support::faceOf<IHostGainScale>(iid, this);
    if (kind == Kind::Presets)
        return Support::faceOf<IHostPresetList>(iid, this);
    return nullptr;
}

void Parameter::dispose() {
    presets = nullptr;
    textOf = nullptr;
    intOf = nullptr;
    intSetter = nullptr;
}

ParamOwner::ParamOwner(Ledger& ledger, const char* kind, std::string name, std::u16string title)
    : HostObject(ledger, kind), name(std::move(name)), title(std::move(title)) {}

uint32 ParamOwner::getParameterTag(int32 index) {
    return index >= 0 && size_t(index) < params.size() ? params[size_t(index)]->tag : 0;
}

const char16* ParamOwner::getParameterTitle(uint32 tag) {
    Parameter* found = paramByTag(tag);
    return found ? found->title.c_str() : nullptr;
}

IHostParameter* ParamOwner::findParameter(const char8* id) {
    Parameter* found = id ? param(id) : nullptr;
    if (found)
        found->retain();
    return found;
}

IHostParameter* ParamOwner::getParameterByTag(uint32 tag) {
    Parameter* found = paramByTag(tag);
    if (found)
        found->retain();
    return found;
}

IHostParameterOwner* ParamOwner::getChild(int32 index) {
    return index >= 0 && size_t(index) < children.size() ? children[size_t(index)].get() : nullptr;
}

const char8* ParamOwner::getPath() {
    // The text stays where it is while the path is unchanged: callers keep it between calls.
    if (std::string fresh = path(); fresh != pathText_)
        pathText_ = std::move(fresh);
    return pathText_.c_str();
}

std::string ParamOwner::path() const {
    return parent ? parent->path() + "/" + segment() : segment();
}

ParamOwner* ParamOwner::resolve(const std::string& relative) {
    ParamOwner* at = this;
    size_t from = 0;
    while (at && from < relative.size()) {
        size_t slash = relative.find('/', from);
        std::string step = relative.substr(from, slash == std::string::npos ? slash : slash - from);
        ParamOwner* next = nullptr;
        for (auto& owner : at->children)
            if (owner->segment() == step)
                next = owner.get();
        if (auto* channel = dynamic_cast<Channel*>(at); channel && !next)
            for (auto& module : channel->modules)
                if (module->segment() == step)
                    next = module.get();
        at = next;
        from = slash == std::string::npos ? relative.size() : slash + 1;
    }
    return at;
}

Parameter* ParamOwner::param(const std::string& id) const {
    for (auto& held : params)
        if (held->id == id)
            return held.get();
    return nullptr;
}

Parameter* ParamOwner::paramByTag(uint32 tag) const {
    for (auto& held : params)
        if (held->tag == tag)
            return held.get();
    return nullptr;
}

Parameter& ParamOwner::addParameter(std::string id, std::u16string title, Parameter::Kind kind,
                                    int32 minimum, int32 maximum, uint32 tag) {
    auto made = ledger().make<Parameter>(std::move(id), std::move(title), kind, minimum, maximum);
    made->tag = tag == 0 ? takeTag() : tag;
    params.push_back(made);
    return *made;
}

ParamOwner* ParamOwner::child(const std::string& wanted) const {
    for (auto& owner : children)
        if (owner->name == wanted)
            return owner.get();
    return nullptr;
}

void ParamOwner::addChild(ParamOwner* owner) {
    owner->parent = this;
    children.emplace_back(owner);
    // A channel numbers its own tree as it builds it; joining the mixer changes nothing.
    if (!dynamic_cast<Channel*>(owner))
        owner->retag();
}

uint32 ParamOwner::takeTag() { return parent ? parent->takeTag() : highestHostTag() + 1; }

uint32 ParamOwner::highestHostTag() const {
    uint32 highest = 0;
    for (auto& held : params)
        if (held->tag < uint32(IHostParameter::kPluginTagOffset))
            highest = std::max(highest, held->tag);
    for (auto& owner : children)
        highest = std::max(highest, owner->highestHostTag());
    return highest;
}

void ParamOwner::retag() {
    for (auto& held : params)
        if (held->tag < uint32(IHostParameter::kPluginTagOffset))
            held->tag = takeTag();
    for (auto& owner : children)
        owner->retag();
}

FUnknown* ParamOwner::faceFor(const FUID& iid) {
    if (iid == FUnknown::iid)
        return static_cast<IHostParameterOwner*>(this);
    return Support::faceOf<IHostAutomationTarget>(iid, this);
}

void ParamOwner::dispose() {
    params.clear();
    children.clear();
}

Slot::Slot(Ledger& ledger, std::string name) : ParamOwner(ledger, "slot", std::move(name)) {
    addParameter("on", u"On", Parameter::Kind::Number, 0, 1).normalized = 1.0;
    Parameter& type = addParameter("effectType", u"Effect", Parameter::Kind::Text, 0, 1);
    type.slot = this;
    type.textOf = [this] { return plugin() ? toUtf16(plugin()->type.name) : std::u16string(); };
    type.intOf = [this] { return plugin() ? 1 : 0; };
}

Plugin* Slot::plugin() const {
    return children.empty() ? nullptr : dynamic_cast<Plugin*>(children.front().get());
}

void Slot::setPlugin(Plugin* plugin) {
    children.clear();
    if (plugin)
        addChild(plugin);
}

Send::Send(Ledger& ledger, std::string name, const double* maximumGain)
    : ParamOwner(ledger, "send", std::move(name)) {
    addParameter("volume", u"Level", Parameter::Kind::Volume, 0, 1).maximumGain = maximumGain;
    addParameter("on", u"On", Parameter::Kind::Number, 0, 1).normalized = 1.0;
    // A switch: 1 before the fader, 0 after it; its integer reading is 1 or -1.
    Parameter& prePost = addParameter("prePost", u"Pre/Post", Parameter::Kind::Number, 0, 1);
    prePost.intOf = [&prePost] { return prePost.normalized >= 0.5 ? 1 : -1; };
    Parameter& bus = addParameter("outputBus", u"Output", Parameter::Kind::Text, 0, 1);
    bus.textOf = [this] { return destination ? destination->title : std::u16string(); };
    bus.intOf = [this] { return destination ? 1 : 0; };
}

bool Send::canRouteTo(IHostParameterOwner* face) {
    auto* target = hostCast<Channel>(face);
    return sameChannelKind(target, "FxChannel") || sameChannelKind(target, "GroupChannel");
}

tresult Send::setDestination(IHostParameterOwner* face) {
    if (!canRouteTo(face))
        return kResultFalse;
    destination = hostCast<Channel>(face);
    return kResultOk;
}

FUnknown* Send::faceFor(const FUID& iid) {
    if (FUnknown* face = Support::faceOf<IHostOutputRouting>(iid, this))
        return face;
    return ParamOwner::faceFor(iid);
}

Channel::Channel(Ledger& ledger, std::string kindName, std::string id, const double* maximumGain)
    : ParamOwner(ledger, "channel", std::move(kindName)), id(std::move(id)),
      maximumGain_(maximumGain) {
    // A new channel stands at unity gain, as on a real console.
    Parameter& volume = addParameter("volume", u"Volume", Parameter::Kind::Volume, 0, 1);
    volume.maximumGain = maximumGain;
    volume.normalized = maximumGain ? unityValue(*maximumGain) : 1.0;
    addParameter("mute", u"Mute", Parameter::Kind::Number, 0, 1);
    addParameter("solo", u"Solo", Parameter::Kind::Number, 0, 1);
    Parameter& colour = addParameter("colorspec", u"Colour", Parameter::Kind::Text, 0, 1);
    colour.textOf = [this] { return toUtf16(colorText(color)); };
    colour.intOf = [this] { return int32(color); };
    colour.intSetter = [this](int32 value) { color = uint32(value); };
    Parameter& bus = addParameter("outputBus", u"Output", Parameter::Kind::Text, 0, 1);
    bus.textOf = [this] { return destination ? destination->title : std::u16string(); };
    bus.intOf = [this] { return destination ? 1 : 0; };

    auto panner = ledger.make<ParamOwner>("panner", "Panner");
    panner->addParameter("panX", u"Pan", Parameter::Kind::Number, 0, 1).normalized = 0.5;
    addChild(panner.get());
    auto inserts = ledger.make<ParamOwner>("insert list", "Inserts");
    for (int32 index = 1; index <= kInsertSlots; ++index) {
        auto slot = ledger.make<Slot>("slot" + std::to_string(index));
        Parameter& type = addParameter("inserts:slot" + std::to_string(index) + ":effectType",
                                       u"Insert", Parameter::Kind::Text, 0, 1);
        Slot* raw = slot.get();
        type.slot = raw;
        type.textOf = [raw] { return raw->param("effectType")->text(); };
        inserts->addChild(slot.get());
    }
    addChild(inserts.get());
    addChild(ledger.make<ParamOwner>("send list", "Sends").get());
    if (name == "InstrumentChannel") {
        auto slot = ledger.make<Slot>("Slot");
        Parameter& type = addParameter("effectType", u"Instrument", Parameter::Kind::Text, 0, 1);
        Slot* raw = slot.get();
        type.slot = raw;
        type.textOf = [raw] { return raw->param("effectType")->text(); };
        addChild(slot.get());
    }
}

IHostParameterOwner* Channel::findModule(const char8* wanted) {
    if (!wanted)
        return nullptr;
    for (auto& module : modules)
        if (module->name == wanted)
            return module.get();
    return nullptr;
}

tresult Channel::getArrangement(IHostSpeakerList* face) {
    auto* list = hostCast<SpeakerList>(face);
    if (!list)
        return kInvalidArgument;
    list->speakers.clear();
    for (int bit = 0; bit < 64; ++bit)
        if (speakers & (uint64(1) << bit))
            list->speakers.push_back(uint64(1) << bit);
    return kResultOk;
}

bool Channel::routesTo(const Channel* other) const {
    for (const Channel* at = destination; at; at = at->destination)
        if (at == other)
            return true;
    return false;
}

bool Channel::canRouteTo(IHostParameterOwner* face) {
    auto* target = hostCast<Channel>(face);
    if (!target || target == this || name == "OutputChannel" || target->routesTo(this))
        return false;
    return sameChannelKind(target, "OutputChannel") || sameChannelKind(target, "GroupChannel");
}

tresult Channel::setDestination(IHostParameterOwner* face) {
    if (!canRouteTo(face))
        return kResultFalse;
    destination = hostCast<Channel>(face);
    return kResultOk;
}

Slot* Channel::insert(int32 index) const {
    ParamOwner* inserts = child("Inserts");
    if (!inserts || index < 0 || size_t(index) >= inserts->children.size())
        return nullptr;
    return dynamic_cast<Slot*>(inserts->children[size_t(index)].get());
}

Slot* Channel::instrumentSlot() const { return dynamic_cast<Slot*>(child("Slot")); }

Send* Channel::addSend() {
    ParamOwner* list = sends();
    auto send =
        ledger().make<Send>("send" + std::to_string(list->children.size() + 1), maximumGain_);
    Send* raw = send.get();
    list->addChild(raw);
    return raw;
}

void Channel::addModule(ParamOwner* module) {
    module->parent = this;
    modules.emplace_back(module);
    module->retag();
}

FUnknown* Channel::faceFor(const FUID& iid) {
    if (FUnknown* face = Support::faceOf<IHostChannelModules>(iid, this))
        return face;
    if (FUnknown* face = Support::faceOf<IHostChannelBus>(iid, this))
        return face;
    if (FUnknown* face = Support::faceOf<IHostOutputRouting>(iid, this))
        return face;
    return ParamOwner::faceFor(iid);
}

void Channel::dispose() {
    modules.clear();
    destination = nullptr;
    ParamOwner::dispose();
}

Mixer::Mixer(Ledger& ledger) : ParamOwner(ledger, "mixer", "QUOR Mixer") {
    addParameter("autoOpenPluginEditor", u"Open Plug-in Editors", Parameter::Kind::Number, 0, 1);
    addChild(ledger.make<ParamOwner>("channel list", "Channels").get());
}

tresult Mixer::getMaximumGain(double* gain) {
    if (!gain)
        return kInvalidArgument;
    *gain = maximumGain;
    return kResultOk;
}

Channel* Mixer::channel(const std::string& id) const {
    for (auto& owner : channelList().children)
        if (auto* found = dynamic_cast<Channel*>(owner.get()); found && found->id == id)
            return found;
    return nullptr;
}

void Mixer::attach(Channel* channel) {
    if (!holds(channel))
        channelList().addChild(channel);
}

bool Mixer::holds(const Channel* wanted) const {
    for (auto& owner : channelList().children)
        if (owner.get() == wanted)
            return true;
    return false;
}

FUnknown* Mixer::faceFor(const FUID& iid) {
    if (FUnknown* face = Support::faceOf<IHostMixerSettings>(iid, this))
        return face;
    return ParamOwner::faceFor(iid);
}

uint64 SpeakerList::getSpeaker(int32 index) {
    return index >= 0 && size_t(index) < speakers.size() ? speakers[size_t(index)] : 0;
}

FUnknown* SpeakerList::faceFor(const FUID& iid) {
    if (iid == FUnknown::iid || iid == IHostSpeakerList::iid)
        return static_cast<IHostSpeakerList*>(this);
    return nullptr;
}

} // namespace RefHost
} // namespace Halvorn

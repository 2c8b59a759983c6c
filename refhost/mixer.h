// The mixer of the reference host: parameters, parameter owners (channels, panners, slots,
// sends, channel strip modules), and "QUOR Mixer" itself.
#pragma once

#include "hostapi/hostautomation.h"
#include "hostapi/hostmixer.h"
#include "ledger.h"

#include <functional>
#include <string>
#include <vector>

namespace Halvorn {
namespace RefHost {

class ParamOwner;
class Slot;
class Channel;
class Presets;

// A parameter. Its value lives as a normalized number; getValue maps it onto minimum..maximum.
// Text parameters (routing, slot contents, colours) show and take what their owner says.
class Parameter : public HostObject,
                  public IHostParameter,
                  public IHostGainScale,
                  public IHostPresetList {
public:
    enum class Kind { Number, Volume, Text, Presets };

    Parameter(Ledger& ledger, std::string id, std::u16string title, Kind kind, int32 minimum,
              int32 maximum);

    SUPPORT_COUNTED_UNKNOWN
    int32 getMinimum() override { return minimum; }
    int32 getMaximum() override { return maximum; }
    int32 getIntValue() override;
    int32 getTag() override { return int32(tag); }
    tresult getValueText(char16* buffer, int32* size) override;
    tresult setValueText(const char16* text, bool notify) override;
    tresult setIntValue(int32 value, bool notify) override;
    float getValue() override;
    tresult setValue(float value, bool notify) override;
    float getNormalized() override { return float(normalized); }
    tresult setNormalized(float value, bool notify) override;
    float valueToDecibel(float value) override;
    float decibelToValue(float decibel) override;
    IHostPresets* getPresets() override;
    tresult refresh() override { return kResultOk; }

    std::string label() const override { return id; }
    std::u16string text() const;
    void setPlain(double value);

    std::string id;
    std::u16string title;
    Kind kind;
    int32 minimum;
    int32 maximum;
    uint32 tag = 0;
    double normalized = 0.0;
    // Where the fader's top end lies, for volume parameters.
    const double* maximumGain = nullptr;
    // The slot that an "effectType" parameter stands for.
    Slot* slot = nullptr;
    // For text parameters: the shown text, the integer reading, and the integer setter.
    std::function<std::u16string()> textOf;
    std::function<int32()> intOf;
    std::function<void(int32)> intSetter;
    IPtr<Presets> presets;
    // Every setter with notify true counts here.
    int32 notifications = 0;

protected:
    FUnknown* faceFor(const FUID& iid) override;
    void dispose() override;
};

class ParamOwner : public HostObject, public IHostParameterOwner, public IHostAutomationTarget {
public:
    ParamOwner(Ledger& ledger, const char* kind, std::string name, std::u16string title = {});

    SUPPORT_COUNTED_UNKNOWN
    const char8* getName() override { return name.c_str(); }
    const char16* getTitle() override { return title.c_str(); }
    int32 getParameterCount() override { return int32(params.size()); }
    uint32 getParameterTag(int32 index) override;
    const char16* getParameterTitle(uint32 tag) override;
    IHostParameter* findParameter(const char8* id) override;
    IHostParameter* getParameterByTag(uint32 tag) override;
    int32 getChildCount() override { return int32(children.size()); }
    IHostParameterOwner* getChild(int32 index) override;
    const char8* getPath() override;

    std::string label() const override { return name; }
    // The step of this object in a path below its parent.
    virtual std::string segment() const { return name; }
    std::string path() const;
    // The owner at a path relative to this one ("" is this one), or null.
    ParamOwner* resolve(const std::string& relative);

    Parameter* param(const std::string& id) const;
    Parameter* paramByTag(uint32 tag) const;
    // Adds a parameter; tag 0 takes the next free host tag (see takeTag).
    Parameter& addParameter(std::string id, std::u16string title, Parameter::Kind kind,
                            int32 minimum, int32 maximum, uint32 tag = 0);
    ParamOwner* child(const std::string& name) const;
    // Shares owner: adds a reference. Below a channel, the host parameters of owner's tree get
    // fresh tags of that channel, so a tag names one parameter across the whole channel.
    void addChild(ParamOwner* owner);
    // A host tag unused in this owner's channel; outside a channel, unused in this owner.
    virtual uint32 takeTag();
    // The highest host tag in this tree, 0 for none.
    uint32 highestHostTag() const;
    // New tags for the host parameters of this tree (plug-ins' own parameters keep theirs).
    void retag();

    std::string name;
    std::u16string title;
    ParamOwner* parent = nullptr;
    std::vector<IPtr<Parameter>> params;
    std::vector<IPtr<ParamOwner>> children;

protected:
    FUnknown* faceFor(const FUID& iid) override;
    void dispose() override;

private:
    std::string pathText_;
};

class Plugin;

// An insert slot, an instrument slot or a channel strip module slot; its first child is the
// plug-in it holds.
class Slot : public ParamOwner {
public:
    Slot(Ledger& ledger, std::string name);

    Plugin* plugin() const;
    void setPlugin(Plugin* plugin);
};

// A send slot.
class Send : public ParamOwner, public IHostOutputRouting {
public:
    Send(Ledger& ledger, std::string name, const double* maximumGain);

    SUPPORT_COUNTED_UNKNOWN
    bool canRouteTo(IHostParameterOwner* destination) override;
    tresult setDestination(IHostParameterOwner* destination) override;

    Channel* destination = nullptr;

protected:
    FUnknown* faceFor(const FUID& iid) override;
};

// A mixer channel. Its kind is its name: "InputChannel", "OutputChannel", "FxChannel",
// "GroupChannel", "AudioChannel", "InstrumentChannel". Its path step is its id. Channels route
// to output and group channels only, without loops; an output channel routes nowhere.
class Channel : public ParamOwner,
                public IHostChannelModules,
                public IHostChannelBus,
                public IHostOutputRouting {
public:
    // A channel made in the mixer has all its send slots, empty; a session lists its own.
    enum { kInsertSlots = 8, kSendSlots = 8 };

    Channel(Ledger& ledger, std::string kindName, std::string id, const double* maximumGain);

    SUPPORT_COUNTED_UNKNOWN
    IHostParameterOwner* findModule(const char8* name) override;
    tresult getArrangement(IHostSpeakerList* list) override;
    bool canRouteTo(IHostParameterOwner* destination) override;
    tresult setDestination(IHostParameterOwner* destination) override;

    std::string label() const override { return id; }
    std::string segment() const override { return id; }
    Slot* insert(int32 index) const;
    Slot* instrumentSlot() const;
    ParamOwner* panner() const { return child("Panner"); }
    ParamOwner* sends() const { return child("Sends"); }
    Send* addSend();
    void addModule(ParamOwner* module);
    bool routesTo(const Channel* other) const;
    // Tags run across the channel, its panner, sends, slots, modules and plug-ins.
    uint32 takeTag() override { return nextTag_++; }

    std::string id;
    uint64 speakers = 3;
    uint32 color = 0;
    Channel* destination = nullptr;
    std::vector<IPtr<ParamOwner>> modules;

protected:
    FUnknown* faceFor(const FUID& iid) override;
    void dispose() override;

private:
    const double* maximumGain_;
    uint32 nextTag_ = 1;
};

// "QUOR Mixer": the mixer settings and the list "Channels".
class Mixer : public ParamOwner, public IHostMixerSettings {
public:
    explicit Mixer(Ledger& ledger);

    SUPPORT_COUNTED_UNKNOWN
    tresult getMaximumGain(double* gain) override;

    ParamOwner& channelList() const { return *children.front(); }
    Channel* channel(const std::string& id) const;
    void attach(Channel* channel);
    bool holds(const Channel* channel) const;

    double maximumGain = 2.0;

protected:
    FUnknown* faceFor(const FUID& iid) override;
};

// A new object per request: the speakers of a bus as bits of a mask.
class SpeakerList : public HostObject, public IHostSpeakerList {
public:
    explicit SpeakerList(Ledger& ledger) : HostObject(ledger, "speaker list") {}

    SUPPORT_COUNTED_UNKNOWN
    int32 getCount() override { return int32(speakers.size()); }
    uint64 getSpeaker(int32 index) override;

    std::vector<uint64> speakers;

protected:
    FUnknown* faceFor(const FUID& iid) override;
};

} // namespace RefHost
} // namespace Halvorn

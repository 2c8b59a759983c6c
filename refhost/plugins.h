// Plug-ins of the reference host: the catalogue of installed classes, plug-in objects with
// their controllers and saveable state, and the preset lists of built-in instruments.
#pragma once

#include "hostapi/hostplugin.h"
#include "mixer.h"

#include <deque>
#include <string>
#include <vector>

namespace Halvorn {
namespace RefHost {

// A plug-in parameter and how its controller shows a value: the plain value runs from minimum
// to maximum in unit ("dB", "ms", "%", "Hz", ":1", or none), or the value picks one of choices.
struct PluginParameterInfo {
    uint32 id = 0;
    std::u16string title;
    double defaultValue = 0.0;
    std::string unit;
    double minimum = 0.0;
    double maximum = 1.0;
    // The bottom of a decibel range reads "-oo", minus infinity.
    bool infiniteBottom = false;
    std::vector<std::string> choices;
};

// The display text of a normalized value, as the controller gives it.
std::string displayText(const PluginParameterInfo& info, double normalized);

struct PresetInfo {
    std::u16string fileName;
    int32 index = 0;
};

// An installed plug-in class.
struct PluginClass {
    FUID cid{};
    std::string name;
    bool instrument = false;
    std::vector<PluginParameterInfo> parameters;
    std::vector<PresetInfo> presets;
};

// The installed classes; entries never move once added.
class Catalogue {
public:
    const PluginClass* find(const FUID& cid) const;
    const PluginClass* findByName(const std::string& name) const;
    const PluginClass& add(PluginClass entry);
    const std::deque<PluginClass>& classes() const { return classes_; }

private:
    std::deque<PluginClass> classes_;
};

class PresetEntry : public HostObject, public IHostPresetEntry {
public:
    PresetEntry(Ledger& ledger, PresetInfo info) : HostObject(ledger, "preset"), info(info) {}

    SUPPORT_COUNTED_UNKNOWN
    const char16* getFileName() override { return info.fileName.c_str(); }
    int32 getIndex() override { return info.index; }

    PresetInfo info;

protected:
    FUnknown* faceFor(const FUID& iid) override;
};

class Presets : public HostObject, public IHostPresets {
public:
    explicit Presets(Ledger& ledger) : HostObject(ledger, "preset list") {}

    SUPPORT_COUNTED_UNKNOWN
    int32 getPresetCount() override { return int32(entries.size()); }
    IHostPresetEntry* getPreset(int32 index) override;

    std::vector<IPtr<PresetEntry>> entries;

protected:
    FUnknown* faceFor(const FUID& iid) override;
    void dispose() override { entries.clear(); }
};

class Plugin;

// The plug-in's controller: it reads and writes the values of the plug-in's own parameters.
class Controller : public HostObject, public IQuorController {
public:
    Controller(Ledger& ledger, Plugin& plugin)
        : HostObject(ledger, "controller"), plugin_(plugin) {}

    SUPPORT_COUNTED_UNKNOWN
    int32 getParameterCount() override;
    tresult getParameterInfo(int32 index, QuorParameterInfo* info) override;
    tresult valueToText(uint32 id, double normalized, QuorString128 text) override;
    tresult valueFromText(uint32 id, const char16* text, double* normalized) override;
    double getNormalized(uint32 id) override;
    tresult setNormalized(uint32 id, double normalized) override;

protected:
    FUnknown* faceFor(const FUID& iid) override;

private:
    Plugin& plugin_;
};

// A plug-in in a slot. Its own parameters carry the host tags id + 4201 and are found by their
// id in decimal; "on" is a host parameter of the plug-in object.
class Plugin : public ParamOwner, public IHostPluginAccess, public IHostPluginState {
public:
    static constexpr const char* kPresetParameter = "lumenBinPresetSyncronous";

    Plugin(Ledger& ledger, const PluginClass& type);

    SUPPORT_COUNTED_UNKNOWN
    IQuorController* getController() override { return controller_.get(); }
    tresult saveState(IBStream* stream) override;
    tresult loadState(IBStream* stream, int32 flags) override;

    std::string label() const override { return type.name; }
    // The parameter of the plug-in's own id, or null.
    Parameter* own(uint32 id) const;
    // The class's record of the plug-in's own parameter, or null.
    const PluginParameterInfo* info(uint32 id) const;
    // The state in the host's preset file format: a header line, the class, then "id=value".
    std::string state() const;
    [[nodiscard]] bool restore(const std::string& state);

    const PluginClass& type;

protected:
    FUnknown* faceFor(const FUID& iid) override;
    void dispose() override;

private:
    IPtr<Controller> controller_;
};

} // namespace RefHost
} // namespace Halvorn

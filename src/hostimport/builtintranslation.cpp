// The four built-in device types onto the host's channel strip modules, or onto the plug-ins
// that stand in for them in a module slot.
#include "hostimport/devicetranslation.h"
#include "hostimport/importutilities.h"

#include <cstdio>
#include <vector>

namespace Halvorn {
namespace CvHostUtilities {

namespace {
struct BuiltinType {
    uint32 type;
    const char8* module;
    const char8* slotModule;
    const char8* fallbackClass;
};

constexpr BuiltinType kCompressor{kDeviceCompressor, "Channel Compressor",
                                  "Channel Compressor Slot", "E022B5972163463CBA2036708D5AF5A5"};
constexpr BuiltinType kLimiter{kDeviceLimiter, "Channel Limiter", "Channel Limiter Slot",
                               "76005C045DD848B993D3F39249C470C9"};
constexpr BuiltinType kGate{kDeviceNoiseGate, "Channel Gate", "Channel Gate Slot",
                            "C3B0615A2A444991B423673DEE2379A7"};
constexpr BuiltinType kEqualizer{kDeviceEqualizer, "Channel EQ", "Channel EQ Slot",
                                 "297BA567D83144E1AE921DEF07B41156"};

struct Row {
    const char8* model;
    const char8* host;
};

constexpr Row kCompressorTextRows[] = {
    {"MPParamCompressorThreshold", "Comp:Threshold"},
    {"MPParamCompressorAttack", "Comp:Attack"},
    {"MPParamCompressorRelease", "Comp:Release"},
    {"MPParamCompressorInputGain", "Comp:InputGain"},
    {"MPParamCompressorOutputGain", "Comp:OutputGain"},
};
constexpr Row kCompressorNormalizedRows[] = {
    {"MPParamCompressorRatio", "Comp:Ratio"},
    {"MPParamCompressorAutoMakeup", "Comp:AutoMakeUp"},
};
// The limiter's attack has no counterpart in the host's limiter.
constexpr Row kLimiterRows[] = {
    {"MPParamLimiterThreshold", "Threshold"},
    {"MPParamLimiterRelease", "Release"},
    {"MPParamLimiterInputGain", "Input"},
    {"MPParamLimiterOutputGain", "Output"},
};
constexpr Row kGateRows[] = {
    {"MPParamNoiseGateThreshold", "Threshold"}, {"MPParamNoiseGateRatio", "Ratio"},
    {"MPParamNoiseGateAttack", "Attack"},       {"MPParamNoiseGateRelease", "Release"},
    {"MPParamNoiseGateRange", "Range"},
};

enum class Target { kFailed, kStateLoaded, kReady };

IMediaParameter* modelParameter(IMediaParameterContainer* parameters, const char8* name) {
    return parameters && parameters->hasParameterName(name) ? parameters->findParameterByName(name)
                                                            : nullptr;
}

// Finds or loads what takes the device's settings. A state file goes only into the device's own
// class, never into the stand-in, and then the model's parameters aren't looked at.
Target prepareTarget(IHostContext* host, FUnknown* object, IMediaDevice* device,
                     const BuiltinType& type, IHostParameterOwner*& target) {
    if (!device || device->getDeviceRole() != kRoleAudioFX || device->getDeviceType() != type.type)
        return Target::kFailed;
    IPtr<IHostChannelModules> modules =
        queryInterface<IHostChannelModules>(getMixerChannel(object));
    if (!modules)
        return Target::kFailed;
    target = modules->findModule(type.module);
    if (target)
        return Target::kReady;
    IHostParameterOwner* slot = modules->findModule(type.slotModule);
    if (!slot)
        return Target::kFailed;
    bool ownClass = false;
    const char8* deviceId = device->getDeviceId();
    if (deviceId && *deviceId) {
        FUID classId{};
        (void)parseClassId(classId, deviceId);
        ownClass = loadPluginClass(host, slot, "effectType", classId);
    }
    if (!ownClass) {
        FUID fallback{};
        (void)parseClassId(fallback, type.fallbackClass);
        if (!loadPluginClass(host, slot, "effectType", fallback))
            return Target::kFailed;
    }
    target = slot->getChild(0);
    if (!target)
        target = modules->findModule(type.module);
    if (ownClass && loadStateFile(target, device->getStatePath()))
        return Target::kStateLoaded;
    return target ? Target::kReady : Target::kFailed;
}

// Runs the common frame; rows applies the type's own rows to the target.
template <class Rows>
bool translate(IHostContext* host, FUnknown* object, IMediaDevice* device, const BuiltinType& type,
               Rows rows) {
    IHostParameterOwner* target = nullptr;
    Target prepared = prepareTarget(host, object, device, type, target);
    if (prepared != Target::kReady)
        return prepared == Target::kStateLoaded;
    setParameterValue(target, "on", device->isEnabled() ? 1.0f : 0.0f);
    rows(target, device->getParameters());
    return true;
}

template <size_t N>
void applyTitleRows(IHostParameterOwner* target, IMediaParameterContainer* parameters,
                    const Row (&rows)[N]) {
    for (const Row& row : rows)
        if (IMediaParameter* parameter = modelParameter(parameters, row.model))
            setParameterByTitle(target, String(row.host), parameter);
}

String bandTitle(int band, const char8* field) {
    char8 text[32];
    std::snprintf(text, sizeof text, "EQ %d %s", band, field);
    return String(text);
}

const char8* typeEntry(uint32 bandType) {
    switch (bandType) {
    case kBandHighPass:
        return "High Pass II";
    case kBandLowShelf:
        return "Low Shelf II";
    case kBandLowPass:
        return "Low Pass II";
    case kBandHighShelf:
        return "High Shelf II";
    default:
        return "Parametric I";
    }
}

void setBandRow(IHostParameterOwner* target, IMediaParameterContainer* parameters, int band,
                const char8* field, const char8* modelName) {
    if (IMediaParameter* parameter = modelParameter(parameters, modelName))
        setParameterByTitle(target, bandTitle(band, field), parameter);
}

// Bands 1 and 4 have a type; a bell there names its type after the gain, a shape before it.
void placeBand(IHostParameterOwner* target, IMediaEqualizerBand* band, int hostBand) {
    IMediaParameterContainer* parameters = band->getParameters();
    bool bell = band->getBandType() == kBandBell;
    bool typed = hostBand == 1 || hostBand == 4;
    setBandRow(target, parameters, hostBand, "Freq", "MPParamEqualizerBandFrequency");
    if (typed && !bell)
        selectListEntry(target, bandTitle(hostBand, "Type"),
                        String(typeEntry(band->getBandType())));
    setBandRow(target, parameters, hostBand, "Gain", "MPParamEqualizerBandGain");
    if (typed && bell)
        selectListEntry(target, bandTitle(hostBand, "Type"), String(typeEntry(kBandBell)));
    setBandRow(target, parameters, hostBand, "Q", "MPParamEqualizerBandQ");
    setBandRow(target, parameters, hostBand, "On", "MPParamEqualizerBandEnabled");
}

// Takes the first band of either type out of the list and places it on hostBand.
void placeFirstOf(IHostParameterOwner* target, std::vector<IMediaEqualizerBand*>& bands,
                  uint32 typeA, uint32 typeB, int hostBand, bool (&used)[5]) {
    for (auto at = bands.begin(); at != bands.end(); ++at)
        if ((*at)->getBandType() == typeA || (*at)->getBandType() == typeB) {
            placeBand(target, *at, hostBand);
            used[hostBand] = true;
            bands.erase(at);
            return;
        }
}

void applyBands(IHostParameterOwner* target, IMediaEqualizer* equalizer) {
    std::vector<IMediaEqualizerBand*> bands;
    for (uint32 index = 0, count = equalizer->getBandCount(); index < count; ++index)
        if (IMediaEqualizerBand* band = equalizer->getBand(index))
            bands.push_back(band);
    bool used[5] = {};
    placeFirstOf(target, bands, kBandLowShelf, kBandHighPass, 1, used);
    placeFirstOf(target, bands, kBandHighShelf, kBandLowPass, 4, used);
    for (IMediaEqualizerBand* band : bands) {
        if (band->getBandType() != kBandBell)
            continue;
        int free = 1;
        while (free <= 4 && used[free])
            ++free;
        if (free > 4)
            return;
        placeBand(target, band, free);
        used[free] = true;
    }
}
} // namespace

bool translateCompressor(IHostContext* host, FUnknown* object, IMediaDevice* device) {
    return translate(
        host, object, device, kCompressor,
        [](IHostParameterOwner* target, IMediaParameterContainer* parameters) {
            for (const Row& row : kCompressorTextRows)
                if (IMediaParameter* parameter = modelParameter(parameters, row.model))
                    setParameterByText(target, row.host, parameterText(parameter, false));
            for (const Row& row : kCompressorNormalizedRows) {
                IMediaParameter* parameter = modelParameter(parameters, row.model);
                IPtr<IHostParameter> hostParameter =
                    parameter ? IPtr<IHostParameter>::adopt(target->findParameter(row.host))
                              : nullptr;
                if (hostParameter)
                    hostParameter->setNormalized(float(parameter->getNormalizedValue()), true);
            }
        });
}

bool translateLimiter(IHostContext* host, FUnknown* object, IMediaDevice* device) {
    return translate(host, object, device, kLimiter,
                     [](IHostParameterOwner* target, IMediaParameterContainer* parameters) {
                         applyTitleRows(target, parameters, kLimiterRows);
                     });
}

bool translateGate(IHostContext* host, FUnknown* object, IMediaDevice* device) {
    return translate(host, object, device, kGate,
                     [](IHostParameterOwner* target, IMediaParameterContainer* parameters) {
                         applyTitleRows(target, parameters, kGateRows);
                     });
}

bool translateEqualizer(IHostContext* host, FUnknown* object, IMediaDevice* device) {
    IPtr<IMediaEqualizer> equalizer = queryInterface<IMediaEqualizer>(device);
    if (!equalizer)
        return false;
    return translate(host, object, device, kEqualizer,
                     [&equalizer](IHostParameterOwner* target, IMediaParameterContainer*) {
                         applyBands(target, equalizer.get());
                     });
}

} // namespace CvHostUtilities
} // namespace Halvorn

// CvHostProjectExporter: the channel strip modules as devices with neutral parameters, read
// from the titles and display texts of the module's own controller.
#include "hostexport/cvhostprojectexporter.h"

#include "hostexport/cvexportparameter.h"


namespace Halvorn {

using namespace Quor;
using namespace CvHostUtilities;

namespace {

// Where the host's displays bottom out: "-oo" is minus infinity.
constexpr double kMinusInfinity = -144.0;

} // namespace

struct CvNeutralRow {
    const char8* title;
    const char8* name;
    uint32 unit;
};

namespace {

using NeutralRow = CvNeutralRow;

const NeutralRow kCompressorRows[] = {
    {"Threshold", kParamCompressorThreshold, kUnitDecibel},
    {"Attack", kParamCompressorAttack, kUnitSeconds},
    {"Attack Time", kParamCompressorAttack, kUnitSeconds},
    {"Release", kParamCompressorRelease, kUnitSeconds},
    {"Release Time", kParamCompressorRelease, kUnitSeconds},
    {"Input Gain", kParamCompressorInputGain, kUnitDecibel},
    {"Output Gain", kParamCompressorOutputGain, kUnitDecibel},
    {"Ratio", kParamCompressorRatio, kUnitPercent},
};
const NeutralRow kLimiterRows[] = {
    {"Threshold", kParamLimiterThreshold, kUnitDecibel},
    {"Release", kParamLimiterRelease, kUnitSeconds},
    {"Input", kParamLimiterInputGain, kUnitDecibel},
    {"Output", kParamLimiterOutputGain, kUnitDecibel},
};
const NeutralRow kNoiseGateRows[] = {
    {"Threshold", kParamNoiseGateThreshold, kUnitDecibel},
    {"Ratio", kParamNoiseGateRatio, kUnitPercent},
    {"Attack", kParamNoiseGateAttack, kUnitSeconds},
    {"Release", kParamNoiseGateRelease, kUnitSeconds},
    {"Range", kParamNoiseGateRange, kUnitDecibel},
};
const NeutralRow kBandRows[] = {
    {"EQ %d Freq", kParamEqualizerBandFrequency, kUnitHertz},
    {"EQ %d Gain", kParamEqualizerBandGain, kUnitDecibel},
    {"EQ %d Q", kParamEqualizerBandQ, kUnitLinear},
    {"EQ %d On", kParamEqualizerBandEnabled, kUnitNormalized},
};

IQuorController* controllerOf(IHostParameterOwner* plugin) {
    auto access = ::Halvorn::queryInterface<IHostPluginAccess>(plugin);
    return access ? access->getController() : nullptr;
}

// The first parameter of the controller with this title.
bool findInfo(IQuorController& controller, const String& title, QuorParameterInfo& info) {
    int32 count = controller.getParameterCount();
    for (int32 index = 0; index < count; ++index) {
        QuorParameterInfo candidate{};
        if (controller.getParameterInfo(index, &candidate) != kResultOk)
            continue;
        candidate.title[127] = 0;
        if (title == String(candidate.title)) {
            info = candidate;
            return true;
        }
    }
    return false;
}

String displayText(IQuorController& controller, uint32 id, double normalized) {
    QuorString128 text = {};
    controller.valueToText(id, normalized, text);
    text[127] = 0;
    return String(text);
}

uint32 bandTypeOf(const String& text) {
    static const struct {
        const char8* marker;
        uint32 type;
    } kTypes[] = {{"Parametric", kBandBell},
                  {"High Shelf", kBandHighShelf},
                  {"High Pass", kBandHighPass},
                  {"Low Shelf", kBandLowShelf},
                  {"Low Pass", kBandLowPass}};
    for (const auto& type : kTypes)
        if (text.findFirst(String(type.marker)) >= 0)
            return type.type;
    return kBandUnknown;
}

String bandTitle(const char8* format, int32 band) {
    String title;
    title.printf(format, band);
    return title;
}

} // namespace

CvParameter* CvHostProjectExporter::exportPluginParameter(const String& id,
                                                          IHostParameterOwner* plugin,
                                                          const String& title, const String& name,
                                                          uint32 unit) {
    IQuorController* controller = controllerOf(plugin);
    QuorParameterInfo info{};
    if (!controller || !findInfo(*controller, title, info))
        return nullptr;
    double normalized = controller->getNormalized(info.id);
    String minimumText = displayText(*controller, info.id, 0.0);
    String maximumText = displayText(*controller, info.id, 1.0);
    String valueText = displayText(*controller, info.id, normalized);
    double minimum = 0.0, maximum = 1.0, value = normalized;
    String infinity("-oo");
    if (minimumText == infinity)
        minimum = kMinusInfinity;
    else
        (void)readNumber(minimumText, minimum);
    (void)readNumber(maximumText, maximum);
    if (valueText == infinity)
        value = kMinusInfinity;
    else
        (void)readNumber(valueText, value);
    if (unit == kUnitPercent) {
        minimum = 0.0;
        maximum = 100.0;
        value = normalized * 100.0;
    } else if (unit == kUnitSeconds) {
        // The host shows times in milliseconds.
        minimum /= 1000.0;
        maximum /= 1000.0;
        value /= 1000.0;
    }
    auto parameter = newObject<CvParameter>(unit, id);
    parameter->setParameterId(info.id);
    parameter->setName(name);
    parameter->setMin(minimum);
    parameter->setMax(maximum);
    parameter->setValue(value);
    return parameter.release();
}

CvDevice* CvHostProjectExporter::exportModule(IHostParameterOwner* slot,
                                              IHostParameterOwner* module, uint32 type) {
    auto device = IPtr<CvDevice>::adopt(exportDevice(slot, module, type, kRoleAudioFX));
    if (!device)
        return nullptr;
    switch (type) {
    case kDeviceCompressor:
        addNeutralParameters(*device, module, kCompressorRows, 0);
        addAutoMakeUp(*device, module);
        break;
    case kDeviceLimiter:
        addNeutralParameters(*device, module, kLimiterRows, 0);
        break;
    case kDeviceNoiseGate:
        addNeutralParameters(*device, module, kNoiseGateRows, 0);
        break;
    default:
        if (!device->isTypeOf(CvEqualizer::kClassName))
            return nullptr;
        addBands(static_cast<CvEqualizer&>(*device), module);
        break;
    }
    return device.release();
}

template <size_t N>
void CvHostProjectExporter::addNeutralParameters(CvParameterContainer& target,
                                                 IHostParameterOwner* module,
                                                 const CvNeutralRow (&rows)[N], int32 band) {
    for (const CvNeutralRow& row : rows) {
        // The id goes even when the module lacks the setting: ids of a project have gaps.
        String id = newId();
        String title = band > 0 ? bandTitle(row.title, band) : String(row.title);
        auto parameter = IPtr<CvParameter>::adopt(
            exportPluginParameter(id, module, title, String(row.name), row.unit));
        if (!parameter)
            continue;
        if (row.unit == kUnitNormalized)
            parameter->setStepCount(2);
        target.addParameter(parameter.get());
    }
}

void CvHostProjectExporter::addAutoMakeUp(CvDevice& device, IHostParameterOwner* module) {
    String id = newId();
    auto makeUp = findParameter(module, "Comp:AutoMakeUp");
    if (!makeUp)
        return;
    if (auto parameter = makeHostParameter(kUnitNormalized, id, *makeUp, kParamCompressorAutoMakeup,
                                           makeUp->getValue(), 2))
        device.addParameter(parameter.get());
}

void CvHostProjectExporter::addBands(CvEqualizer& equalizer, IHostParameterOwner* module) {
    IQuorController* controller = controllerOf(module);
    for (int32 band = 1; band <= 4; ++band) {
        QuorParameterInfo info{};
        uint32 type = kBandUnknown;
        if (controller && findInfo(*controller, bandTitle("EQ %d Type", band), info))
            type =
                bandTypeOf(displayText(*controller, info.id, controller->getNormalized(info.id)));
        // Bands of a type the format can't name leave no trace, not even an id.
        if (type == kBandUnknown)
            continue;
        auto made = newObject<CvEqualizerBand>(type, uint32(band), newId());
        equalizer.addBand(made.get());
        addNeutralParameters(*made, module, kBandRows, band);
    }
}

void CvHostProjectExporter::exportChannelStrip(IHostParameterOwner* object, CvChannel& channel) {
    auto modules = ::Halvorn::queryInterface<IHostChannelModules>(object);
    if (!modules)
        return;
    static const struct {
        const char8* module;
        const char8* slot;
        uint32 type;
    } kModules[] = {{"Channel Compressor", "Channel Compressor Slot", kDeviceCompressor},
                    {"Channel Limiter", "Channel Limiter Slot", kDeviceLimiter},
                    {"Channel Gate", "Channel Gate Slot", kDeviceNoiseGate},
                    {"Channel EQ", "Channel EQ Slot", kDeviceEqualizer}};
    for (const auto& entry : kModules) {
        IHostParameterOwner* module = modules->findModule(entry.module);
        IHostParameterOwner* slot = modules->findModule(entry.slot);
        if (!module || !slot)
            continue;
        auto device = IPtr<CvDevice>::adopt(exportModule(slot, module, entry.type));
        if (device)
            channel.addDevice(device.get());
    }
}

} // namespace Halvorn

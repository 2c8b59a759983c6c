// Plug-ins into insert slots, the instrument of a track, class ids, parameter texts and presets.
#include "hostimport/devicetranslation.h"
#include "documents/cvvaluerules.h"
#include "foundation/ffilesystem.h"
#include "hostimport/importutilities.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace Halvorn {
namespace CvHostUtilities {

namespace {
constexpr uint32 kTagOffset = IHostParameter::kPluginTagOffset;

bool hexValue(const char8* digits, int count, uint64& value) {
    value = 0;
    for (int i = 0; i < count; ++i) {
        char8 c = digits[i];
        int nibble = c >= '0' && c <= '9'   ? c - '0'
                     : c >= 'a' && c <= 'f' ? c - 'a' + 10
                     : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                            : -1;
        if (nibble < 0)
            return false;
        value = value << 4 | uint64(nibble);
    }
    return true;
}

IHostParameterOwner* firstChild(IHostParameterOwner* owner) {
    return owner ? owner->getChild(0) : nullptr;
}

IQuorController* controllerOf(IHostParameterOwner* plugin) {
    IPtr<IHostPluginAccess> access = queryInterface<IHostPluginAccess>(plugin);
    return access ? access->getController() : nullptr;
}

// The controller and the plug-in's own number of the parameter with this title.
bool findTitled(IHostParameterOwner* plugin, const String& title, IQuorController*& controller,
                uint32& number) {
    controller = controllerOf(plugin);
    if (!controller)
        return false;
    for (int32 index = 0, count = controller->getParameterCount(); index < count; ++index) {
        QuorParameterInfo info{};
        if (controller->getParameterInfo(index, &info) != kResultOk)
            continue;
        info.title[127] = 0;
        if (String(info.title) == title) {
            number = info.id;
            return true;
        }
    }
    return false;
}

void applyPluginParameters(IHostParameterOwner* plugin, IMediaDevice* device) {
    IQuorController* controller = controllerOf(plugin);
    IPtr<IMediaParameterContainer> container = queryInterface<IMediaParameterContainer>(device);
    if (!controller || !container)
        return;
    for (uint32 index = 0, count = container->getParameterCount(); index < count; ++index)
        if (IMediaParameter* parameter = container->getParameter(index))
            controller->setNormalized(parameter->getParameterId(), parameter->getNormalizedValue());
}

bool isBuiltinType(uint32 type) { return type >= kDeviceCompressor && type <= kDeviceEqualizer; }

bool translateBuiltin(IHostContext* host, FUnknown* object, IMediaDevice* device) {
    switch (device->getDeviceType()) {
    case kDeviceCompressor:
        return translateCompressor(host, object, device);
    case kDeviceLimiter:
        return translateLimiter(host, object, device);
    case kDeviceNoiseGate:
        return translateGate(host, object, device);
    default:
        return translateEqualizer(host, object, device);
    }
}

FUID classIdOf(IMediaDevice* device) {
    FUID classId{};
    (void)parseClassId(classId, device->getDeviceId());
    return classId;
}
} // namespace

bool loadStateFile(IHostParameterOwner* plugin, const char16* statePath) {
    IPtr<IHostPluginState> state = queryInterface<IHostPluginState>(plugin);
    if (!state || !statePath || !*statePath)
        return false;
    FStream* stream = gFNFileSystem->openStream(FUrl(String(statePath), false), FStream::kRead);
    if (!stream)
        return false;
    state->loadState(stream, 0);
    gFNFileSystem->closeStream(stream);
    return true;
}

bool parseClassId(FUID& classId, const char8* text) {
    if (!text || std::strlen(text) != 32)
        return false;
    uint64 first = 0, second = 0, third = 0;
    uint64 tail[8] = {};
    if (!hexValue(text, 8, first) || !hexValue(text + 8, 4, second) ||
        !hexValue(text + 12, 4, third))
        return false;
    for (int i = 0; i < 8; ++i)
        if (!hexValue(text + 16 + 2 * i, 2, tail[i]))
            return false;
    uint64 last = 0;
    for (int i = 2; i < 8; ++i)
        last = last << 8 | tail[i];
    classId = FUID::make(uint32(first), uint16(second), uint16(third),
                         uint16(tail[0] << 8 | tail[1]), last);
    return true;
}

bool loadPluginClass(IHostContext* host, IHostParameterOwner* owner, const char8* parameterId,
                     const FUID& classId) {
    IPtr<IHostParameter> parameter =
        owner ? IPtr<IHostParameter>::adopt(owner->findParameter(parameterId)) : nullptr;
    IPtr<IHostProjectTools> tools =
        parameter ? hostService<IHostProjectTools>(host) : IPtr<IHostProjectTools>();
    return tools && tools->setPluginClass(parameter.get(), classId) == kResultOk;
}

bool importInserts(IHostContext* host, FUnknown* object, IMediaChannel* channel,
                   ICvProjectDeviceListener* listener) {
    if (!host || !object || !channel)
        return false;
    IHostParameterOwner* mixer = getMixerChannel(object);
    bool translated[kDeviceEqualizer - kDeviceCompressor + 1] = {};
    int32 slot = 0;
    for (uint32 index = 0, count = channel->getDeviceCount(); index < count; ++index) {
        IMediaDevice* device = channel->getDevice(index);
        IPtr<IMediaObject> identity = queryInterface<IMediaObject>(device);
        if (!device || device->getDeviceRole() != kRoleAudioFX || !identity)
            continue;
        uint32 type = device->getDeviceType();
        if (isBuiltinType(type)) {
            bool& done = translated[type - kDeviceCompressor];
            if (!done)
                done = translateBuiltin(host, object, device);
            continue;
        }
        char8 slotParameter[48];
        std::snprintf(slotParameter, sizeof slotParameter, "inserts:slot%d:effectType", slot + 1);
        // A plug-in that isn't installed leaves no gap: the next one takes this slot.
        if (!mixer || !loadPluginClass(host, mixer, slotParameter, classIdOf(device)))
            continue;
        IHostParameterOwner* inserts = findChild(mixer, "Inserts");
        IHostParameterOwner* plugin = firstChild(inserts ? inserts->getChild(slot) : nullptr);
        applyPluginParameters(plugin, device);
        loadStateFile(plugin, device->getStatePath());
        if (plugin)
            setParameterValue(plugin, "on", device->isEnabled() ? 1.0f : 0.0f);
        if (listener)
            listener->deviceImported(String(identity->getId()), plugin);
        ++slot;
    }
    return true;
}

bool importTrackInserts(IHostContext* host, FUnknown* object, IMediaTrack* model,
                        ICvProjectDeviceListener* listener) {
    IMediaChannel* channel = model ? model->getChannel() : nullptr;
    return channel && importInserts(host, object, channel, listener);
}

bool importInstrument(IHostContext* host, FUnknown* object, IMediaTrack* model,
                      ICvProjectDeviceListener* listener) {
    IMediaChannel* channel = model ? model->getChannel() : nullptr;
    if (!host || !object || !channel)
        return false;
    IMediaDevice* device = nullptr;
    for (uint32 index = 0, count = channel->getDeviceCount(); index < count && !device; ++index) {
        IMediaDevice* candidate = channel->getDevice(index);
        if (candidate && candidate->getDeviceRole() == kRoleInstrument)
            device = candidate;
    }
    IPtr<IMediaObject> identity = queryInterface<IMediaObject>(device);
    if (!identity)
        return false;
    IHostParameterOwner* mixer = getMixerChannel(object);
    if (!loadPluginClass(host, mixer, "effectType", classIdOf(device)))
        return false;
    IHostParameterOwner* plugin = firstChild(findChild(mixer, "Slot"));
    loadStateFile(plugin, device->getStatePath());
    IPtr<IMediaBuiltinInstrument> builtin = queryInterface<IMediaBuiltinInstrument>(device);
    if (device->getDeviceType() == kDeviceBuiltinInstrument && plugin && builtin) {
        IPtr<IHostParameter> presets =
            IPtr<IHostParameter>::adopt(plugin->findParameter("lumenBinPresetSyncronous"));
        if (presets)
            selectPreset(presets.get(), String(builtin->getPresetName()));
    }
    if (listener && plugin)
        listener->deviceImported(String(identity->getId()), plugin);
    return true;
}

void selectPreset(IHostParameter* parameter, const String& name) {
    IPtr<IHostPresetList> list = queryInterface<IHostPresetList>(parameter);
    if (!list || name.isEmpty())
        return;
    list->refresh();
    IHostPresets* presets = list->getPresets();
    for (int32 index = 0, count = presets ? presets->getPresetCount() : 0; index < count; ++index) {
        IHostPresetEntry* entry = presets->getPreset(index);
        if (!entry || !entry->getFileName())
            continue;
        String fileName(entry->getFileName());
        fileName.replace(String(".quorpreset"), String(""));
        if (fileName == name) {
            parameter->setIntValue(entry->getIndex(), true);
            return;
        }
    }
}

String parameterText(IMediaParameter* parameter, bool titleWay) {
    double value = parameter->getValue();
    if (parameter->getUnit() == kUnitSeconds)
        value *= 1000.0;
    if (titleWay && parameter->getUnit() == kUnitSemitones)
        value = 440.0 * std::pow(2.0, -5.75) * std::pow(2.0, value / 12.0);
    // Whole numbers plain, others with at most six decimals, as the document writer puts them.
    return CvValueRules::formatReal(value, 6);
}

bool setParameterByText(IHostParameterOwner* plugin, const char8* id, const String& text) {
    IPtr<IHostParameter> parameter =
        plugin ? IPtr<IHostParameter>::adopt(plugin->findParameter(id)) : nullptr;
    if (!parameter)
        return false;
    IPtr<IHostPluginAccess> access = queryInterface<IHostPluginAccess>(plugin);
    IQuorController* controller = access ? access->getController() : nullptr;
    if (access && !controller)
        return false;
    if (controller) {
        uint32 number = uint32(parameter->getTag()) - kTagOffset;
        double value = 1.0;
        if (controller->valueFromText(number, text.text16(), &value) == kResultOk) {
            parameter->setNormalized(float(value), true);
            controller->setNormalized(number, value);
            return true;
        }
    }
    parameter->setValueText(text.text16(), true);
    return true;
}

bool setParameterByTitle(IHostParameterOwner* plugin, const String& title,
                         IMediaParameter* parameter) {
    IQuorController* controller = nullptr;
    uint32 number = 0;
    if (!parameter || !findTitled(plugin, title, controller, number))
        return false;
    double value = 1.0;
    if (controller->valueFromText(number, parameterText(parameter, true).text16(), &value) !=
        kResultOk)
        return false;
    IPtr<IHostParameter> target =
        IPtr<IHostParameter>::adopt(plugin->getParameterByTag(number + kTagOffset));
    if (!target)
        return false;
    target->setNormalized(float(value), true);
    controller->setNormalized(number, value);
    return true;
}

bool selectListEntry(IHostParameterOwner* plugin, const String& title, const String& entry) {
    IQuorController* controller = nullptr;
    uint32 number = 0;
    if (!findTitled(plugin, title, controller, number))
        return false;
    IPtr<IHostParameter> target =
        IPtr<IHostParameter>::adopt(plugin->getParameterByTag(number + kTagOffset));
    if (!target)
        return false;
    for (int32 value = target->getMinimum(), end = target->getMaximum(); value < end; ++value) {
        target->setIntValue(value, false);
        char16 text[1024] = {};
        int32 size = 1024;
        if (target->getValueText(text, &size) == kResultOk && size > 0) {
            text[1023] = 0;
            if (String(text) == entry) {
                target->setIntValue(value, true);
                return true;
            }
        }
    }
    return false;
}

} // namespace CvHostUtilities
} // namespace Halvorn

// CvHostProjectExporter: one mixer channel with its width, colour, routing, devices, fader,
// pan, mute and sends.
#include "hostexport/cvhostprojectexporter.h"

#include "hostexport/cvexportparameter.h"

#include <cmath>

namespace Halvorn {

using namespace Quor;
using namespace CvHostUtilities;

namespace {

// The channel counts of the speaker arrangements the format knows; any other mask is stereo.
uint32 audioChannelsOf(uint64 mask) {
    static const struct {
        uint64 mask;
        uint32 channels;
    } kLayouts[] = {{0x80000, 1},  {0x3, 2},      {0x7, 3},      {0x107, 4},    {0x37, 5},
                    {0x3F, 6},     {0x13F, 7},    {0xFF, 8},     {0x1FF, 9},    {0x2D03F, 10},
                    {0x2D83F, 11}, {0x2D63F, 12}, {0x2FE37, 13}, {0x2FE3F, 14}, {0x7303FFF7, 22}};
    for (const auto& layout : kLayouts)
        if (layout.mask == mask)
            return layout.channels;
    return 2;
}

uint32 busWidth(IHostContext* host, IHostChannelBus& bus) {
    auto list = hostService<IHostSpeakerList>(host);
    if (!list || bus.getArrangement(list.get()) != kResultOk)
        return 0;
    uint64 mask = 0;
    int32 count = list->getCount();
    for (int32 index = 0; index < count; ++index)
        mask += list->getSpeaker(index);
    return audioChannelsOf(mask);
}

} // namespace

CvChannel* CvHostProjectExporter::exportChannel(IHostParameterOwner* object, uint32 kind,
                                                uint32 role) {
    auto bus = ::Halvorn::queryInterface<IHostChannelBus>(object);
    if (!bus)
        return nullptr;
    uint32 width = busWidth(host_.get(), *bus);
    auto channel = newObject<CvChannel>(kind, role, newId());
    channel->setAudioChannels(width);
    registerContainer(channel.get(), object);
    channel->setName(String(object->getTitle()));
    if (auto colour = findParameter(object, "colorspec"))
        channel->setColor(colorFromArgb(uint32(colour->getIntValue())));
    String destination = findDestination(object);
    if (!destination.isEmpty())
        channel->setDestination(destination);

    if (IHostParameterOwner* slot = findChild(object, String("Slot"))) {
        auto device = IPtr<CvDevice>::adopt(
            exportDevice(slot, slot->getChild(0), kDeviceQuor3, kRoleInstrument));
        if (device)
            channel->addDevice(device.get());
    }
    if (IHostParameterOwner* inserts = findChild(object, String("Inserts"))) {
        int32 count = inserts->getChildCount();
        for (int32 index = 0; index < count; ++index) {
            IHostParameterOwner* slot = inserts->getChild(index);
            auto device = IPtr<CvDevice>::adopt(
                exportDevice(slot, slot ? slot->getChild(0) : nullptr, kDeviceQuor3, kRoleAudioFX));
            if (device)
                channel->addDevice(device.get());
        }
    }
    exportChannelStrip(object, *channel);
    exportChannelParameters(object, *channel);
    if (IHostParameterOwner* sends = findChild(object, String("Sends"))) {
        int32 count = sends->getChildCount();
        for (int32 index = 0; index < count; ++index)
            exportSend(sends->getChild(index), *channel);
    }
    return channel.release();
}

void CvHostProjectExporter::addGainParameter(IHostParameter* volume,
                                             CvParameterContainer& container) {
    auto scale = ::Halvorn::queryInterface<IHostGainScale>(volume);
    if (!scale)
        return;
    double decibel = scale->valueToDecibel(volume->getNormalized());
    double gain = std::pow(10.0, decibel / 20.0);
    auto parameter = makeHostParameter(kUnitLinear, newId(), *volume, kParamVolume, gain, 0);
    if (!parameter)
        return;
    parameter->setMax(2.0);
    container.addParameter(parameter.get());
}

void CvHostProjectExporter::exportChannelParameters(IHostParameterOwner* object,
                                                    CvChannel& channel) {
    if (auto mute = findParameter(object, "mute")) {
        if (auto parameter = makeHostParameter(kUnitNormalized, newId(), *mute, kParamMute,
                                               mute->getNormalized(), 2))
            channel.addParameter(parameter.get());
    }
    if (auto pan = findParameter(findChild(object, String("Panner")), "panX")) {
        if (auto parameter = makeHostParameter(kUnitNormalized, newId(), *pan, kParamPan,
                                               pan->getNormalized(), 0))
            channel.addParameter(parameter.get());
    }
    if (auto volume = findParameter(object, "volume"))
        addGainParameter(volume.get(), channel);
}

void CvHostProjectExporter::exportSend(IHostParameterOwner* slot, CvChannel& channel) {
    auto bus = findParameter(slot, "outputBus");
    if (!bus || bus->getIntValue() == 0)
        return;
    // Only what is registered so far can be found: a send to a later channel stays without a
    // destination.
    String title = parameterText(bus.get(), IHostUrl::kPathSize);
    CvProjectDevice* destination = title.isEmpty() ? nullptr : findDeviceByTitle(title);
    auto prePost = findParameter(slot, "prePost");
    uint32 type = prePost && prePost->getIntValue() < 0 ? 1 : 0;
    auto send = newObject<CvSend>(type, newId());
    if (destination)
        send->setDestination(destination->id);
    channel.addSend(send.get());
    registerContainer(send.get(), slot);
    if (auto volume = findParameter(slot, "volume"))
        addGainParameter(volume.get(), *send);
    if (auto on = findParameter(slot, "on")) {
        double value = on->getIntValue();
        send->setEnabled(value > 0.0);
        if (auto parameter =
                makeHostParameter(kUnitNormalized, newId(), *on, kParamEnable, value, 2))
            send->addParameter(parameter.get());
    }
}

} // namespace Halvorn

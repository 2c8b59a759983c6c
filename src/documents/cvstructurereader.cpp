// CvStructureReader: tracks with their channels, channels without a track, sends and devices.
#include "documents/cvstructurereader.h"

#include "documents/cvnodevalues.h"
#include "documents/cvschemanames.h"
#include "documents/cvtables.h"
#include "model/cvdevice.h"
#include "model/cvproject.h"

namespace Halvorn {

using namespace CvSchema;
using namespace CvNodeValues;

namespace {

String text(const char8* utf8) { return String(utf8); }

} // namespace

void CvStructureReader::read(const CvXmlElement& structure) {
    readTracks(structure, nullptr);
    for (const CvXmlElement& node : structure.getChildrenByName(Element::kChannel)) {
        IPtr<CvChannel> channel = readChannel(node);
        readDevices(node, channel.get());
        project->addChannel(channel.get());
    }
}

// The Track children of node go to parent, or to the project's top level without one. Recurs
// once per level of nesting; the reader's first stage bounds the depth of the tree.
void CvStructureReader::readTracks(const CvXmlElement& node, CvTrack* parent) {
    for (const CvXmlElement& child : node.getChildrenByName(Element::kTrack)) {
        IPtr<CvTrack> track = readTrack(child);
        if (!track)
            continue;
        readTrackChannel(child, track.get());
        if (parent)
            parent->addTrack(track.get());
        else
            project->addTrack(track.get());
        readTracks(child, track.get());
    }
}

IPtr<CvTrack> CvStructureReader::readTrack(const CvXmlElement& node) {
    String id = readId(node);
    uint32 contentType =
        contentTypeFromString(readText(node, Attribute::kContentType, text(Text::kUnknown)));
    if (contentType == 0)
        return {};
    IPtr<CvTrack> track = newObject<CvTrack>(contentType, id);
    track->setName(readName(node));
    CvColor color = readColor(node);
    if (color.isValid())
        track->setColor(color);
    track->setLoaded(readBoolean(node, Attribute::kLoaded, true));
    return track;
}

// A track's channel always takes the track's name, and its colour where it has none itself.
void CvStructureReader::readTrackChannel(const CvXmlElement& trackNode, CvTrack* track) {
    const CvXmlElement node = trackNode.findChild(Element::kChannel);
    if (!node)
        return;
    IPtr<CvChannel> channel = readChannel(node);
    channel->setName(track->getName());
    if (!channel->getNodeColor().isValid())
        channel->setColor(track->getNodeColor());
    readDevices(node, channel.get());
    track->setChannel(channel.get());
    project->addChannel(channel.get());
}

IPtr<CvChannel> CvStructureReader::readChannel(const CvXmlElement& node) {
    String id = readId(node);
    uint32 role = channelRoleFromString(readText(node, Attribute::kRole, text(Text::kUnknown)));
    IPtr<CvChannel> channel = newObject<CvChannel>(1, role, id);
    channel->setName(readName(node));

    // Every channel that is read has a solo parameter, with or without the attribute.
    IPtr<CvParameter> solo = newObject<CvParameter>(kUnitNormalized, text("0"));
    solo->setName(text(kParamSolo));
    solo->setMin(0.0);
    solo->setMax(1.0);
    solo->setValue(readBoolean(node, Attribute::kSolo, false) ? 1.0 : 0.0);
    channel->addParameter(solo.get());

    readLabelledParameter(node, channel.get(), kChannelVolume, false);
    readLabelledParameter(node, channel.get(), kChannelPan, false);
    readLabelledParameter(node, channel.get(), kChannelMute, false);

    CvColor color = readColor(node);
    if (color.isValid())
        channel->setColor(color);
    channel->setAudioChannels(static_cast<uint32>(readInteger(node, Attribute::kAudioChannels, 1)));
    String destination = readText(node, Attribute::kDestination, String());
    if (!destination.isEmpty())
        channel->setDestination(destination);
    readSends(node, channel.get());
    return channel;
}

// Sends are found at any depth below the channel; the Sends wrapper means nothing.
void CvStructureReader::readSends(const CvXmlElement& channelNode, CvChannel* channel) {
    for (const CvXmlElement& node : channelNode.getDescendantsByName(Element::kSend)) {
        String id = readId(node);
        uint32 type = sendTypeFromString(readText(node, Attribute::kType, text(Text::kUnknown)));
        IPtr<CvSend> send = newObject<CvSend>(type, id);
        String destination = readText(node, Attribute::kDestination, String());
        if (!destination.isEmpty())
            send->setDestination(destination);
        readLabelledParameter(node, send.get(), kSendVolume, false);
        if (const CvXmlElement enable = node.findChild(Element::kEnable)) {
            send->setEnabled(readBoolean(enable, Attribute::kValue, true));
            send->addParameter(
                readSwitchParameter(enable, text(kSendEnable.modelName), false).get());
        }
        channel->addSend(send.get());
    }
}

// An element that names no device kind ends the list; the devices before it stay.
void CvStructureReader::readDevices(const CvXmlElement& channelNode, CvChannel* channel) {
    const CvXmlElement devices = channelNode.findChild(Element::kDevices);
    if (!devices)
        return;
    for (const CvXmlElement& node : devices.getChildren()) {
        IPtr<CvDevice> device = readDevice(node);
        if (!device)
            break;
        channel->addDevice(device.get());
    }
}

IPtr<CvDevice> CvStructureReader::readDevice(const CvXmlElement& node) {
    uint32 type = deviceTypeFromString(String(node.getName()));
    String id = readId(node);
    uint32 role =
        deviceRoleFromString(readText(node, Attribute::kDeviceRole, text(Text::kUnknown)));
    IPtr<CvDevice> device;
    switch (type) {
    case kDeviceQuor2:
    case kDeviceQuor3:
    case kDeviceAu:
    case kDeviceClap:
    case kDeviceBuiltin:
        device = newObject<CvDevice>(type, role, id);
        break;
    case kDeviceBuiltinInstrument:
        device = readInstrument(node, type, role, id);
        break;
    case kDeviceCompressor:
        device = newObject<CvDevice>(type, role, id);
        readLabelledParameters(node, device.get(), kCompressorParameters, false);
        break;
    case kDeviceLimiter:
        device = newObject<CvDevice>(type, role, id);
        readLabelledParameters(node, device.get(), kLimiterParameters, false);
        break;
    case kDeviceNoiseGate:
        device = newObject<CvDevice>(type, role, id);
        readLabelledParameters(node, device.get(), kNoiseGateParameters, false);
        break;
    case kDeviceEqualizer:
        device = readEqualizer(node, role, id);
        break;
    default:
        return {};
    }

    device->setDeviceId(readText(node, Attribute::kDeviceId, String()));
    device->setName(readText(node, Attribute::kDeviceName, String()));
    if (const CvXmlElement state = node.findChild(Element::kState)) {
        bool external = readBoolean(state, Attribute::kExternal, false);
        String path = readText(state, Attribute::kPath, String());
        if (!path.isEmpty())
            device->setStateFile(path, external);
    }
    if (const CvXmlElement enabled = node.findChild(Element::kEnabled))
        device->setEnabled(readBoolean(enabled, Attribute::kValue, true));
    if (const CvXmlElement parameters = node.findChild(Element::kParameters)) {
        for (const CvXmlElement& parameter : parameters.getDescendantsByName(Element::kRealParameter))
            device->addParameter(readRealParameter(parameter, String(), 0.0, 0.0, 1.0).get());
    }
    return device;
}

IPtr<CvDevice> CvStructureReader::readInstrument(const CvXmlElement& node, uint32 type, uint32 role,
                                                 const String& id) {
    IPtr<CvInstrument> instrument = newObject<CvInstrument>(type, role, id);
    if (const CvXmlElement preset = node.findChild(Element::kPreset)) {
        String name = readText(preset, Attribute::kName, String());
        if (!name.isEmpty())
            instrument->setPresetName(name);
    }
    return IPtr<CvDevice>(instrument.get());
}

// Bands are found at any depth below the equalizer.
IPtr<CvDevice> CvStructureReader::readEqualizer(const CvXmlElement& node, uint32 role, const String& id) {
    IPtr<CvEqualizer> equalizer = newObject<CvEqualizer>(role, id);
    readLabelledParameters(node, equalizer.get(), kEqualizerParameters, false);
    for (const CvXmlElement& bandNode : node.getDescendantsByName(Element::kBand)) {
        uint32 type =
            bandTypeFromString(readText(bandNode, Attribute::kType, text(Text::kUnknown)));
        auto order = static_cast<uint32>(readInteger(bandNode, Attribute::kOrder, 0));
        IPtr<CvEqualizerBand> band = newObject<CvEqualizerBand>(type, order, readId(bandNode));
        equalizer->addBand(band.get());
        // A band's Enabled without a value is on.
        readLabelledParameters(bandNode, band.get(), kBandParameters, true);
    }
    return IPtr<CvDevice>(equalizer.get());
}

template <size_t N>
void CvStructureReader::readLabelledParameters(const CvXmlElement& node, CvParameterContainer* container,
                                               const LabelledParameter (&rows)[N],
                                               bool switchDefault) {
    for (const LabelledParameter& row : rows)
        readLabelledParameter(node, container, row, switchDefault);
}

void CvStructureReader::readLabelledParameter(const CvXmlElement& node, CvParameterContainer* container,
                                              const LabelledParameter& row, bool switchDefault) {
    const CvXmlElement child = node.findChild(row.element);
    if (!child)
        return;
    IPtr<CvParameter> parameter =
        row.isSwitch ? readSwitchParameter(child, text(row.modelName), switchDefault)
                     : readRealParameter(child, text(row.modelName), 0.5, 0.0, 1.0);
    container->addParameter(parameter.get());
}

IPtr<CvParameter> CvStructureReader::readRealParameter(const CvXmlElement& node, const String& name,
                                                       double value, double min, double max) {
    String id = readId(node);
    double readValue = readReal(node, Attribute::kValue, value);
    double readMin = readReal(node, Attribute::kMin, min);
    double readMax = readReal(node, Attribute::kMax, max);
    String parameterName = name.isEmpty() ? readText(node, Attribute::kName, String()) : name;
    auto parameterId = static_cast<uint32>(readInteger(node, Attribute::kParameterId, 0));
    uint32 unit =
        unitFromString(readText(node, Attribute::kUnit, text(unitToString(kUnitNormalized))));
    IPtr<CvParameter> parameter = newObject<CvParameter>(unit, id);
    parameter->setName(parameterName);
    parameter->setMin(readMin);
    parameter->setMax(readMax);
    parameter->setValue(readValue);
    parameter->setParameterId(parameterId);
    return parameter;
}

IPtr<CvParameter> CvStructureReader::readSwitchParameter(const CvXmlElement& node, const String& name,
                                                         bool defaultValue) {
    String id = readId(node);
    bool on = readBoolean(node, Attribute::kValue, defaultValue);
    IPtr<CvParameter> parameter = newObject<CvParameter>(kUnitNormalized, id);
    parameter->setName(name);
    parameter->setMin(0.0);
    parameter->setMax(1.0);
    parameter->setValue(on ? 1.0 : 0.0);
    parameter->setStepCount(2);
    return parameter;
}

} // namespace Halvorn

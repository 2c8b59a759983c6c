// CvXmlWriter: the devices of a channel with their parameters, equalizer bands and state files.
#include "documents/cvxmlwriter.h"

#include "corvelle/ptr.h"
#include "documents/cvschemanames.h"
#include "documents/cvschemaparameters.h"
#include "documents/cvtables.h"
#include "documents/cvvaluerules.h"
#include "documents/cvxmloutput.h"
#include "hostapi/hostmixer.h"

#include <cstring>

namespace Halvorn {

using namespace CvSchema;

namespace {

// The element of each device kind that the format writes; null for the kinds it leaves out.
const char8* deviceElement(uint32 deviceType) {
    switch (deviceType) {
    case kDeviceQuor3:
        return "Quor3Plugin";
    case kDeviceCompressor:
        return "Compressor";
    case kDeviceLimiter:
        return "Limiter";
    case kDeviceNoiseGate:
        return "NoiseGate";
    case kDeviceEqualizer:
        return "Equalizer";
    default:
        return nullptr;
    }
}

// The row of the built-in tables whose model name this is; one list for all devices and bands.
const LabelledParameter* findWrittenRow(const char8* modelName) {
    auto search = [modelName](const auto& rows) -> const LabelledParameter* {
        for (const LabelledParameter& row : rows)
            if (row.isWritten && std::strcmp(row.modelName, modelName) == 0)
                return &row;
        return nullptr;
    };
    if (const LabelledParameter* row = search(kCompressorParameters))
        return row;
    if (const LabelledParameter* row = search(kLimiterParameters))
        return row;
    if (const LabelledParameter* row = search(kNoiseGateParameters))
        return row;
    return search(kBandParameters);
}

// Calls visit(parameter, identity) for each parameter of the container that has an identity.
template <typename Visit> void forEachParameter(IMediaParameterContainer* container, Visit visit) {
    for (uint32 i = 0; i < container->getParameterCount(); ++i) {
        IMediaParameter* parameter = container->getParameter(i);
        if (!parameter)
            continue;
        IPtr<IMediaObject> identity = Halvorn::queryInterface<IMediaObject>(parameter);
        if (identity)
            visit(parameter, identity.get());
    }
}

} // namespace

void CvXmlWriter::writeDevice(CvXmlOutput& out, IMediaDevice* device) {
    if (!device)
        return;
    IPtr<IMediaObject> identity = Halvorn::queryInterface<IMediaObject>(device);
    if (!identity)
        return;
    const uint32 type = device->getDeviceType();
    const char8* element = deviceElement(type);
    if (!element)
        return;
    out.start(element);
    out.text(Attribute::kId, identity->getId());
    out.text(Attribute::kDeviceRole, deviceRoleToString(device->getDeviceRole()));
    out.text(Attribute::kDeviceName, identity->getName());
    out.text(Attribute::kDeviceId, device->getDeviceId());
    if (IPtr<IMediaParameterContainer> container =
            Halvorn::queryInterface<IMediaParameterContainer>(device)) {
        if (type == kDeviceQuor3) {
            writePluginParameters(out, container.get());
        } else {
            writeBuiltinParameters(out, container.get());
            if (type == kDeviceEqualizer)
                writeEqualizerBands(out, device);
        }
    }
    out.start(Element::kEnabled);
    out.boolean(Attribute::kValue, device->isEnabled());
    out.end();

    // The state goes out even when its file can't be had: the path then names no entry.
    String path;
    (void)stageFile(device->getStatePath(), kCvFilePreset, Text::kStateFolder, path);
    out.start(Element::kState);
    out.text(Attribute::kPath, path.text8());
    out.boolean(Attribute::kExternal, false);
    out.end();
    out.end();
}

void CvXmlWriter::writePluginParameters(CvXmlOutput& out, IMediaParameterContainer* container) {
    // The model holds the host's parameter tag, the document the plug-in's own number.
    constexpr uint32 kTagOffset = Quor::IHostParameter::kPluginTagOffset;
    out.start(Element::kParameters);
    forEachParameter(container, [&](IMediaParameter* parameter, IMediaObject* identity) {
        out.start(Element::kRealParameter);
        out.real(Attribute::kMin, parameter->getMin(), CvValueRules::kValuePrecision);
        out.real(Attribute::kMax, parameter->getMax(), CvValueRules::kValuePrecision);
        out.real(Attribute::kValue, parameter->getValue(), CvValueRules::kValuePrecision);
        out.text(Attribute::kUnit, unitToString(parameter->getUnit()));
        // A signed decimal: a number below the offset goes out negative.
        out.integer(Attribute::kParameterId,
                    static_cast<int32>(parameter->getParameterId() - kTagOffset));
        out.text(Attribute::kId, identity->getId());
        out.text(Attribute::kName, identity->getName());
        out.end();
    });
    out.end();
}

void CvXmlWriter::writeBuiltinParameters(CvXmlOutput& out, IMediaParameterContainer* container) {
    forEachParameter(container, [&](IMediaParameter* parameter, IMediaObject* identity) {
        const String name(identity->getName());
        const LabelledParameter* row = findWrittenRow(name.text8());
        if (!row)
            return;
        if (row->isSwitch)
            writeSwitchParameter(out, parameter, row->element);
        else
            writeRealParameter(out, parameter, row->element);
    });
}

void CvXmlWriter::writeEqualizerBands(CvXmlOutput& out, IMediaDevice* device) {
    IPtr<IMediaEqualizer> equalizer = Halvorn::queryInterface<IMediaEqualizer>(device);
    if (!equalizer)
        return;
    for (uint32 i = 0; i < equalizer->getBandCount(); ++i) {
        IMediaEqualizerBand* band = equalizer->getBand(i);
        if (!band)
            continue;
        IMediaParameterContainer* parameters = band->getParameters();
        if (!parameters)
            continue;
        out.start(Element::kBand);
        out.text(Attribute::kType, bandTypeToString(band->getBandType()));
        out.integer(Attribute::kOrder, static_cast<int32>(band->getOrder()));
        writeBuiltinParameters(out, parameters);
        out.end();
    }
}

} // namespace Halvorn

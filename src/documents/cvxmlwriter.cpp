// CvXmlWriter: the document frame, application, transport and the structure of tracks and channels.
#include "documents/cvxmlwriter.h"

#include "corvelle/ptr.h"
#include "documents/cvschemanames.h"
#include "documents/cvschemaparameters.h"
#include "documents/cvtables.h"
#include "documents/cvvaluerules.h"
#include "documents/cvxmloutput.h"

namespace Halvorn {

using namespace CvSchema;

CvXmlWriter::CvXmlWriter(const String& packageFolder) : packageFolder(packageFolder) {}

bool CvXmlWriter::writeProject(IMediaProject* project, FStream* stream) {
    if (!project || !stream)
        return false;
    stagingFailed = false;
    CvXmlOutput out(stream);
    if (!out.open())
        return false;
    out.start(Element::kProject);
    out.text(Attribute::kVersion, Text::kDocumentVersion);
    writeApplication(out, project);
    writeTransport(out, project);

    out.start(Element::kStructure);
    for (uint32 i = 0; i < project->getTrackCount(); ++i)
        writeTrack(out, project->getTrack(i), 0);
    for (uint32 i = 0; i < project->getChannelCount(); ++i) {
        IMediaChannel* channel = project->getChannel(i);
        if (!channel || channel->getKind() != 1)
            continue;
        const uint32 role = channel->getRole();
        if (role == kChannelRoleMaster || role == kChannelRoleEffect || role == kChannelRoleSubmix)
            writeChannel(out, channel);
    }
    out.end();

    writeArrangement(out, project);
    out.end();
    return out.close() && !stagingFailed;
}

void CvXmlWriter::writeApplication(CvXmlOutput& out, IMediaProject* project) {
    String version(project->getApplicationVersion());
    // Only the exact, case-sensitive prefix goes: "version 2" stays whole. The prefix is a local
    // because reading a String may convert it, so one shared between writers would race.
    const String prefix("Version ");
    if (version.startsWith(prefix))
        version.remove(0, prefix.length());
    out.start(Element::kApplication);
    out.text(Attribute::kName, project->getApplicationName());
    out.text(Attribute::kVersion, version.text16());
    out.end();
}

void CvXmlWriter::writeTransport(CvXmlOutput& out, IMediaProject* project) {
    IMediaParameter* tempo = project->getTempo();
    IMediaSignature* signature = project->getTimeSignature();
    if (!tempo || !signature)
        return;
    out.start(Element::kTransport);
    out.start(Element::kTempo);
    out.text(Attribute::kUnit, unitToString(kUnitBpm));
    out.real(Attribute::kValue, tempo->getValue(), CvValueRules::kValuePrecision);
    out.end();
    out.start(Element::kTimeSignature);
    out.integer(Attribute::kNumerator, signature->getNumerator());
    out.integer(Attribute::kDenominator, signature->getDenominator());
    out.end();
    out.end();
}

void CvXmlWriter::writeTrack(CvXmlOutput& out, IMediaTrack* track, uint32 depth) {
    if (!track || depth >= kMaxTrackDepth)
        return;
    const uint32 content = track->getContentType();
    // Tempo, signature and markers have elements of their own below Arrangement.
    if (content == kContentTempo || content == kContentSignature || content == kContentMarkers)
        return;
    out.start(Element::kTrack);
    out.text(Attribute::kContentType, contentTypeToString(content));
    out.boolean(Attribute::kLoaded, track->isLoaded());
    writeObjectIdentity(out, track);
    if (content == kContentAudio || content == kContentNotes)
        writeChannel(out, track->getChannel());
    for (uint32 i = 0; i < track->getTrackCount(); ++i)
        writeTrack(out, track->getTrack(i), depth + 1);
    out.end();
}

void CvXmlWriter::writeObjectIdentity(CvXmlOutput& out, FUnknown* object) {
    IPtr<IMediaObject> identity = Halvorn::queryInterface<IMediaObject>(object);
    if (!identity)
        return;
    out.text(Attribute::kId, identity->getId());
    out.text(Attribute::kName, identity->getName());
    writeColor(out, identity.get());
}

void CvXmlWriter::writeColor(CvXmlOutput& out, IMediaObject* object) {
    IMediaColor* color = object->getColor();
    if (!color)
        return;
    const uint8 bytes[4] = {color->getRed(), color->getGreen(), color->getBlue(),
                            color->getAlpha()};
    if (!bytes[0] && !bytes[1] && !bytes[2] && !bytes[3])
        return;
    String text;
    (void)text.printf("#%02x%02x%02x%02x", bytes[0], bytes[1], bytes[2], bytes[3]);
    out.text(Attribute::kColor, text.text8());
}

void CvXmlWriter::writeChannel(CvXmlOutput& out, IMediaChannel* channel) {
    if (!channel)
        return;
    out.start(Element::kChannel);
    writeChannelHead(out, channel);
    if (channel->hasParameter(kParamSolo)) {
        if (IMediaParameter* solo = channel->findParameter(kParamSolo))
            out.boolean(Attribute::kSolo, solo->getValue() > 0.0);
    }
    out.text(Attribute::kDestination, channel->getDestination());
    for (const LabelledParameter* row : {&kChannelMute, &kChannelPan, &kChannelVolume}) {
        if (!channel->hasParameter(row->modelName))
            continue;
        if (IMediaParameter* parameter = channel->findParameter(row->modelName)) {
            if (row->isSwitch)
                writeSwitchParameter(out, parameter, row->element);
            else
                writeRealParameter(out, parameter, row->element);
        }
    }
    if (channel->getDeviceCount() != 0) {
        out.start(Element::kDevices);
        for (uint32 i = 0; i < channel->getDeviceCount(); ++i)
            writeDevice(out, channel->getDevice(i));
        out.end();
    }
    if (channel->getSendCount() != 0) {
        out.start(Element::kSends);
        for (uint32 i = 0; i < channel->getSendCount(); ++i)
            writeSend(out, channel->getSend(i));
        out.end();
    }
    out.end();
}

void CvXmlWriter::writeChannelHead(CvXmlOutput& out, IMediaChannel* channel) {
    out.text(Attribute::kRole, channelRoleToString(channel->getRole()));
    out.integer(Attribute::kAudioChannels, channel->getAudioChannels());
    writeObjectIdentity(out, channel);
}

void CvXmlWriter::writeSend(CvXmlOutput& out, IMediaSend* send) {
    if (!send)
        return;
    out.start(Element::kSend);
    out.text(Attribute::kType, sendTypeToString(send->getType()));
    out.text(Attribute::kDestination, send->getDestination());
    if (IPtr<IMediaObject> identity = Halvorn::queryInterface<IMediaObject>(send))
        out.text(Attribute::kId, identity->getId());
    if (send->hasParameter(kSendEnable.modelName)) {
        if (IMediaParameter* enable = send->findParameter(kSendEnable.modelName)) {
            // The send's switch has no name attribute, unlike the channel's.
            out.start(kSendEnable.element);
            out.boolean(Attribute::kValue, enable->getValue() > 0.0);
            if (IPtr<IMediaObject> identity = Halvorn::queryInterface<IMediaObject>(enable))
                out.text(Attribute::kId, identity->getId());
            out.end();
        }
    }
    if (send->hasParameter(kSendVolume.modelName)) {
        if (IMediaParameter* volume = send->findParameter(kSendVolume.modelName))
            writeRealParameter(out, volume, kSendVolume.element);
    }
    out.end();
}

void CvXmlWriter::writeRealParameter(CvXmlOutput& out, IMediaParameter* parameter,
                                     const char8* label) {
    out.start(label);
    out.real(Attribute::kValue, parameter->getValue(), CvValueRules::kValuePrecision);
    out.text(Attribute::kUnit, unitToString(parameter->getUnit()));
    out.real(Attribute::kMin, parameter->getMin(), CvValueRules::kValuePrecision);
    out.real(Attribute::kMax, parameter->getMax(), CvValueRules::kValuePrecision);
    out.text(Attribute::kName, label);
    if (IPtr<IMediaObject> identity = Halvorn::queryInterface<IMediaObject>(parameter))
        out.text(Attribute::kId, identity->getId());
    out.end();
}

void CvXmlWriter::writeSwitchParameter(CvXmlOutput& out, IMediaParameter* parameter,
                                       const char8* label) {
    out.start(label);
    out.boolean(Attribute::kValue, parameter->getValue() > 0.0);
    out.text(Attribute::kName, label);
    if (IPtr<IMediaObject> identity = Halvorn::queryInterface<IMediaObject>(parameter))
        out.text(Attribute::kId, identity->getId());
    out.end();
}

} // namespace Halvorn

// Channels on import: volume, pan, mute and solo of a channel, group channels of folders, and the
// three passes over the project's channels (FX and group channels, output routing, sends).
#include "hostimport/cvhostproject.h"
#include "hostimport/devicetranslation.h"
#include "hostimport/importutilities.h"

#include <cmath>

namespace Halvorn {

using namespace CvHostUtilities;

namespace {
void setBusWidth(IHostParameterOwner* mixer, IMediaChannel* channel, IHostProjectTools* tools) {
    IPtr<IHostChannelBus> bus = Halvorn::queryInterface<IHostChannelBus>(mixer);
    if (bus && tools)
        tools->setBusArrangement(bus.get(), speakerMaskFromChannels(channel->getAudioChannels()));
}
} // namespace

void CvHostProject::applyNormalized(IHostParameterOwner* owner, const char8* id,
                                    IMediaParameter* value) {
    IPtr<IHostParameter> parameter =
        owner ? IPtr<IHostParameter>::adopt(owner->findParameter(id)) : nullptr;
    if (parameter && value && value->getUnit() == kUnitNormalized)
        parameter->setNormalized(float(value->getValue()), true);
}

void CvHostProject::applyChannelParameters(IHostParameterOwner* mixer, IMediaChannel* channel) {
    if (!mixer || !channel)
        return;
    if (channel->hasParameter(kParamVolume))
        applyVolume(mixer, channel->findParameter(kParamVolume));
    if (channel->hasParameter(kParamPan))
        applyNormalized(findChild(mixer, "Panner"), "panX", channel->findParameter(kParamPan));
    if (channel->hasParameter(kParamMute))
        applyNormalized(mixer, "mute", channel->findParameter(kParamMute));
    if (channel->hasParameter(kParamSolo))
        applyNormalized(mixer, "solo", channel->findParameter(kParamSolo));
}

// The model holds linear gain; only the host knows where a level in decibels sits on its fader.
void CvHostProject::applyVolume(IHostParameterOwner* owner, IMediaParameter* volume) {
    IPtr<IHostParameter> fader =
        owner && volume ? IPtr<IHostParameter>::adopt(owner->findParameter("volume")) : nullptr;
    IPtr<IHostGainScale> scale = Halvorn::queryInterface<IHostGainScale>(fader.get());
    if (!scale)
        return;
    double decibel = 20.0 * std::log10(volume->getValue());
    fader->setNormalized(scale->decibelToValue(float(decibel)), true);
}

void CvHostProject::importGroupChannel(IMediaChannel* channel, FUnknown* group,
                                       ImportSessions& sessions, IHostProjectTools* tools) {
    IPtr<IMediaObject> identity = Halvorn::queryInterface<IMediaObject>(channel);
    IHostParameterOwner* mixer = getMixerChannel(group);
    if (!sessions.isComplete() || !identity || !tools || !mixer)
        return;
    devices_.add(String(identity->getId()), mixer);
    setBusWidth(mixer, channel, tools);
    applyName(group, identity.get(), sessions);
    applyColor(group, identity.get(), sessions);
    applyChannelParameters(mixer, channel);
}

void CvHostProject::importChannels(IMediaProject* model, ImportSessions& sessions,
                                   IHostProjectTools* tools) {
    uint32 count = model->getChannelCount();
    // FX and group channels; regular channels came with their tracks, and the master and VCA
    // channels of the model leave the host's alone.
    for (uint32 index = 0; index < count; ++index) {
        IMediaChannel* channel = model->getChannel(index);
        IPtr<IMediaObject> identity = Halvorn::queryInterface<IMediaObject>(channel);
        IPtr<IHostObjectType> track =
            identity ? createChannelTrack(project_.get(), channel->getRole()) : nullptr;
        if (!track)
            continue;
        IPtr<IHostObjectType> kept = track;
        sessions.step->add(sessions.context.get(), track.release());
        sessions.step->commit(project_.get(), u"Import Track");
        IHostParameterOwner* mixer = getMixerChannel(kept.get());
        if (!mixer)
            continue;
        devices_.add(String(identity->getId()), mixer);
        setBusWidth(mixer, channel, tools);
        applyName(kept.get(), identity.get(), sessions);
        applyColor(kept.get(), identity.get(), sessions);
        applyChannelParameters(mixer, channel);
        importInserts(host_.get(), kept.get(), channel, this);
    }
    // Outputs; a channel that feeds the master keeps the host's default output.
    for (uint32 index = 0; index < count; ++index) {
        IMediaChannel* channel = model->getChannel(index);
        IPtr<IMediaObject> identity = Halvorn::queryInterface<IMediaObject>(channel);
        const CvDeviceRegistry::Entry* source =
            identity ? devices_.find(identity->getId()) : nullptr;
        const CvDeviceRegistry::Entry* target =
            source ? devices_.find(channel->getDestination()) : nullptr;
        if (target)
            setOutputDestination(source->object, target->object);
    }
    // Sends last: they point at FX channels that the first pass made.
    for (uint32 index = 0; index < count; ++index)
        importSends(model->getChannel(index));
}

void CvHostProject::importSends(IMediaChannel* channel) {
    IPtr<IMediaObject> identity = Halvorn::queryInterface<IMediaObject>(channel);
    const CvDeviceRegistry::Entry* entry = identity ? devices_.find(identity->getId()) : nullptr;
    IHostParameterOwner* slots = entry ? findChild(entry->object, "Sends") : nullptr;
    if (!slots)
        return;
    // The model's send at an index takes the host's send slot at the same index, or is dropped.
    for (uint32 index = 0, count = channel->getSendCount(); index < count; ++index) {
        IMediaSend* send = channel->getSend(index);
        IHostParameterOwner* slot = slots->getChild(int32(index));
        if (!send || !slot)
            continue;
        setParameterValue(slot, "prePost", send->getType() == kSendPre ? 1.0f : 0.0f);
        if (send->hasParameter(kParamVolume))
            applyVolume(slot, send->findParameter(kParamVolume));
        setParameterValue(slot, "on", send->isEnabled() ? 1.0f : 0.0f);
        const CvDeviceRegistry::Entry* target = devices_.find(send->getDestination());
        if (!target)
            continue;
        setOutputDestination(slot, target->object);
        if (IPtr<IMediaObject> sendIdentity = Halvorn::queryInterface<IMediaObject>(send))
            deviceImported(String(sendIdentity->getId()), slot);
    }
}

} // namespace Halvorn

// CvHostProjectExporter: a track's channel, the plug-in parameters its lanes move, and its
// automation lanes.
#include "hostexport/cvhostprojectexporter.h"

#include "hostexport/cvexportparameter.h"

#include <vector>

namespace Halvorn {

using namespace Quor;
using namespace CvHostUtilities;

namespace {

IHostParameterOwner* laneOwner(FUnknown* lane) {
    auto channel = ::Halvorn::queryInterface<IHostTrackChannel>(lane);
    return channel ? channel->getMixerChannel() : nullptr;
}

IHostLaneBinding* laneBinding(FUnknown* lane) {
    auto automationLane = ::Halvorn::queryInterface<IHostAutomationLane>(lane);
    return automationLane ? automationLane->getBinding() : nullptr;
}

IPtr<IHostIterator> lanesOf(IHostObjectType* hostTrack) {
    IHostAutomationFolder* folder = hostTrack ? hostTrack->getAutomationFolder() : nullptr;
    return IPtr<IHostIterator>::adopt(folder ? folder->getLanes() : nullptr);
}

// The title of a plug-in's parameter by its own id, or empty.
String pluginParameterTitle(IHostParameterOwner* plugin, uint32 id) {
    auto access = ::Halvorn::queryInterface<IHostPluginAccess>(plugin);
    IQuorController* controller = access ? access->getController() : nullptr;
    int32 count = controller ? controller->getParameterCount() : 0;
    for (int32 index = 0; index < count; ++index) {
        QuorParameterInfo info{};
        if (controller->getParameterInfo(index, &info) == kResultOk && info.id == id) {
            info.title[127] = 0;
            return String(info.title);
        }
    }
    return {};
}

} // namespace

void CvHostProjectExporter::exportTrackChannel(IHostEditContext* context,
                                               IHostTrackChannel* hostChannel, CvTrack* track,
                                               CvProject* project) {
    if (!track || !project || !hostChannel)
        return;
    IHostParameterOwner* object = hostChannel->getMixerChannel();
    if (!object)
        return;
    auto channel = IPtr<CvChannel>::adopt(exportChannel(object, 1, kChannelRoleRegular));
    if (!channel)
        return;
    track->setChannel(channel.get());
    project->addChannel(channel.get());
    auto hostTrack = ::Halvorn::queryInterface<IHostObjectType>(hostChannel);
    for (CvDevice* device : channel->getDevices()) {
        CvProjectDevice* entry = findDevice(device->getNodeId());
        if (entry)
            exportAutomatedParameters(device, entry->object, hostTrack.get());
    }
    exportAutomation(context, track, hostTrack.get());
}

void CvHostProjectExporter::exportAutomatedParameters(CvDevice* device, IHostParameterOwner* plugin,
                                                      IHostObjectType* hostTrack) {
    if (!device || !plugin || !hostTrack ||
        !::Halvorn::queryInterface<IHostTrackChannel>(hostTrack))
        return;
    std::vector<uint32> tags;
    auto lanes = lanesOf(hostTrack);
    while (lanes && !lanes->isDone()) {
        FUnknown* lane = lanes->next();
        IHostLaneBinding* binding = laneBinding(lane);
        if (binding && laneOwner(lane) == plugin)
            tags.push_back(binding->getTag());
    }
    for (uint32 tag : tags) {
        auto hostParameter = IPtr<IHostParameter>::adopt(plugin->getParameterByTag(tag));
        if (!hostParameter || device->findParameterByNumber(tag))
            continue;
        String title = pluginParameterTitle(plugin, tag - IHostParameter::kPluginTagOffset);
        auto parameter = makeHostParameter(kUnitNormalized, newId(), *hostParameter, "",
                                           hostParameter->getNormalized(), 0);
        if (!parameter)
            continue;
        parameter->setParameterId(tag);
        parameter->setName(title);
        device->addParameter(parameter.get());
    }
}

void CvHostProjectExporter::exportAutomation(IHostEditContext* context, CvTrack* track,
                                             IHostObjectType* hostTrack) {
    if (!context || !track || !hostTrack || !hostTrack->getAutomationFolder())
        return;
    IHostParameterOwner* trackChannel = laneOwner(hostTrack);
    if (!trackChannel)
        return;
    CvProjectDevice* entry = findDevice(trackChannel);
    CvParameterContainer* fallback = entry ? findContainer(entry->id.text16()) : nullptr;
    auto lanes = lanesOf(hostTrack);
    while (lanes && !lanes->isDone()) {
        FUnknown* lane = lanes->next();
        IHostLaneBinding* binding = laneBinding(lane);
        IHostParameterOwner* owner = lane ? laneOwner(lane) : nullptr;
        if (!binding || !owner)
            continue;
        CvProjectDevice* ownerEntry = findDevice(owner);
        CvParameterContainer* container =
            ownerEntry ? findContainer(ownerEntry->id.text16()) : nullptr;
        if (!container)
            container = fallback;
        if (!container)
            continue;
        auto* parameter =
            static_cast<CvParameter*>(container->findParameterByNumber(binding->getTag()));
        if (!parameter)
            continue;
        // Faders of channels and sends are automated in linear gain, like their parameter.
        bool isFader = parameter->getNodeName() == String(kParamVolume) &&
                       !container->isTypeOf(CvDevice::kClassName);
        auto automation = newObject<CvAutomation>(parameter->getUnit(), newId());
        automation->setTarget(parameter->getNodeId());
        auto laneContext = IPtr<IHostEditContext>::adopt(context->contextFor(lane));
        for (IHostAutomationPoint* point : collectChildren<IHostAutomationPoint>(lane)) {
            auto timeline = ::Halvorn::queryInterface<IHostTimelineObject>(point);
            if (!timeline)
                continue;
            double value = point->getValue();
            if (isFader)
                value = translator_ ? translator_->valueToGain(value) : 1.0;
            auto made = newObject<CvAutomationPoint>();
            made->setValue(value);
            made->setInterpolation(parameter->isContinuous() ? kInterpolationLinear
                                                             : kInterpolationHold);
            made->setTime(timeline->getStart(laneContext.get()));
            automation->addPoint(made.get());
        }
        // An empty lane leaves nothing behind but the id it used.
        if (automation->getPointCount() > 0)
            track->addAutomation(automation.get());
    }
}

} // namespace Halvorn

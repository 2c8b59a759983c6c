// Automation on import: each model lane finds the parameter it moves anywhere in the project,
// the host object and lane of that parameter, and gets its points, led by one at time 0.
#include "corvelle/mediaautomation.h"
#include "corvelle/mediadevice.h"
#include "hostimport/cvhostproject.h"
#include "hostimport/importutilities.h"

#include <cstring>
#include <string>
#include <unordered_map>
#include <vector>

namespace Halvorn {

using namespace CvHostUtilities;

namespace {
void collectAllTracks(IMediaTrack* track, std::vector<IMediaTrack*>& tracks) {
    tracks.push_back(track);
    for (uint32 index = 0, count = track->getTrackCount(); index < count; ++index)
        if (IMediaTrack* subTrack = track->getTrack(index))
            collectAllTracks(subTrack, tracks);
}

// Depth first, each track directly before its sub-tracks.
std::vector<IMediaTrack*> collectAllTracks(IMediaProject* model) {
    std::vector<IMediaTrack*> tracks;
    for (uint32 index = 0, count = model->getTrackCount(); index < count; ++index)
        if (IMediaTrack* track = model->getTrack(index))
            collectAllTracks(track, tracks);
    return tracks;
}

struct ParameterPlace {
    IMediaTrack* owner;
    IMediaParameterContainer* container;
    IMediaParameter* parameter;
};

// Every parameter id of the project's channels, devices and sends, keeping the first place that
// a walk over all tracks, and on each track over its channel, devices and sends, would find.
class ParameterIndex {
public:
    explicit ParameterIndex(const std::vector<IMediaTrack*>& tracks) {
        for (IMediaTrack* track : tracks) {
            IMediaChannel* channel = track->getChannel();
            if (!channel)
                continue;
            enter(track, channel);
            for (uint32 index = 0, count = channel->getDeviceCount(); index < count; ++index)
                enter(track, channel->getDevice(index));
            for (uint32 index = 0, count = channel->getSendCount(); index < count; ++index)
                enter(track, channel->getSend(index));
        }
    }

    const ParameterPlace* find(const char16* id) const {
        auto found = places_.find(std::u16string(id));
        return found == places_.end() ? nullptr : &found->second;
    }

private:
    void enter(IMediaTrack* track, FUnknown* candidate) {
        IPtr<IMediaParameterContainer> container =
            Halvorn::queryInterface<IMediaParameterContainer>(candidate);
        for (uint32 index = 0, count = container ? container->getParameterCount() : 0;
             index < count; ++index) {
            IMediaParameter* parameter = container->getParameter(index);
            IPtr<IMediaObject> identity = Halvorn::queryInterface<IMediaObject>(parameter);
            if (identity)
                places_.emplace(std::u16string(identity->getId()),
                                ParameterPlace{track, container.get(), parameter});
        }
    }

    std::unordered_map<std::u16string, ParameterPlace> places_;
};

const char8* hostTitleOf(const char16* name, bool onSend) {
    String text(name);
    if (text == String(kParamVolume))
        return onSend ? "Level" : "Volume";
    if (text == String(kParamMute))
        return "Mute";
    if (text == String(kParamPan))
        return "Pan";
    if (text == String(kParamEnable))
        return "Enable";
    return nullptr;
}

// A copy: the host's text may not outlive the next question to the same object.
std::string automationPath(IHostParameterOwner* owner) {
    IPtr<IHostAutomationTarget> target = queryInterface<IHostAutomationTarget>(owner);
    const char8* path = target ? target->getPath() : nullptr;
    return path ? std::string(path) : std::string();
}

void addAutomationPoint(IHostContext* host, IHostEditSession* step, IHostEditContext* lane,
                        double value, double time) {
    if (!host || !step || !lane)
        return;
    IPtr<IHostAutomationPoint> point = hostService<IHostAutomationPoint>(host);
    IPtr<IHostTimelineObject> item = Halvorn::queryInterface<IHostTimelineObject>(point.get());
    if (!item)
        return;
    point->setValue(lane, float(value), step);
    item->setStart(lane, time, nullptr);
    step->add(lane, item.release());
}
// A plug-in's parameter is addressed by its own id; anything else by the title the host shows.
bool resolveParameterTag(IHostParameterOwner* owner, IMediaParameterContainer* container,
                         IMediaParameter* parameter, uint32* tag) {
    if (!owner || !parameter || !tag)
        return false;
    if (IPtr<IHostPluginAccess> plugin = Halvorn::queryInterface<IHostPluginAccess>(owner)) {
        if (!plugin->getController())
            return false;
        *tag = parameter->getParameterId() + IHostParameter::kPluginTagOffset;
        return true;
    }
    IPtr<IMediaObject> identity = Halvorn::queryInterface<IMediaObject>(parameter);
    if (!identity || !*identity->getName())
        return false;
    const char8* mapped =
        hostTitleOf(identity->getName(), bool(Halvorn::queryInterface<IMediaSend>(container)));
    String title = mapped ? String(mapped) : String(identity->getName());
    for (int32 index = 0, count = owner->getParameterCount(); index < count; ++index) {
        uint32 candidate = owner->getParameterTag(index);
        const char16* shown = owner->getParameterTitle(candidate);
        if (shown && String(shown) == title) {
            *tag = candidate;
            return true;
        }
    }
    return false;
}

// The first point by time, the first of equal times; null for a lane without points.
IMediaAutomationPoint* earliestPoint(IMediaAutomation* automation) {
    IMediaAutomationPoint* earliest = nullptr;
    for (uint32 index = 0, count = automation->getPointCount(); index < count; ++index) {
        IMediaAutomationPoint* point = automation->getPoint(index);
        if (point && (!earliest || point->getTime() < earliest->getTime()))
            earliest = point;
    }
    return earliest;
}
} // namespace

void CvHostProject::importAutomation(IMediaProject* model, IHostEditSession* step,
                                     IHostEditContext* context) {
    std::vector<IMediaTrack*> allTracks = collectAllTracks(model);
    ParameterIndex parameters(allTracks);
    for (IMediaTrack* track : allTracks)
        for (uint32 index = 0, count = track->getAutomationCount(); index < count; ++index) {
            IMediaAutomation* automation = track->getAutomation(index);
            const char16* target = automation ? automation->getTarget() : nullptr;
            const ParameterPlace* place = target && *target ? parameters.find(target) : nullptr;
            if (place)
                importLane(automation, place->owner, place->container, place->parameter, step,
                           context);
        }
}

void CvHostProject::importLane(IMediaAutomation* automation, IMediaTrack* owner,
                               IMediaParameterContainer* container, IMediaParameter* parameter,
                               IHostEditSession* step, IHostEditContext* context) {
    IPtr<IMediaObject> parameterIdentity = Halvorn::queryInterface<IMediaObject>(parameter);
    IPtr<IMediaObject> containerIdentity = Halvorn::queryInterface<IMediaObject>(container);
    const CvDeviceRegistry::Entry* entry = parameterIdentity && containerIdentity
                                               ? devices_.find(containerIdentity->getId())
                                               : nullptr;
    if (!entry)
        return;
    String name(parameterIdentity->getName());
    IHostParameterOwner* hostOwner = entry->object;
    if (name == String(kParamPan))
        hostOwner = findChild(hostOwner, "Panner");
    std::string path = automationPath(hostOwner);
    IPtr<IMediaObject> channelIdentity = Halvorn::queryInterface<IMediaObject>(owner->getChannel());
    const CvDeviceRegistry::Entry* channel =
        !path.empty() && channelIdentity ? devices_.find(channelIdentity->getId()) : nullptr;
    std::string base = channel ? automationPath(channel->object) : std::string();
    if (base.empty())
        return;
    // The lane names its parameter's owner relative to the track's channel.
    std::string relative = path;
    for (size_t at = relative.find(base); at != std::string::npos; at = relative.find(base, at))
        relative.erase(at, base.size());
    if (!relative.empty())
        relative.erase(0, 1);
    FUnknown* hostTrack = tracks_.findByMixerChannel(channel->object);
    IPtr<IHostObjectType> type = Halvorn::queryInterface<IHostObjectType>(hostTrack);
    IHostAutomationFolder* folder = type ? type->getAutomationFolder() : nullptr;
    IPtr<IHostAutomationOwner> lanes = Halvorn::queryInterface<IHostAutomationOwner>(folder);
    uint32 tag = 0;
    if (!lanes || !resolveParameterTag(hostOwner, container, parameter, &tag))
        return;
    FUnknown* lane = lanes->getLane(relative.c_str(), tag, true);
    if (!lane)
        return;
    folder->setOpen(true);
    IPtr<IHostEditContext> laneContext =
        Halvorn::queryInterface<IHostTimelineObject>(lane) && context
            ? IPtr<IHostEditContext>::adopt(context->contextFor(lane))
            : nullptr;
    if (!laneContext)
        return;

    // Fader levels, of channels and sends, go through the host's curve; everything else is
    // scaled onto 0..1 by the parameter's bounds.
    bool useCurve =
        name == String(kParamVolume) && !Halvorn::queryInterface<IMediaDevice>(container);
    double minimum = parameter->getMin(), range = parameter->getMax() - parameter->getMin();
    auto scaled = [&](double value) {
        if (useCurve)
            return translator_->gainToValue(value);
        // Equal bounds leave nothing to scale by: such a lane lies at the bottom.
        return range != 0.0 ? (value - minimum) / range : 0.0;
    };
    IMediaAutomationPoint* earliest = earliestPoint(automation);
    if (earliest && earliest->getTime() != 0.0)
        addAutomationPoint(host_.get(), step, laneContext.get(), scaled(earliest->getValue()), 0.0);
    for (uint32 index = 0, count = automation->getPointCount(); index < count; ++index)
        if (IMediaAutomationPoint* point = automation->getPoint(index))
            addAutomationPoint(host_.get(), step, laneContext.get(), scaled(point->getValue()),
                               point->getTime());
}

} // namespace Halvorn

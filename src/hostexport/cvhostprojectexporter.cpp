// CvHostProjectExporter: the run's frame, ids, registries, transport and the mixer walk.
#include "hostexport/cvhostprojectexporter.h"

#include <cinttypes>
#include <cstring>
#include <vector>

namespace Halvorn {

using namespace Quor;
using namespace CvHostUtilities;

namespace {

constexpr double kTempoMinimum = 10.0;
constexpr double kTempoMaximum = 300.0;

std::u16string key16(const char16* text) { return text ? std::u16string(text) : std::u16string(); }

// The role a mixer channel plays by its name; 0 for a kind the model doesn't take.
uint32 channelRole(const char8* name) {
    if (!name)
        return 0;
    if (std::strcmp(name, "OutputChannel") == 0)
        return kChannelRoleMaster;
    if (std::strcmp(name, "FxChannel") == 0)
        return kChannelRoleEffect;
    if (std::strcmp(name, "GroupChannel") == 0)
        return kChannelRoleSubmix;
    return 0;
}

} // namespace

CvHostProjectExporter::CvHostProjectExporter(IHostContext* host, IMediaPackageManagerClient* client)
    : host_(host), client_(client) {
    if (auto manager = hostService<IHostProjectManager>(host))
        project_ = manager->getActiveProject();
    translator_ =
        newObject<CvHostVolumeTranslator>(host);
    tools_ = hostService<IHostProjectTools>(host);
}

String CvHostProjectExporter::newId() {
    String id;
    id.printf("id%" PRIu64, nextId_++);
    return id;
}

CvHostProjectExporter::CvProjectDevice* CvHostProjectExporter::findDevice(const String& id) const {
    auto found = devicesById_.find(id.text8());
    return found == devicesById_.end() ? nullptr : found->second;
}

CvHostProjectExporter::CvProjectDevice*
CvHostProjectExporter::findDevice(IHostParameterOwner* object) const {
    auto found = devicesByObject_.find(object);
    return found == devicesByObject_.end() ? nullptr : found->second;
}

CvParameterContainer* CvHostProjectExporter::findContainer(const char16* id) const {
    auto found = containersById_.find(key16(id));
    return found == containersById_.end() ? nullptr : found->second;
}

void CvHostProjectExporter::registerContainer(CvParameterContainer* container,
                                              IHostParameterOwner* object) {
    const String& id = container->getNodeId();
    containers_.add(IPtr<CvParameterContainer>(container));
    containersById_.emplace(key16(id.text16()), container);
    auto device = newObject<CvProjectDevice>(id, object);
    devicesById_.emplace(id.text8(), device.get());
    devicesByObject_.emplace(object, device.get());
    if (const char16* title = object ? object->getTitle() : nullptr)
        devicesByTitle_[key16(title)].push_back(device.get());
    devices_.add(std::move(device));
}

const std::vector<CvHostProjectExporter::CvProjectDevice*>*
CvHostProjectExporter::devicesTitled(const String& title) const {
    auto found = devicesByTitle_.find(key16(title.text16()));
    return found == devicesByTitle_.end() ? nullptr : &found->second;
}

CvHostProjectExporter::CvProjectDevice*
CvHostProjectExporter::findDeviceByTitle(const String& title) const {
    const auto* titled = devicesTitled(title);
    return titled ? titled->front() : nullptr;
}

String CvHostProjectExporter::findDestination(IHostParameterOwner* object) {
    auto bus = findParameter(object, "outputBus");
    String title = parameterText(bus.get(), IHostUrl::kPathSize);
    if (title.isEmpty())
        return {};
    const auto* titled = devicesTitled(title);
    auto routing = ::Halvorn::queryInterface<IHostOutputRouting>(object);
    if (!titled || !routing)
        return {};
    // Two channels of one title are told apart by the host's routing only.
    for (CvProjectDevice* device : *titled)
        if (routing->canRouteTo(device->object))
            return device->id;
    return {};
}

IMediaProject* CvHostProjectExporter::run() {
    if (!project_ || !host_ || !client_)
        return nullptr;
    auto info = ::Halvorn::queryInterface<IHostApplicationInfo>(host_.get());
    if (!info)
        return nullptr;
    auto context = IPtr<IHostEditContext>::adopt(project_->getEditContext(0));
    auto timeline = ::Halvorn::queryInterface<IHostTimelineObject>(project_.get());
    if (!context || !timeline)
        return nullptr;
    auto tracks = IPtr<IHostIterator>::adopt(timeline->getChildren());
    if (!tracks)
        return nullptr;
    auto model = newObject<CvProject>(
        String(info->getApplicationName()), String(info->getApplicationVersion()));
    exportTransport(*project_, *model);
    exportMixer(*model);
    while (!tracks->isDone()) {
        FUnknown* object = tracks->next();
        if (!object)
            continue;
        auto track = IPtr<CvTrack>::adopt(exportTrack({model.get(), context.get(), object}));
        if (track)
            model->addTrack(track.get());
    }
    return static_cast<IMediaProject*>(model.release());
}

void CvHostProjectExporter::exportTransport(IHostProject& project, CvProject& model) {
    if (IHostTempoTrack* tempoTrack = project.getTempoTrack()) {
        float bpm = tempoTrack->getTempoAt(0.0);
        if (tempoTrack->isTempoFixed())
            bpm = tempoTrack->getFixedTempo();
        auto tempo = newObject<CvParameter>(kUnitBpm);
        tempo->setMin(kTempoMinimum);
        tempo->setMax(kTempoMaximum);
        tempo->setValue(bpm);
        model.setTempo(tempo.get());
    }
    if (IHostSignatureTrack* signatureTrack = project.getSignatureTrack()) {
        QuorSignatureRecord record{};
        if (signatureTrack->getSignatureAt(0.0, &record)) {
            auto signature = newObject<CvSignature>(record.numerator, record.denominator, String());
            model.setTimeSignature(signature.get());
        }
    }
}

void CvHostProjectExporter::exportMixer(CvProject& model) {
    auto registry = hostService<IHostObjectRegistry>(host_.get());
    IHostParameterOwner* mixer = registry ? registry->findObject("QUOR Mixer", 0) : nullptr;
    IHostParameterOwner* list = findChild(mixer, String("Channels"));
    if (!list)
        return;
    struct Exported {
        IPtr<CvChannel> channel;
        CvProjectDevice* device;
    };
    std::vector<Exported> exported;
    int32 count = list->getChildCount();
    for (int32 index = 0; index < count; ++index) {
        IHostParameterOwner* object = list->getChild(index);
        uint32 role = object ? channelRole(object->getName()) : 0;
        if (!role)
            continue;
        auto channel = IPtr<CvChannel>::adopt(exportChannel(object, 1, role));
        if (!channel)
            continue;
        model.addChannel(channel.get());
        exported.push_back(
            {channel, findDevice(channel->getNodeId())});
    }
    // Second pass: a channel may feed one that stood later in the mixer, which the first pass
    // hadn't registered yet.
    for (auto& entry : exported) {
        if (!entry.device)
            continue;
        String destination = findDestination(entry.device->object);
        if (!destination.isEmpty())
            entry.channel->setDestination(destination);
    }
}

} // namespace Halvorn

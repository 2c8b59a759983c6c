// The workstation's context, its services, and the making and closing of a session.
#include "workstation.h"
#include "faderlaw.h"
#include "text.h"

namespace Halvorn {
namespace RefHost {

namespace {
// Makes a T and gives its face for iid to the caller; the creation reference goes away.
template <class T, class... Args>
tresult giveNew(Ledger& ledger, const FUID& iid, void** out, Args&&... args) {
    auto made = ledger.make<T>(std::forward<Args>(args)...);
    return made->queryInterface(iid, out);
}
} // namespace

tresult Context::getInterface(const FUID& iid, void** out) {
    if (!out)
        return kInvalidArgument;
    *out = nullptr;
    if (ledger().refuses(iid))
        return kNoInterface;
    Workstation& s = station_;
    Ledger& l = ledger();
    FUnknown* shared = nullptr;
    if (iid == IHostProjectManager::iid)
        shared = static_cast<IHostProjectManager*>(s.manager_.get());
    else if (iid == IHostObjectRegistry::iid)
        shared = static_cast<IHostObjectRegistry*>(s.registry_.get());
    else if (iid == IHostProjectTools::iid)
        shared = static_cast<IHostProjectTools*>(s.tools_.get());
    else if (iid == IHostVolumeCurve::iid)
        shared = static_cast<IHostVolumeCurve*>(s.curve_.get());
    else if (iid == IHostDefaults::iid)
        shared = static_cast<IHostDefaults*>(s.defaults.get());
    else if (iid == IPathBrowser::iid)
        shared = static_cast<IPathBrowser*>(s.browser_.get());
    if (shared)
        return shared->queryInterface(iid, out);
    if (iid == IHostUrl::iid)
        return giveNew<Url>(l, iid, out);
    if (iid == IHostAudioFile::iid)
        return giveNew<AudioFile>(l, iid, out);
    if (iid == IHostAudioClip::iid)
        return giveNew<AudioClip>(l, iid, out);
    if (iid == IHostVideoClip::iid)
        return giveNew<VideoClip>(l, iid, out);
    if (iid == IHostSpeakerList::iid)
        return giveNew<SpeakerList>(l, iid, out);
    if (iid == IHostEditSession::iid)
        return giveNew<EditSession>(l, iid, out, s.history);
    if (iid == IHostProgressDialog::iid)
        return giveNew<ProgressDialog>(l, iid, out, s.progressOut);
    if (iid == IAudioEvent::iid)
        return giveNew<AudioEvent>(l, iid, out);
    if (iid == IAudioPart::iid)
        return giveNew<AudioPart>(l, iid, out);
    if (iid == IMarkerObject::iid)
        return giveNew<MarkerEvent>(l, iid, out);
    if (iid == IMidiPart::iid)
        return giveNew<MidiPart>(l, iid, out);
    if (iid == IVideoEvent::iid)
        return giveNew<VideoEvent>(l, iid, out);
    if (iid == ITempoObject::iid)
        return giveNew<TempoEvent>(l, iid, out);
    if (iid == ISignatureObject::iid)
        return giveNew<SignatureEvent>(l, iid, out);
    if (iid == IHostNoteEvent::iid)
        return giveNew<NoteEvent>(l, iid, out);
    if (iid == IHostAutomationPoint::iid)
        return giveNew<AutomationPoint>(l, iid, out);
    return kNoInterface;
}

const char16* Context::getApplicationName() { return station_.applicationName.c_str(); }

const char16* Context::getApplicationVersion() { return station_.applicationVersion.c_str(); }

FUnknown* Context::faceFor(const FUID& iid) {
    if (iid == FUnknown::iid || iid == IHostContext::iid)
        return static_cast<IHostContext*>(this);
    return Support::faceOf<IHostApplicationInfo>(iid, this);
}

IHostProject* ProjectManager::getActiveProject() { return station_.project.get(); }

FUnknown* ProjectManager::faceFor(const FUID& iid) {
    if (iid == FUnknown::iid || iid == IHostProjectManager::iid)
        return static_cast<IHostProjectManager*>(this);
    return nullptr;
}

IHostParameterOwner* ObjectRegistry::findObject(const char8* name, int32) {
    if (!name || !station_.mixer || station_.mixer->name != name)
        return nullptr;
    return station_.mixer.get();
}

FUnknown* ObjectRegistry::faceFor(const FUID& iid) {
    if (iid == FUnknown::iid || iid == IHostObjectRegistry::iid)
        return static_cast<IHostObjectRegistry*>(this);
    return nullptr;
}

tresult ProjectTools::setBusArrangement(IHostChannelBus* bus, uint32 speakerMask) {
    auto* channel = hostCast<Channel>(bus);
    if (!channel || speakerMask == 0)
        return kInvalidArgument;
    channel->speakers = speakerMask;
    return kResultOk;
}

tresult ProjectTools::getEventStretch(FUnknown* face, double* ratio) {
    auto* event = hostCast<AudioEvent>(face);
    if (!event || !ratio)
        return kInvalidArgument;
    *ratio = event->stretch;
    return kResultOk;
}

tresult ProjectTools::setEventStretch(FUnknown* face, double ratio) {
    auto* event = hostCast<AudioEvent>(face);
    if (!event || !(ratio > 0.0))
        return kInvalidArgument;
    event->stretch = ratio;
    return kResultOk;
}

bool ProjectTools::isTrackLoaded(FUnknown* face) {
    auto* track = hostCast<Track>(face);
    return track && track->loaded;
}

tresult ProjectTools::setTrackLoaded(FUnknown* face, bool loaded) {
    auto* track = hostCast<Track>(face);
    if (!track)
        return kInvalidArgument;
    track->loaded = loaded;
    return kResultOk;
}

tresult ProjectTools::getPluginClass(IHostParameter* face, FUID& classId) {
    auto* parameter = hostCast<Parameter>(face);
    if (!parameter || !parameter->slot)
        return kInvalidArgument;
    Plugin* plugin = parameter->slot->plugin();
    if (!plugin)
        return kResultFalse;
    classId = plugin->type.cid;
    return kResultOk;
}

tresult ProjectTools::setPluginClass(IHostParameter* face, const FUID& classId) {
    auto* parameter = hostCast<Parameter>(face);
    if (!parameter || !parameter->slot)
        return kInvalidArgument;
    const PluginClass* type = station_.catalogue.find(classId);
    if (!type)
        return kResultFalse;
    parameter->slot->setPlugin(station_.makePlugin(*type).get());
    return kResultOk;
}

bool ProjectTools::isEventWarped(FUnknown* face) {
    auto* event = hostCast<AudioEvent>(face);
    return event && event->warped;
}

FUnknown* ProjectTools::faceFor(const FUID& iid) {
    if (iid == FUnknown::iid || iid == IHostProjectTools::iid)
        return static_cast<IHostProjectTools*>(this);
    return nullptr;
}

double VolumeCurve::gainToValue(double gain, int32 curve, bool) {
    return faderValue(gain, curve, maximumGain_);
}

double VolumeCurve::valueToGain(double value, int32 curve) {
    return faderGain(value, curve, maximumGain_);
}

FUnknown* VolumeCurve::faceFor(const FUID& iid) {
    if (iid == FUnknown::iid || iid == IHostVolumeCurve::iid)
        return static_cast<IHostVolumeCurve*>(this);
    return nullptr;
}

Workstation::Workstation() {
    mixer = ledger.make<Mixer>();
    project = ledger.make<Project>(mixer.get());
    project->name = u"Untitled";
    project->pool = ledger.make<MediaPool>();
    project->makeTrack = [this](const std::string& type) { return makeTrack(type); };
    defaults = ledger.make<Defaults>();
    context_ = ledger.make<Context>(*this);
    manager_ = ledger.make<ProjectManager>(*this);
    registry_ = ledger.make<ObjectRegistry>(*this);
    tools_ = ledger.make<ProjectTools>(*this);
    curve_ = ledger.make<VolumeCurve>(mixer->maximumGain);
    browser_ = ledger.make<PathBrowser>(dialogs);
}

Workstation::~Workstation() { close(); }

LedgerReport Workstation::close() {
    if (!closed_) {
        closed_ = true;
        context_ = nullptr;
        manager_ = nullptr;
        registry_ = nullptr;
        tools_ = nullptr;
        curve_ = nullptr;
        browser_ = nullptr;
        defaults = nullptr;
        project = nullptr;
        mixer = nullptr;
    }
    return ledger.report();
}

std::string Workstation::newId(const std::string& prefix) {
    for (size_t number = ids_.size() + 1;; ++number) {
        std::string id = prefix + "-" + std::to_string(number);
        if (claimId(id))
            return id;
    }
}

bool Workstation::claimId(const std::string& id) { return ids_.insert(id).second; }

IPtr<Channel> Workstation::makeChannel(const std::string& kind, const std::string& id) {
    auto channel = ledger.make<Channel>(kind, id, &mixer->maximumGain);
    for (int32 slot = 0; slot < Channel::kSendSlots; ++slot)
        channel->addSend();
    // A new channel plays through the first output channel, as a real mixer's does.
    for (auto& owner : mixer->channelList().children)
        if (auto* output = dynamic_cast<Channel*>(owner.get());
            output && output->name == "OutputChannel") {
            channel->setDestination(output);
            break;
        }
    // The template was checked when the session loaded; a new channel takes what it can.
    try {
        addModules(*this, *channel, stripTemplate, "$.mixer.strip");
    } catch (...) {
    }
    return channel;
}

IPtr<Track> Workstation::makeTrack(const std::string& type) {
    IPtr<Track> track;
    if (type == "tempo")
        track = IPtr<Track>(ledger.make<TempoTrack>(mixer.get()).get());
    else if (type == "signature")
        track = IPtr<Track>(ledger.make<SignatureTrack>(mixer.get()).get());
    else
        track = ledger.make<Track>(type, mixer.get());
    track->id = newId("track");
    if (const char* kind = channelKindOf(type)) {
        track->channel = makeChannel(kind, newId("channel"));
        track->folder = ledger.make<AutomationFolder>(*track);
    }
    return track;
}

IPtr<Plugin> Workstation::makePlugin(const PluginClass& type) { return ledger.make<Plugin>(type); }

} // namespace RefHost
} // namespace Halvorn

// The reference host's workstation: one open session with its project, mixer, plug-in
// catalogue, settings and dialogs, the host context that a plug-in is given, and the services
// that the context hands out.
#pragma once

#include "dialogs.h"
#include "editing.h"
#include "hostapi/hostcontext.h"
#include "hostapi/hostmixer.h"
#include "ledger.h"
#include "mixer.h"
#include "plugins.h"
#include "tracks.h"

#include <nlohmann/json.hpp>

#include <cstdio>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace Halvorn {
namespace RefHost {

class Workstation;

class Context : public HostObject, public IHostContext, public IHostApplicationInfo {
public:
    Context(Ledger& ledger, Workstation& station)
        : HostObject(ledger, "host context"), station_(station) {}

    SUPPORT_COUNTED_UNKNOWN
    tresult getInterface(const FUID& iid, void** out) override;
    const char16* getApplicationName() override;
    const char16* getApplicationVersion() override;

protected:
    FUnknown* faceFor(const FUID& iid) override;

private:
    Workstation& station_;
};

class ProjectManager : public HostObject, public IHostProjectManager {
public:
    ProjectManager(Ledger& ledger, Workstation& station)
        : HostObject(ledger, "project manager"), station_(station) {}

    SUPPORT_COUNTED_UNKNOWN
    IHostProject* getActiveProject() override;

protected:
    FUnknown* faceFor(const FUID& iid) override;

private:
    Workstation& station_;
};

class ObjectRegistry : public HostObject, public IHostObjectRegistry {
public:
    ObjectRegistry(Ledger& ledger, Workstation& station)
        : HostObject(ledger, "object registry"), station_(station) {}

    SUPPORT_COUNTED_UNKNOWN
    IHostParameterOwner* findObject(const char8* name, int32 flags) override;

protected:
    FUnknown* faceFor(const FUID& iid) override;

private:
    Workstation& station_;
};

class ProjectTools : public HostObject, public IHostProjectTools {
public:
    ProjectTools(Ledger& ledger, Workstation& station)
        : HostObject(ledger, "project tools"), station_(station) {}

    SUPPORT_COUNTED_UNKNOWN
    tresult setBusArrangement(IHostChannelBus* bus, uint32 speakerMask) override;
    tresult getEventStretch(FUnknown* event, double* ratio) override;
    tresult setEventStretch(FUnknown* event, double ratio) override;
    bool isTrackLoaded(FUnknown* track) override;
    tresult setTrackLoaded(FUnknown* track, bool loaded) override;
    tresult getPluginClass(IHostParameter* slotParameter, FUID& classId) override;
    tresult setPluginClass(IHostParameter* slotParameter, const FUID& classId) override;
    bool isEventWarped(FUnknown* event) override;

protected:
    FUnknown* faceFor(const FUID& iid) override;

private:
    Workstation& station_;
};

class VolumeCurve : public HostObject, public IHostVolumeCurve {
public:
    VolumeCurve(Ledger& ledger, const double& maximumGain)
        : HostObject(ledger, "volume curve"), maximumGain_(maximumGain) {}

    SUPPORT_COUNTED_UNKNOWN
    double gainToValue(double gain, int32 curve, bool flag) override;
    double valueToGain(double value, int32 curve) override;

protected:
    FUnknown* faceFor(const FUID& iid) override;

private:
    const double& maximumGain_;
};

class Workstation {
public:
    // An empty session: a project without tracks and a mixer with one output channel.
    Workstation();
    ~Workstation();
    Workstation(const Workstation&) = delete;
    Workstation& operator=(const Workstation&) = delete;

    // A session from a session file; null with a message naming the place of the fault.
    static std::unique_ptr<Workstation> load(const std::string& path, std::string& error);
    static std::unique_ptr<Workstation> fromJson(const nlohmann::json& session,
                                                 const std::string& baseFolder, std::string& error);
    // The session as a session file. Clips that events use join the pool, and media without
    // an id get one, so that the file loads again.
    nlohmann::json toJson();
    [[nodiscard]] bool save(const std::string& path, std::string& error);

    // Borrowed, valid until close: what a plug-in is given as its host.
    IHostContext* context() const { return context_.get(); }
    // Gives up the session and reports what is still referenced or was misused. Once only.
    LedgerReport close();

    // A fresh identifier with this prefix, unused in the session.
    std::string newId(const std::string& prefix);
    [[nodiscard]] bool claimId(const std::string& id);
    IPtr<Track> makeTrack(const std::string& type);
    IPtr<Channel> makeChannel(const std::string& kind, const std::string& id);
    IPtr<Plugin> makePlugin(const PluginClass& type);

    Ledger ledger;
    std::u16string applicationName = u"Quor Reference Host";
    std::u16string applicationVersion = u"1.0";
    Catalogue catalogue;
    DialogScript dialogs;
    std::vector<EditStep> history;
    // Channel strip modules that every new channel gets, as the session file gives them.
    nlohmann::json stripTemplate = nlohmann::json::array();
    // Where progress dialogs draw; null draws nothing.
    std::FILE* progressOut = stderr;

    IPtr<Project> project;
    IPtr<Mixer> mixer;
    IPtr<Defaults> defaults;
    IPtr<MediaPool> pool() const { return project->pool; }

private:
    IPtr<Context> context_;
    IPtr<ProjectManager> manager_;
    IPtr<ObjectRegistry> registry_;
    IPtr<ProjectTools> tools_;
    IPtr<VolumeCurve> curve_;
    IPtr<PathBrowser> browser_;
    std::set<std::string> ids_;
    bool closed_ = false;

    friend class Context;
};

// Adds the channel strip modules described by a session file's list to channel; throws
// SessionError. Shared by loading and by making new channels.
void addModules(Workstation& station, Channel& channel, const nlohmann::json& modules,
                const std::string& where);

} // namespace RefHost
} // namespace Halvorn

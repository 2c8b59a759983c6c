// CvHostProjectExporter: the host's open project into a project model, in one read-only pass.
#pragma once

#include "corvelle/package.h"
#include "hostexport/cvhostutilities.h"
#include "hostexport/cvhostvolumetranslator.h"
#include "model/cvproject.h"
#include "model/cvtrack.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace Halvorn {

// One neutral parameter of a channel strip module: the module's title, the model's name, unit.
struct CvNeutralRow;

// What the track walk hands down: the model being built, the project's top-level context and
// the host's track. Borrowed, valid for the walk.
struct CvExportContext {
    CvProject* project;
    Quor::IHostEditContext* context;
    FUnknown* track;
};

// Serves one run. It changes nothing in the host; its only writing is one state file per
// plug-in in the client's preset folder. Ids are "id0", "id1", ... in order of making.
class CvHostProjectExporter : public CvObject {
public:
    CV_DECLARE_TYPE(CvHostProjectExporter, CvObject)

    using CvProjectDevice = CvHostUtilities::CvProjectDevice;

    CvHostProjectExporter(Quor::IHostContext* host, IMediaPackageManagerClient* client);

    // The model with one reference, which passes to the caller; null without a host, client,
    // open project, application info, top-level context or track list.
    [[nodiscard]] IMediaProject* run();

    String newId();
    // Borrowed, valid while the exporter lives; the first entry that matches, or null.
    CvProjectDevice* findDevice(const String& id) const;
    CvProjectDevice* findDevice(Quor::IHostParameterOwner* object) const;
    CvParameterContainer* findContainer(const char16* id) const;

    // One reference each, the caller releases; null when the host object gives nothing.
    [[nodiscard]] CvChannel* exportChannel(Quor::IHostParameterOwner* object, uint32 kind,
                                           uint32 role);
    [[nodiscard]] CvDevice* exportDevice(Quor::IHostParameterOwner* slot,
                                         Quor::IHostParameterOwner* plugin, uint32 type,
                                         uint32 role);
    [[nodiscard]] CvTrack* exportTrack(const CvExportContext& ctx);

    // One setting of a plug-in, found by the title of its controller's parameter, with bounds
    // and value read from the display texts; one reference, or null.
    [[nodiscard]] CvParameter* exportPluginParameter(const String& id,
                                                     Quor::IHostParameterOwner* plugin,
                                                     const String& title, const String& name,
                                                     uint32 unit);

    // The id of the channel that object feeds, found by title among the registered objects
    // and confirmed by the host's routing; empty when there is none.
    String findDestination(Quor::IHostParameterOwner* object);

protected:
    ~CvHostProjectExporter() override = default;

private:
    void exportTransport(Quor::IHostProject& project, CvProject& model);
    void exportMixer(CvProject& model);
    void exportSend(Quor::IHostParameterOwner* slot, CvChannel& channel);
    void exportChannelParameters(Quor::IHostParameterOwner* object, CvChannel& channel);
    void exportChannelStrip(Quor::IHostParameterOwner* object, CvChannel& channel);
    [[nodiscard]] CvDevice* exportModule(Quor::IHostParameterOwner* slot,
                                         Quor::IHostParameterOwner* module, uint32 type);
    template <size_t N>
    void addNeutralParameters(CvParameterContainer& target, Quor::IHostParameterOwner* module,
                              const CvNeutralRow (&rows)[N], int32 band);
    void addAutoMakeUp(CvDevice& device, Quor::IHostParameterOwner* module);
    void addBands(CvEqualizer& equalizer, Quor::IHostParameterOwner* module);
    [[nodiscard]] CvTrack* makeTrack(uint32 contentType, Quor::IHostEditContext* context,
                                     FUnknown* object);
    [[nodiscard]] CvClip* makeClip(Quor::IHostEditContext* trackContext,
                                   Quor::IHostTimelineEvent* event, uint32 eventType);
    // Audio, video and instrument tracks: clips from the track's children, then the channel.
    [[nodiscard]] CvTrack* exportMediaTrack(const CvExportContext& ctx, uint32 contentType);
    template <class I, class MakeEvent>
    [[nodiscard]] CvTrack* exportListTrack(const CvExportContext& ctx, uint32 contentType,
                                           uint32 eventType, const char8* name,
                                           MakeEvent&& makeEvent);
    [[nodiscard]] CvTrack* exportTempoTrack(const CvExportContext& ctx);
    [[nodiscard]] CvTrack* exportSignatureTrack(const CvExportContext& ctx);
    [[nodiscard]] CvTrack* exportMarkerTrack(const CvExportContext& ctx);
    [[nodiscard]] CvTrack* exportFolderTrack(const CvExportContext& ctx);
    void addAudioClip(CvTrack& track, Quor::IHostEditContext* trackContext,
                      Quor::IAudioEvent* event);
    void addVideoClip(CvTrack& track, Quor::IHostEditContext* trackContext,
                      Quor::IVideoEvent* event);
    void addMidiClip(CvTrack& track, Quor::IHostEditContext* trackContext, Quor::IMidiPart* part);
    void exportTrackChannel(Quor::IHostEditContext* context, Quor::IHostTrackChannel* hostChannel,
                            CvTrack* track, CvProject* project);
    void exportAutomatedParameters(CvDevice* device, Quor::IHostParameterOwner* plugin,
                                   Quor::IHostObjectType* hostTrack);
    void exportAutomation(Quor::IHostEditContext* context, CvTrack* track,
                          Quor::IHostObjectType* hostTrack);
    void writeStateFile(Quor::IHostParameterOwner* plugin, CvDevice& device);
    void registerContainer(CvParameterContainer* container, Quor::IHostParameterOwner* object);
    // A fader or send level as linear gain, added to container; nothing without a gain scale.
    void addGainParameter(Quor::IHostParameter* volume, CvParameterContainer& container);
    CvProjectDevice* findDeviceByTitle(const String& title) const;
    const std::vector<CvProjectDevice*>* devicesTitled(const String& title) const;

    TArray<IPtr<CvProjectDevice>> devices_{-1};
    TArray<IPtr<CvParameterContainer>> containers_{-1};
    // Indexes over the registries: the first entry per id and per host object, so lookups stay
    // constant-time on large projects and give what a walk from the front would.
    std::unordered_map<std::string, CvProjectDevice*> devicesById_;
    std::unordered_map<Quor::IHostParameterOwner*, CvProjectDevice*> devicesByObject_;
    std::unordered_map<std::u16string, CvParameterContainer*> containersById_;
    // The registered host objects by their title, each list in registry order: destinations
    // are found by title, and the host's titles don't change during a run.
    std::unordered_map<std::u16string, std::vector<CvProjectDevice*>> devicesByTitle_;
    IPtr<Quor::IHostContext> host_;
    IPtr<Quor::IHostProject> project_;
    IPtr<IMediaPackageManagerClient> client_;
    IPtr<CvHostVolumeTranslator> translator_;
    IPtr<Quor::IHostProjectTools> tools_;
    uint64 nextId_ = 0;
};

} // namespace Halvorn

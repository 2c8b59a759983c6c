// CvHostProject: replays one project model into the project open in the host, as new tracks,
// parts, events, mixer channels, plug-ins and automation lanes, recorded as named edit steps.
#pragma once

#include "corvelle/mediaautomation.h"
#include "corvelle/mediaclip.h"
#include "corvelle/mediaproject.h"
#include "hostexport/cvhostvolumetranslator.h"
#include "hostimport/importregistry.h"
#include "hostimport/importsessions.h"
#include "model/cvobject.h"

namespace Halvorn {

class CvHostProject : public CvObject, public ICvProjectDeviceListener {
public:
    CV_DECLARE_TYPE(CvHostProject, CvObject)

    // host may be null, and the host may have no open project: the import then does nothing.
    explicit CvHostProject(IHostContext* host);

    // Gives no result: whatever became of single items, the host's history ends with one step
    // "Import Corvelle" once the sessions and the top-level context exist.
    void importProject(IMediaProject* model);

    // Registers a plug-in or send so that automation finds it; ignores an empty id or null.
    void deviceImported(const String& id, IHostParameterOwner* object) override;

    // The host track made for a model track, with its sub-tracks, clips and channel; borrowed,
    // or null when none was made.
    FUnknown* importTrack(IMediaTrack* track, ImportSessions& sessions);
    void applyChannelParameters(IHostParameterOwner* mixer, IMediaChannel* channel);
    void applyVolume(IHostParameterOwner* owner, IMediaParameter* volume);
    void importGroupChannel(IMediaChannel* channel, FUnknown* group, ImportSessions& sessions,
                            IHostProjectTools* tools);

protected:
    ~CvHostProject() override = default;

private:
    void importTransport(IMediaProject* model, ImportSessions& sessions);
    void importClip(FUnknown* hostTrack, IMediaClip* clip, ImportSessions& sessions);
    void importAudioClip(FUnknown* hostTrack, IMediaClip* clip, ImportSessions& sessions);
    void importMidiClip(FUnknown* hostTrack, IMediaClip* clip, ImportSessions& sessions);
    void importVideoClip(FUnknown* hostTrack, IMediaClip* clip, ImportSessions& sessions);
    void importMarkerClip(FUnknown* hostTrack, IMediaClip* clip, ImportSessions& sessions);
    // One reference, or null: an audio event on the event's file, its clip set in local.
    IPtr<IAudioEvent> createAudioEvent(IMediaEvent* event, ImportSessions& local);
    void importSubTracks(FUnknown* hostTrack, IMediaTrack* track, ImportSessions& sessions);
    void importChannels(IMediaProject* model, ImportSessions& sessions, IHostProjectTools* tools);
    void importSends(IMediaChannel* channel);
    void importAutomation(IMediaProject* model, IHostEditSession* step, IHostEditContext* context);
    void importLane(IMediaAutomation* automation, IMediaTrack* owner,
                    IMediaParameterContainer* container, IMediaParameter* parameter,
                    IHostEditSession* step, IHostEditContext* context);
    void applyNormalized(IHostParameterOwner* owner, const char8* id, IMediaParameter* value);

    CvDeviceRegistry devices_;
    CvTrackRegistry tracks_;
    IPtr<IHostContext> host_;
    IPtr<IHostProject> project_;
    IPtr<CvHostVolumeTranslator> translator_;
};

} // namespace Halvorn

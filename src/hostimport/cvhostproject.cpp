// The order of a whole import, and its transport stage.
#include "hostimport/cvhostproject.h"
#include "hostimport/importutilities.h"
#include "hostimport/transportimport.h"

namespace Halvorn {

using namespace CvHostUtilities;

namespace {
// The host's progress dialog, open while it lives; nothing when the host has none. The import
// keeps its own, since the shell's dialog lies above this layer.
class ImportProgress {
public:
    explicit ImportProgress(IHostContext* host) : dialog_(hostService<IHostProgressDialog>(host)) {
        if (dialog_) {
            dialog_->setup(3, u"Import Corvelle", &cancelFlag_);
            dialog_->open();
        }
    }
    ~ImportProgress() {
        if (dialog_)
            dialog_->close();
    }
    ImportProgress(const ImportProgress&) = delete;
    ImportProgress& operator=(const ImportProgress&) = delete;

    void setText(const char16* text) {
        if (dialog_)
            dialog_->setText(text);
    }

private:
    IPtr<IHostProgressDialog> dialog_;
    // Handed to the host and never read: an import runs to its end.
    uint8 cancelFlag_ = 0;
};

IMediaTrack* findTrackByContent(IMediaProject* model, uint32 contentType) {
    for (uint32 index = 0, count = model->getTrackCount(); index < count; ++index) {
        IMediaTrack* track = model->getTrack(index);
        if (track && track->getContentType() == contentType)
            return track;
    }
    return nullptr;
}

// Adds a borrowed special track to the project: add takes over a reference of its own.
void addSpecialTrack(FUnknown* track, IHostProject* project, ImportSessions& sessions) {
    track->addRef();
    sessions.step->add(sessions.context.get(), track);
    sessions.step->commit(project, u"Import Track");
}

// Merges the events of a model tempo or signature track into the host's track of that kind.
void mergeTransportTrack(IHostContext* host, IMediaTrack* track, FUnknown* hostTrack,
                         ImportSessions& sessions) {
    ImportSessions local =
        sessions.at(IPtr<IHostEditContext>::adopt(sessions.context->contextFor(hostTrack)));
    local.owner = Halvorn::queryInterface<IHostTimelineObject>(hostTrack);
    importTransportEvents(host, track, local);
}
} // namespace

CvHostProject::CvHostProject(IHostContext* host) : host_(host) {
    IPtr<IHostProjectManager> manager = hostService<IHostProjectManager>(host);
    if (manager)
        project_ = IPtr<IHostProject>(manager->getActiveProject());
    translator_ = IPtr<CvHostVolumeTranslator>::adopt(new CvHostVolumeTranslator(host));
}

void CvHostProject::deviceImported(const String& id, IHostParameterOwner* object) {
    if (!id.isEmpty() && object)
        devices_.add(id, object);
}

void CvHostProject::importProject(IMediaProject* model) {
    if (!model || !project_)
        return;
    ImportSessions sessions;
    sessions.outer = hostService<IHostEditSession>(host_.get());
    sessions.step = hostService<IHostEditSession>(host_.get());
    if (!sessions.outer || !sessions.step)
        return;
    sessions.outer->setMode(2);
    sessions.step->setMode(2);
    sessions.context = IPtr<IHostEditContext>::adopt(project_->getEditContext(0));
    if (!sessions.context)
        return;
    ImportProgress progress(host_.get());

    // New plug-ins would each open their editor during the import.
    IPtr<IHostObjectRegistry> registry = hostService<IHostObjectRegistry>(host_.get());
    IHostParameterOwner* mixer = registry ? registry->findObject("QUOR Mixer", 0) : nullptr;
    IPtr<IHostParameter> editors =
        mixer ? IPtr<IHostParameter>::adopt(mixer->findParameter("autoOpenPluginEditor")) : nullptr;
    double editorsBefore = 0.0;
    if (editors) {
        editorsBefore = editors->getNormalized();
        editors->setNormalized(0.0f, true);
    }

    progress.setText(u"Import Transport");
    importTransport(model, sessions);

    progress.setText(u"Import Tracks");
    bool selected = false;
    for (uint32 index = 0, count = model->getTrackCount(); index < count; ++index) {
        IMediaTrack* track = model->getTrack(index);
        FUnknown* made = track ? importTrack(track, sessions) : nullptr;
        IPtr<IHostTimelineEvent> event = Halvorn::queryInterface<IHostTimelineEvent>(made);
        if (event && !selected) {
            event->setSelected(sessions.context.get(), true);
            selected = true;
        }
    }
    IPtr<IHostProjectTools> tools = hostService<IHostProjectTools>(host_.get());
    if (model->getChannelCount() != 0)
        importChannels(model, sessions, tools.get());
    importAutomation(model, sessions.step.get(), sessions.context.get());

    if (editors)
        editors->setNormalized(float(editorsBefore), false);
    sessions.outer->commit(project_.get(), u"Import Corvelle");
}

void CvHostProject::importTransport(IMediaProject* model, ImportSessions& sessions) {
    IHostTempoTrack* tempoTrack = project_->getTempoTrack();
    IMediaParameter* tempo = model->getTempo();
    if (tempoTrack && tempo) {
        setTempoAtStart(project_.get(), sessions.context.get(), tempo->getValue());
        if (IMediaTrack* track = findTrackByContent(model, kContentTempo)) {
            if (findTrackOfType(project_.get(), "tempo"))
                addSpecialTrack(tempoTrack, project_.get(), sessions);
            mergeTransportTrack(host_.get(), track, tempoTrack, sessions);
        }
    }
    IHostSignatureTrack* signatureTrack = project_->getSignatureTrack();
    IMediaSignature* signature = model->getTimeSignature();
    if (signatureTrack && signature) {
        signatureTrack->setSignature(0, signature->getNumerator(), signature->getDenominator());
        if (IMediaTrack* track = findTrackByContent(model, kContentSignature)) {
            if (!findTrackOfType(project_.get(), "signature"))
                addSpecialTrack(signatureTrack, project_.get(), sessions);
            mergeTransportTrack(host_.get(), track, signatureTrack, sessions);
        }
    }
}

} // namespace Halvorn

// CvXmlWriter: a project, seen through its IMedia interfaces, as project.xml and a package tree.
#pragma once

#include "corvelle/mediaproject.h"
#include "foundation/fstream.h"
#include "foundation/fstring.h"
#include "foundation/tarray.h"
#include "model/cvfile.h"
#include "model/cvobject.h"

namespace Halvorn {

class CvXmlOutput;

// Walks the model through its interfaces alone, so it writes any implementation of them. While
// it walks, it copies every audio, video and plug-in state file into the folders "audio",
// "video" and "plugins" of the package tree and writes the relative path into the document.
// Of two files with the same name the first one stays, and later references point at it.
// It makes up no id and converts no value but the plug-in parameter numbers. Whatever the model
// gives, the document is well-formed: an object that lacks an interface is left out, an empty
// text leaves its attribute out, and text is made safe for XML.
class CvXmlWriter : public CvObject {
public:
    CV_DECLARE_TYPE(CvXmlWriter, CvObject)

    // Tracks nested deeper than this are left out, so that a model with a cycle of sub-tracks
    // can't exhaust the stack.
    static constexpr uint32 kMaxTrackDepth = 256;

    explicit CvXmlWriter(const String& packageFolder);
    ~CvXmlWriter() override = default;

    // False for a null argument, a stream that can't take the output, a stream that failed
    // during the writing (so that no cut document is ever packed), or a medium that exists but
    // couldn't be copied whole into the tree (a full disk). The stream stays the caller's.
    [[nodiscard]] bool writeProject(IMediaProject* project, FStream* stream);
    // The fixed metadata skeleton; false without a stream or when it fails.
    [[nodiscard]] bool writeMetaData(FStream* stream);

private:
    void writeApplication(CvXmlOutput& out, IMediaProject* project);
    void writeTransport(CvXmlOutput& out, IMediaProject* project);
    void writeTrack(CvXmlOutput& out, IMediaTrack* track, uint32 depth);
    void writeChannel(CvXmlOutput& out, IMediaChannel* channel);
    void writeChannelHead(CvXmlOutput& out, IMediaChannel* channel);
    void writeSend(CvXmlOutput& out, IMediaSend* send);
    void writeColor(CvXmlOutput& out, IMediaObject* object);
    void writeObjectIdentity(CvXmlOutput& out, FUnknown* object);
    void writeDevice(CvXmlOutput& out, IMediaDevice* device);
    void writePluginParameters(CvXmlOutput& out, IMediaParameterContainer* container);
    void writeBuiltinParameters(CvXmlOutput& out, IMediaParameterContainer* container);
    void writeEqualizerBands(CvXmlOutput& out, IMediaDevice* device);
    void writeRealParameter(CvXmlOutput& out, IMediaParameter* parameter, const char8* label);
    void writeSwitchParameter(CvXmlOutput& out, IMediaParameter* parameter, const char8* label);
    void writeArrangement(CvXmlOutput& out, IMediaProject* project);
    void collectLanes(IMediaTrack* track, uint32 depth, TArray<IMediaTrack*>& lanes);
    void writeTempoAutomation(CvXmlOutput& out, IMediaTrack* track);
    void writeSignatureAutomation(CvXmlOutput& out, IMediaTrack* track);
    void writeMarkers(CvXmlOutput& out, IMediaTrack* track);
    void writeLane(CvXmlOutput& out, IMediaTrack* track);
    void writeClip(CvXmlOutput& out, IMediaClip* clip);
    void writeAutomation(CvXmlOutput& out, IMediaAutomation* automation);
    void writeAudioContent(CvXmlOutput& out, IMediaClip* clip);
    void writeAudioEvent(CvXmlOutput& out, IMediaEvent* event);
    void writeVideoContent(CvXmlOutput& out, IMediaClip* clip);
    void writeNotes(CvXmlOutput& out, IMediaClip* clip);

    // Puts the file at sourcePath into the tree's folder folderName unless a file of its name
    // is there already, and gives its path in the document ("audio/name"). True when a file of
    // that name lies in the tree afterwards. Only a path that may stand for a medium of the type
    // is taken (see isAcceptableOutsideMedium); one that can't be copied whole marks the
    // writing as failed.
    [[nodiscard]] bool stageFile(const char16* sourcePath, CvFileType type, const char8* folderName,
                                 String& documentPath);

    String packageFolder;
    bool stagingFailed = false;
};

} // namespace Halvorn

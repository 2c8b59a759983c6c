// Runs the document writer on a model into a tree of the test's own and gives back the text.
#include "documentwriting.h"

#include "documents/cvxmlwriter.h"
#include "foundation/ffilesystem.h"
#include "model/cvdevice.h"
#include "model/cvevent.h"
#include "model/cvtrack.h"
#include "writertestsupport.h"

namespace WriterTest {

using namespace Halvorn;

namespace {

template <class Event>
void addTrackOf(CvProject* project, uint32 content, uint32 eventType, const char* id,
                const std::vector<std::string>& files) {
    auto track = newObject<CvTrack>(content, id);
    auto clip = newObject<CvClip>(eventType, String());
    for (const std::string& path : files) {
        auto event = newObject<Event>(String());
        event->setFile(toUtf16(path).c_str(), false);
        clip->addEvent(event.get());
    }
    track->addClip(clip.get());
    project->addTrack(track.get());
}

} // namespace

IPtr<CvProject> projectOf(const std::vector<std::string>& audio,
                          const std::vector<std::string>& video,
                          const std::vector<std::string>& states) {
    auto project = newObject<CvProject>("App", "1");
    addTrackOf<CvAudioEvent>(project.get(), kContentAudio, kEventAudio, "a", audio);
    addTrackOf<CvVideoEvent>(project.get(), kContentVideo, kEventVideo, "v", video);
    auto channel = newObject<CvChannel>(1, kChannelRoleMaster, "m");
    for (const std::string& path : states) {
        auto device = newObject<CvDevice>(kDeviceQuor3, kRoleAudioFX, String());
        device->setStateFile(String(path.c_str()), false);
        channel->addDevice(device.get());
    }
    project->addChannel(channel.get());
    return project;
}

std::string writeProjectDocument(IMediaProject* project, const std::string& tree, bool* written) {
    const std::string path = tree + "/project.xml";
    FStream* stream =
        gFNFileSystem->createStream(FUrl(String(path.c_str()), false), FStream::kWrite);
    if (!stream)
        return {};
    const bool ok = CvXmlWriter(String(tree.c_str())).writeProject(project, stream);
    gFNFileSystem->closeStream(stream);
    if (written)
        *written = ok;
    return readFile(path);
}

} // namespace WriterTest

// The export suites' fixture.
#include "exportfixture.h"

#include "hostexport/cvhostprojectexporter.h"
#include "package/cvpackagemanagerclient.h"

namespace Halvorn {
namespace ExportTest {

std::string nameOf(FUnknown* object) {
    auto node = queryInterface<IMediaObject>(object);
    return node ? utf8(node->getName()) : std::string();
}

std::string idOf(FUnknown* object) {
    auto node = queryInterface<IMediaObject>(object);
    return node ? utf8(node->getId()) : std::string();
}

namespace {
// Depth first through a project's or a folder's tracks.
template <class Container>
IMediaTrack* searchTracks(Container* container, const std::string& name) {
    for (uint32 index = 0; container && index < container->getTrackCount(); ++index) {
        IMediaTrack* track = container->getTrack(index);
        if (nameOf(track) == name)
            return track;
        if (IMediaTrack* inner = searchTracks(track, name))
            return inner;
    }
    return nullptr;
}
} // namespace

IMediaTrack* findTrack(IMediaProject* project, const std::string& name) {
    return searchTracks(project, name);
}

IMediaChannel* findChannel(IMediaProject* project, const std::string& name) {
    for (uint32 index = 0; project && index < project->getChannelCount(); ++index)
        if (nameOf(project->getChannel(index)) == name)
            return project->getChannel(index);
    return nullptr;
}

IMediaDevice* deviceOfType(IMediaChannel* channel, uint32 type) {
    for (uint32 index = 0; channel && index < channel->getDeviceCount(); ++index)
        if (channel->getDevice(index)->getDeviceType() == type)
            return channel->getDevice(index);
    return nullptr;
}

int idNumber(FUnknown* object) { return std::stoi(idOf(object).substr(2)); }

IPtr<IMediaProject> ExportTest::exportModel() {
    auto client = newObject<CvPackageManagerClient>();
    client->setPathForFileType(1, String(presetFolder().c_str()));
    auto exporter = newObject<CvHostProjectExporter>(host(), client.get());
    return IPtr<IMediaProject>::adopt(exporter->run());
}

nlohmann::json& ExportTest::entry(nlohmann::json& list, const std::string& id) {
    for (auto& item : list)
        if (item.value("id", "") == id)
            return item;
    throw std::runtime_error("no entry " + id);
}

} // namespace ExportTest
} // namespace Halvorn

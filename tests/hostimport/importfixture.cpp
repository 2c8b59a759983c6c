// The import fixture: an empty project in the example's workstation, and packages made in code.
#include "importfixture.h"

#include "hostimport/cvhostproject.h"
#include "package/cvpackagemanager.h"
#include "package/cvpackagemanagerclient.h"
#include "package/cvzipwriter.h"

#include <filesystem>
#include <fstream>

namespace Halvorn {
namespace HostImportTest {

namespace fs = std::filesystem;

std::string document(const std::string& structure, const std::string& arrangement,
                     const std::string& transport) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Project version=\"1.0\">" + transport +
           "<Structure>" + structure + "</Structure><Arrangement>" + arrangement +
           "</Arrangement></Project>";
}

nlohmann::json emptySession() {
    nlohmann::json session = RefHostTest::exampleSession();
    auto& tracks = session["project"]["tracks"];
    tracks = nlohmann::json::array({tracks[0], tracks[1]}); // the tempo and signature tracks
    session["project"]["folder"] = "project";
    session["media"] = nlohmann::json::array();
    session["history"] = nlohmann::json::array();
    nlohmann::json channels = nlohmann::json::array();
    for (auto& channel : session["mixer"]["channels"])
        if (channel["kind"] == "OutputChannel" || channel["kind"] == "InputChannel")
            channels.push_back(channel);
    session["mixer"]["channels"] = channels;
    return session;
}

void ImportTest::SetUp() {
    HostTest::SetUp();
    fs::create_directories(projectFolder());
    load(emptySession());
}

bool ImportTest::importPackage(const std::string& projectXml,
                               const std::map<std::string, std::string>& files,
                               IHostContext* host) {
    std::string tree = folder->path() + "/package-tree";
    fs::remove_all(tree);
    fs::create_directories(tree);
    std::ofstream(tree + "/project.xml", std::ios::binary) << projectXml;
    for (auto& [name, bytes] : files) {
        fs::create_directories(fs::path(tree + "/" + name).parent_path());
        std::ofstream(tree + "/" + name, std::ios::binary) << bytes;
    }
    std::string packagePath = folder->path() + "/test.corvelle";
    CvZipWriter zip;
    return zip.zipFolder(String(tree.c_str()), String(packagePath.c_str())) &&
           importFile(packagePath, host);
}

bool ImportTest::importFile(const std::string& packagePath, IHostContext* host) {

    auto client = IPtr<CvPackageManagerClient>::adopt(new CvPackageManagerClient);
    String base(projectFolder().c_str());
    const std::pair<int32, const char*> kinds[] = {
        {2, "/Audio"}, {4, "/Video"}, {1, "/Preset"}, {3, "/Midi"}};
    for (auto& [type, suffix] : kinds) {
        String path(base);
        path.append(suffix);
        client->setPathForFileType(type, path);
    }
    auto manager = IPtr<CvPackageManager>::adopt(new CvPackageManager);
    auto package = IPtr<IMediaProjectPackage>::adopt(
        manager->readPackage(String(packagePath.c_str()).text16(), client.get()));
    if (!package || !package->getProject())
        return false;
    auto importer = IPtr<CvHostProject>::adopt(new CvHostProject(host ? host : this->host()));
    importer->importProject(package->getProject());
    return true;
}

std::vector<std::string> ImportTest::stepNames() const {
    std::vector<std::string> names;
    for (auto& step : station->history)
        names.push_back(step.name);
    return names;
}

std::vector<std::string> ImportTest::actionsOf(const std::string& name) const {
    for (auto step = station->history.rbegin(); step != station->history.rend(); ++step)
        if (step->name == name)
            return step->actions;
    return {};
}

RefHost::Track* ImportTest::hostTrack(const std::u16string& name) const {
    for (RefHost::Track* track : station->project->allTracks())
        if (track->name == name)
            return track;
    return nullptr;
}

IPtr<IHostEditContext> ImportTest::contextFor(FUnknown* object) const {
    auto top = IPtr<IHostEditContext>::adopt(project()->getEditContext(0));
    return IPtr<IHostEditContext>::adopt(top->contextFor(object));
}

} // namespace HostImportTest
} // namespace Halvorn

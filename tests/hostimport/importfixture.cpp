// The import fixture: an empty project in the example's workstation, and packages made in code.
#include "importfixture.h"

#include "hostimport/cvhostproject.h"
#include "package/packagetestsupport.h"

#include <cmath>
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

float faderFor(double gain) { return float(std::cbrt(gain / 2.0)); }

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
                               const std::map<std::string, std::string>& files) {
    std::vector<PackageTest::RawEntry> entries = {{"project.xml", projectXml}};
    for (auto& [name, bytes] : files)
        entries.push_back({name, bytes});
    std::string packagePath = folder->path() + "/test.corvelle";
    std::ofstream(packagePath, std::ios::binary) << PackageTest::buildZip(entries);
    auto package = RefHostTest::readPackage(packagePath, projectFolder());
    if (!package || !package->getProject())
        return false;
    auto importer = IPtr<CvHostProject>::adopt(new CvHostProject(host()));
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

} // namespace HostImportTest
} // namespace Halvorn

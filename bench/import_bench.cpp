// Speed of importProject into the reference host, at twice the size against once, and against
// readPackage of the same package.
//
// The program writes a package of TRACKS instrument tracks, each with a channel, two inserts, a
// send to one FX channel, two automation lanes of 50 points and one clip of 50 notes, and one of
// twice as many. For each it times, in child processes, readPackage into a client's folders and
// importProject of the model read into an empty session of the reference host. It prints the
// medians, import at twice the size against once (goal: at most 2.2) and import against
// readPackage. Usage: corvelle_import_bench [ROUNDS] [TRACKS] (defaults 3 and 2000).
#include "hostimport/cvhostproject.h"
#include "package/cvpackagemanager.h"
#include "package/cvpackagemanagerclient.h"
#include "package/cvzipwriter.h"
#include "read_bench_support.h"
#include "workstation.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

using namespace Halvorn;
using namespace ReadBench;
namespace fs = std::filesystem;

constexpr int kPointsPerLane = 50;
constexpr int kNotesPerClip = 50;
constexpr double kGoal = 2.2;
constexpr const char* kCompressor = "5A1D3C2B7E444B1F9C0D2B8E6F4A1C35";
constexpr const char* kPlate = "0E6B9F143C214D7A8B5571C2A9D0E3F6";

std::string trackElement(int i) {
    std::string n = std::to_string(i);
    return "<Track contentType=\"notes\" id=\"t" + n + "\" name=\"Track " + n +
           "\"><Channel id=\"c" + n +
           "\" role=\"regular\" audioChannels=\"2\">"
           "<Volume id=\"v" +
           n +
           "\" value=\"1\" unit=\"linear\" min=\"0\" max=\"2\"/><Devices>"
           "<Quor3Plugin id=\"a" +
           n + "\" deviceRole=\"audioFX\" deviceID=\"" + kCompressor +
           "\"><Parameters><RealParameter id=\"p" + n +
           "\" name=\"Threshold\" value=\"0.5\" parameterID=\"0\"/></Parameters></Quor3Plugin>"
           "<Quor3Plugin id=\"b" +
           n + "\" deviceRole=\"audioFX\" deviceID=\"" + kPlate +
           "\"/></Devices><Sends><Send id=\"s" + n +
           "\" type=\"post\" destination=\"fx\">"
           "<Volume value=\"1\" unit=\"linear\" min=\"0\" max=\"2\"/></Send></Sends>"
           "</Channel></Track>";
}

std::string laneElement(int i) {
    std::string n = std::to_string(i);
    std::string lane =
        "<Lanes track=\"t" + n + "\"><Clips><Clip time=\"0\" duration=\"100\"><Notes>";
    for (int note = 0; note < kNotesPerClip; ++note)
        lane += "<Note time=\"" + std::to_string(note) + "\" duration=\"0.5\" key=\"" +
                std::to_string(36 + note) + "\" vel=\"0.8\"/>";
    lane += "</Notes></Clip></Clips>";
    for (const std::string& target : {"v" + n, "p" + n}) {
        lane += "<Points><Target parameter=\"" + target + "\"/>";
        for (int point = 0; point < kPointsPerLane; ++point)
            lane += "<RealPoint time=\"" + std::to_string(point + 1) + "\" value=\"0.5\"/>";
        lane += "</Points>";
    }
    return lane + "</Lanes>";
}

bool makePackage(const std::string& scratch, int tracks, const std::string& package) {
    const std::string tree = scratch + "/tree";
    fs::remove_all(tree);
    fs::create_directories(tree);
    std::ofstream out(tree + "/project.xml", std::ios::binary);
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Project version=\"1.0\"><Transport>"
           "<Tempo unit=\"bpm\" value=\"120\"/><TimeSignature numerator=\"4\" denominator=\"4\"/>"
           "</Transport><Structure>";
    for (int i = 0; i < tracks; ++i)
        out << trackElement(i);
    out << "<Channel id=\"fx\" name=\"Verb\" role=\"effect\"/></Structure><Arrangement>"
           "<Lanes timeUnit=\"seconds\">";
    for (int i = 0; i < tracks; ++i)
        out << laneElement(i);
    out << "</Lanes></Arrangement></Project>";
    out.close();
    CvZipWriter zip;
    return zip.zipFolder(String(tree.c_str()), String(package.c_str()));
}

nlohmann::json emptySession(const std::string& projectFolder) {
    auto plugin = [](const char* cid, const char* name) {
        return nlohmann::json{
            {"cid", cid}, {"name", name}, {"parameters", {{{"id", 0}, {"title", "Threshold"}}}}};
    };
    return {{"plugins",
             {plugin("5A1D3C2B-7E44-4B1F-9C0D-2B8E6F4A1C35", "Quor Compressor"),
              plugin("0E6B9F14-3C21-4D7A-8B55-71C2A9D0E3F6", "Quor Plate")}},
            {"mixer", {{"channels", {{{"id", "main"}, {"kind", "OutputChannel"}}}}}},
            {"project", {{"name", "Empty"}, {"folder", projectFolder}}}};
}

IPtr<IMediaProjectPackage> readInto(const std::string& package, const std::string& folder) {
    auto client = IPtr<CvPackageManagerClient>::adopt(new CvPackageManagerClient);
    const std::pair<int32, const char*> kinds[] = {
        {2, "/Audio"}, {4, "/Video"}, {1, "/Preset"}, {3, "/Midi"}};
    for (auto& [type, suffix] : kinds)
        client->setPathForFileType(type, String((folder + suffix).c_str()));
    auto manager = IPtr<CvPackageManager>::adopt(new CvPackageManager);
    return IPtr<IMediaProjectPackage>::adopt(
        manager->readPackage(String(package.c_str()).text16(), client.get()));
}

double readSeconds(const std::string& package, const std::string& folder) {
    emptyFolder(folder);
    return runInChild([&]() {
               const double start = now();
               auto read = readInto(package, folder);
               const double seconds = secondsSince(start);
               return read && read->getProject() ? seconds : -1.0;
           })
        .seconds;
}

double importSeconds(const std::string& package, const std::string& folder, int tracks) {
    emptyFolder(folder);
    return runInChild([&]() {
               auto read = readInto(package, folder);
               std::string error;
               auto station = RefHost::Workstation::fromJson(emptySession(folder), folder, error);
               if (!read || !read->getProject() || !station)
                   return -1.0;
               station->progressOut = nullptr;
               const double start = now();
               auto importer = IPtr<CvHostProject>::adopt(new CvHostProject(station->context()));
               importer->importProject(read->getProject());
               importer = nullptr;
               const double seconds = secondsSince(start);
               // Every track of the model and the FX channel are in the host.
               bool complete = station->project->allTracks().size() == size_t(tracks) + 1;
               return complete && station->close().clean() ? seconds : -1.0;
           })
        .seconds;
}

struct Figures {
    double read;
    double import;
};

Figures measure(const std::string& scratch, int tracks, int rounds) {
    const std::string package = scratch + "/bench-" + std::to_string(tracks) + ".corvelle";
    const std::string folder = scratch + "/project";
    fs::create_directories(folder);
    if (!makePackage(scratch, tracks, package))
        return {-1.0, -1.0};
    std::vector<double> reads, imports;
    for (int round = 0; round < rounds; ++round) {
        reads.push_back(readSeconds(package, folder));
        imports.push_back(importSeconds(package, folder, tracks));
    }
    std::printf("%d tracks: readPackage %s s, import %s s\n", tracks, listed(reads).c_str(),
                listed(imports).c_str());
    return {median(reads), median(imports)};
}

} // namespace

int main(int argc, char** argv) {
    const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 3;
    const int tracks = argc > 2 ? std::max(1, std::atoi(argv[2])) : 2000;
    return runWithScratchFolder("corvelle-import-bench", [&](const std::string& scratch) {
        Figures once = measure(scratch, tracks, rounds);
        Figures twice = measure(scratch, 2 * tracks, rounds);
        if (once.import <= 0.0 || twice.import <= 0.0 || once.read <= 0.0) {
            std::fprintf(stderr, "corvelle_import_bench: a run failed\n");
            return 1;
        }
        printFigure("import, twice the tracks against once", twice.import, once.import, "s", kGoal);
        std::printf("import against readPackage of the same package (%d tracks): %.2fx "
                    "(%.3f s against %.3f s)\n",
                    tracks, once.import / once.read, once.import, once.read);
        return 0;
    });
}

// Speed of export: the host walk against writePackage of the model it produced, and the growth
// from once to twice the size.
//
// A session of 200 tracks (each with an audio channel, two inserts, a send to an FX channel and
// two automation lanes, volume and pan) holds 100 000 notes and 20 000 automation points; the
// second run has twice the tracks, notes and points. For each, the reference host loads the
// session, CvHostProjectExporter::run walks it, and writePackage writes the model it made.
// Goals: the walk costs at most 0.5x the write, and twice the size at most 2.2x once. Scratch
// files go to a folder below $TMPDIR (or /tmp) and are removed at the end.
#include "hostexport/cvhostprojectexporter.h"
#include "package/cvpackage.h"
#include "package/cvpackagemanagerclient.h"
#include "package/package_writer.h"
#include "workstation.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <unistd.h>

namespace Halvorn {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

constexpr const char* kInsertClass = "5A1D3C2B-7E44-4B1F-9C0D-2B8E6F4A1C35";

double secondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

json session(int tracks, int notesPerTrack, int pointsPerLane) {
    json channels =
        json::array({{{"id", "main"}, {"kind", "OutputChannel"}, {"title", "Main"}},
                     {{"id", "fx"}, {"kind", "FxChannel"}, {"title", "FX"}, {"output", "main"}}});
    json trackList = json::array();
    json plugin = {{"class", kInsertClass}, {"values", {{"0", 0.5}}}};
    json notes = json::array();
    for (int n = 0; n < notesPerTrack; ++n)
        notes.push_back(
            {{"start", n * 0.25}, {"length", 0.2}, {"pitch", 36 + n % 48}, {"velocity", 100}});
    json lanes = json::array();
    for (const char* parameter : {"volume", "panX"}) {
        json points = json::array();
        for (int p = 0; p < pointsPerLane; ++p)
            points.push_back({{"start", p * 0.5}, {"value", (p % 10) / 10.0}});
        lanes.push_back({{"path", std::string(parameter) == "panX" ? "Panner" : ""},
                         {"parameter", parameter},
                         {"points", points}});
    }
    for (int t = 0; t < tracks; ++t) {
        std::string id = "t" + std::to_string(t);
        std::string name = "Track " + std::to_string(t);
        channels.push_back(
            {{"id", id + "-ch"},
             {"kind", "InstrumentChannel"},
             {"title", name},
             {"output", "main"},
             {"inserts", {{{"slot", 1}, {"plugin", plugin}}, {{"slot", 2}, {"plugin", plugin}}}},
             {"sends", {{{"to", "fx"}, {"volume", 0.5}}}}});
        trackList.push_back({{"id", id},
                             {"type", "instrument"},
                             {"name", name},
                             {"channel", id + "-ch"},
                             {"items",
                              {{{"kind", "midiPart"},
                                {"start", 0.0},
                                {"length", notesPerTrack * 0.25},
                                {"notes", notes}}}},
                             {"automation", lanes}});
    }
    return {{"application", {{"name", "Bench"}, {"version", "1"}}},
            {"plugins",
             {{{"cid", kInsertClass},
               {"name", "Quor Compressor"},
               {"parameters", {{{"id", 0}, {"title", "Threshold"}}}}}}},
            {"mixer", {{"channels", channels}}},
            {"project", {{"tracks", trackList}}}};
}

struct Figures {
    double walk;
    double write;
};

Figures run(const fs::path& scratch, int scale) {
    std::string error;
    auto station =
        RefHost::Workstation::fromJson(session(200 * scale, 500, 50), scratch.string(), error);
    if (!station) {
        std::fprintf(stderr, "export_bench: %s\n", error.c_str());
        std::exit(1);
    }
    station->progressOut = nullptr;
    fs::path work = scratch / ("work" + std::to_string(scale));
    Figures figures{};
    {
        auto client = newObject<CvPackageManagerClient>();
        client->setPathForFileType(1, String((work / "Preset").string().c_str()));
        auto exporter = IPtr<CvHostProjectExporter>::adopt(
            new CvHostProjectExporter(station->context(), client.get()));
        auto start = std::chrono::steady_clock::now();
        auto project = IPtr<IMediaProject>::adopt(exporter->run());
        figures.walk = secondsSince(start);
        auto package = newObject<CvPackage>(project.get());
        std::string target = (scratch / ("bench" + std::to_string(scale) + ".corvelle")).string();
        start = std::chrono::steady_clock::now();
        if (!writeProjectPackage(package.get(), String(target.c_str()).text16()).ok()) {
            std::fprintf(stderr, "export_bench: writePackage failed\n");
            std::exit(1);
        }
        figures.write = secondsSince(start);
    }
    station->close();
    return figures;
}

} // namespace
} // namespace Halvorn

int main() {
    namespace fs = std::filesystem;
    const char* base = std::getenv("TMPDIR");
    fs::path scratch = fs::path(base && *base ? base : "/tmp") /
                       ("corvelle-export-bench-" + std::to_string(::getpid()));
    fs::create_directories(scratch);
    Halvorn::Figures once = Halvorn::run(scratch, 1);
    Halvorn::Figures twice = Halvorn::run(scratch, 2);
    fs::remove_all(scratch);
    std::printf("once  (200 tracks, 100000 notes, 20000 points): walk %.3f s, writePackage %.3f s, "
                "walk/write %.2f (goal <= 0.5), export/write %.2f (goal <= 1.5)\n",
                once.walk, once.write, once.walk / once.write,
                (once.walk + once.write) / once.write);
    std::printf("twice (400 tracks, 200000 notes, 40000 points): walk %.3f s, writePackage %.3f s, "
                "walk/write %.2f\n",
                twice.walk, twice.write, twice.walk / twice.write);
    std::printf("twice/once: walk %.2f, walk+write %.2f (goal <= 2.2)\n", twice.walk / once.walk,
                (twice.walk + twice.write) / (once.walk + once.write));
    return 0;
}

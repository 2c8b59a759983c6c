// Speed of readPackage against unzip and cp on the same package, through the published door.
//
// The program writes 50 media files of noise (200 MiB in all, so that deflate can't shrink
// them) and a project document of 10 000 events that refers to them, and packs the tree with
// "zip -q -r -D" as a package. Then, alternating, it times readPackage of the package into a
// client's folders (in a child process each time) and the peer doing the same job by hand:
// "unzip -q" into a folder and "cp" of the media into the client's folder. It prints the
// medians and their ratio. Usage: corvelle_read_package_bench [ROUNDS] [MEDIA_MIB]
// (defaults 7 and 200). Everything lives in a scratch folder below $TMPDIR (or /tmp) that is
// removed at the end.
#include "packagereading.h"
#include "read_bench_document.h"
#include "read_bench_support.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

using namespace ReadBench;
namespace fs = std::filesystem;

constexpr int kMediaFiles = 50;
constexpr double kGoal = 1.0;

std::string quoted(const std::string& path) { return "'" + path + "'"; }

// The package: media, project.xml and metadata.xml, packed by zip without folder entries.
bool makePackage(const std::string& scratch, long mediaMiB, const std::string& package) {
    const std::string tree = scratch + "/tree";
    fs::create_directories(tree + "/audio");
    std::mt19937_64 random(20261123);
    const std::size_t fileBytes = std::size_t(mediaMiB) * 1024 * 1024 / kMediaFiles;
    DocumentShape shape;
    shape.tracks = 10;
    shape.clipsPerTrack = 10;
    shape.eventsPerClip = 100;
    shape.audioFiles = takeNames(kMediaFiles);
    for (const std::string& name : shape.audioFiles)
        if (!writeNoiseFile(tree + "/audio/" + name, fileBytes, random))
            return false;
    if (!writeProjectDocument(tree + "/project.xml", shape))
        return false;
    std::ofstream(tree + "/metadata.xml")
        << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<MetaData>\n\t<Title />\n</MetaData>\n";
    const Run zip = runCommand("cd " + quoted(tree) + " && zip -q -r -D " + quoted(package) + " .");
    std::printf("package: %ld MiB of media in %d files, project.xml of %ld events (%.1f KB), "
                "archive %.1f MB; zip took %.1f s\n",
                mediaMiB, kMediaFiles, shape.events(),
                double(fileSize(tree + "/project.xml")) / 1e3, double(fileSize(package)) / 1e6,
                zip.seconds);
    std::error_code ignored;
    fs::remove_all(tree, ignored);
    return zip.ok;
}

// The client's audio folder after a read: count and bytes of the files in it.
void countFiles(const std::string& folder, int& files, long& bytes) {
    files = 0;
    bytes = 0;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folder, error)) {
        ++files;
        bytes += long(entry.file_size());
    }
}

Run readOnce(const std::string& package, const std::string& client) {
    emptyFolder(client);
    return runInChild([&]() {
        const double start = now();
        std::vector<CorvelleTool::ReadCase> cases;
        const auto read = CorvelleTool::readPackage(package, client, cases);
        const double seconds = secondsSince(start);
        return read && read->getProject() && read->getProject()->getTrackCount() > 0 ? seconds
                                                                                     : -1.0;
    });
}

Run peerOnce(const std::string& package, const std::string& extracted, const std::string& client) {
    emptyFolder(client + "/Audio");
    std::error_code ignored;
    fs::remove_all(extracted, ignored);
    return runCommand("unzip -q " + quoted(package) + " -d " + quoted(extracted) + " && cp " +
                      quoted(extracted) + "/audio/* " + quoted(client + "/Audio/"));
}

int run(const std::string& scratch, int rounds, long mediaMiB) {
    const std::string package = scratch + "/session.corvelle";
    if (!makePackage(scratch, mediaMiB, package)) {
        std::fprintf(stderr, "could not make the package (are zip and unzip installed?)\n");
        return 1;
    }
    const std::string ourClient = scratch + "/ours";
    const std::string peerClient = scratch + "/peer";
    const std::string extracted = scratch + "/unzipped";
    std::vector<double> ours, peer, oursPeakMB;
    for (int round = 0; round < rounds; ++round) {
        // Alternate which side goes first, so that neither always finds the cache warmer.
        for (int side = 0; side < 2; ++side) {
            if ((side == 0) == (round % 2 == 0)) {
                const Run run = peerOnce(package, extracted, peerClient);
                if (!run.ok) {
                    std::fprintf(stderr, "unzip or cp failed\n");
                    return 1;
                }
                peer.push_back(run.seconds);
            } else {
                const Run run = readOnce(package, ourClient);
                int files = 0;
                long bytes = 0;
                countFiles(ourClient + "/Audio", files, bytes);
                if (!run.ok || files != kMediaFiles ||
                    bytes != long(mediaMiB) * 1024 * 1024 / kMediaFiles * kMediaFiles) {
                    std::fprintf(stderr, "readPackage failed (%d media files arrived)\n", files);
                    return 1;
                }
                ours.push_back(run.seconds);
                oursPeakMB.push_back(double(run.peakKiB) / 1024.0);
            }
        }
    }
    printFigure("readPackage / (unzip -q + cp), median", median(ours), median(peer), "s", kGoal);
    std::printf("    runs, ours:%s\n    runs, peer:%s\n    peak MB of the reading process:%s\n",
                listed(ours).c_str(), listed(peer).c_str(), listed(oursPeakMB).c_str());
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    const int rounds = argc > 1 && std::atoi(argv[1]) > 0 ? std::atoi(argv[1]) : 7;
    const long mediaMiB = argc > 2 && std::atol(argv[2]) > 0 ? std::atol(argv[2]) : 200;
    return runWithScratchFolder("corvelle-read-package-bench", [&](const std::string& scratch) {
        return run(scratch, rounds, mediaMiB);
    });
}

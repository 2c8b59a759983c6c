// corvelle-fuzz-seeds OUTDIR PROJECT_XML: writes the seed corpora of the fuzz targets, built by
// the system's zip writer and by hand, into OUTDIR/<target>/.
#include "package/cvzipwriter.h"
#include "packagetestsupport.h"

#include <cstdio>
#include <filesystem>

using namespace PackageTest;

namespace {

std::string packFolder(const std::string& folder, const std::string& archive) {
    Halvorn::CvZipWriter writer;
    if (!writer.zipFolder(Halvorn::String(folder.c_str()), Halvorn::String(archive.c_str())))
        return {};
    return readFile(archive);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: corvelle-fuzz-seeds OUTDIR PROJECT_XML\n");
        return 1;
    }
    const std::string out = argv[1];
    const std::string document = readFile(argv[2]);
    const std::string zips = out + "/zip_reader_fuzzer/";
    const std::string packages = out + "/read_package_fuzzer/";
    std::filesystem::create_directories(zips);
    std::filesystem::create_directories(packages);

    const std::string tone(2000, '\x40');
    const std::vector<RawEntry> mixed = {{"project.xml", "<Project/>", 8, 2048},
                                         {"audio/tone.wav", tone, 0, 0},
                                         {"plugins/Gr\xC3\xBC\xC3\x9F"
                                          "e.quorpreset",
                                          "s", 8, 0}};
    writeFile(zips + "classic.zip", buildZip(mixed));
    writeFile(zips + "zip64.zip", buildZip(mixed, ZipForm::kZip64));
    writeFile(zips + "hostile.zip", buildZip({{"../up.txt", "x"},
                                              {"/absolute.txt", "x"},
                                              {"bad\xFF.txt", "x"},
                                              {"dir\\win.txt", "x"},
                                              {"dir/", ""}}));
    writeFile(zips + "oversize.zip", buildZip({{"big.bin", std::string(5000, 'b'), 8, 0, 10}}));

    ScratchFolder scratch;
    writeFile(scratch / "tree/project.xml", document);
    writeFile(scratch / "tree/audio/tone.wav", tone);
    writeFile(scratch / "tree/plugins/state.quorpreset", "state");
    const std::string written = packFolder(scratch / "tree", scratch / "sample.corvelle");
    if (written.empty()) {
        std::fprintf(stderr, "corvelle-fuzz-seeds: cannot pack the sample\n");
        return 1;
    }
    writeFile(zips + "written.zip", written);
    writeFile(packages + "sample.corvelle", written);
    writeFile(packages + "stored.corvelle",
              buildZip({{"project.xml", document, 0, 2048}, {"audio/tone.wav", tone, 0, 2048}}));
    writeFile(packages + "minimal.corvelle", buildZip({{"project.xml", "<Project/>"}}));
    return 0;
}

// corvelle-pack FOLDER ARCHIVE: packs a folder the way a package is packed (build-time helper).
#include "package/cvzipwriter.h"

#include <cstdio>

int main(int argc, char** argv) {
    using namespace Halvorn;
    if (argc != 3) {
        std::fprintf(stderr, "usage: corvelle-pack FOLDER ARCHIVE\n");
        return 1;
    }
    CvZipWriter writer;
    if (!writer.zipFolder(String(argv[1]), String(argv[2]))) {
        std::fprintf(stderr, "corvelle-pack: cannot create %s\n", argv[2]);
        return 1;
    }
    return 0;
}

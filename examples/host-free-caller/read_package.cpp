// A minimal program that reads a package through the host-free door: public headers only.
//
//   read_package PACKAGE MEDIA_FOLDER
//
// Prints the application, the tempo and each track with its clip count; the package's audio
// lands in MEDIA_FOLDER/Audio, its plug-in states in MEDIA_FOLDER/Preset.
#include "corvelle/corvelle.h" // every published header, the UTF-8 helpers among them

#include <cstdio>
#include <string>

using namespace Halvorn;

namespace {

// The client names one folder per file type. It lives on the stack for the read, so its
// reference count is a formality.
class Client : public IMediaPackageManagerClient {
public:
    explicit Client(const std::string& folder)
        : audio_(toUtf16(folder + "/Audio")), presets_(toUtf16(folder + "/Preset")) {}

    tresult queryInterface(const FUID&, void** object) override {
        *object = nullptr;
        return kNoInterface;
    }
    uint32 addRef() override { return 1; }
    uint32 release() override { return 1; }

    const char16* getPathForFileType(int32 type) override {
        switch (type) {
        case 1:
            return presets_.c_str(); // plug-in states
        case 2:
            return audio_.c_str(); // audio
        default:
            return nullptr; // video and MIDI aren't wanted here
        }
    }

private:
    std::u16string audio_;
    std::u16string presets_;
};

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: read_package PACKAGE MEDIA_FOLDER\n");
        return 2;
    }
    auto manager = IPtr<IMediaPackageManager>::adopt(CreatePackageManager());
    Client client(argv[2]);
    auto package = manager ? IPtr<IMediaProjectPackage>::adopt(
                                 manager->readPackage(toUtf16(argv[1]).c_str(), &client))
                           : IPtr<IMediaProjectPackage>();
    if (!package) {
        // The manager keeps the reason of this thread's last failed read beside the null.
        auto last = queryInterface<IMediaPackageLastError>(manager.get());
        std::fprintf(stderr, "read_package: %s: %s\n", argv[1],
                     last ? toUtf8(last->getLastErrorMessage()).c_str() : "cannot read");
        return 1;
    }
    IMediaProject* project = package->getProject(); // borrowed from the package
    IMediaParameter* tempo = project->getTempo();
    std::printf("%s %s, %.2f bpm\n", toUtf8(project->getApplicationName()).c_str(),
                toUtf8(project->getApplicationVersion()).c_str(), tempo ? tempo->getValue() : 0.0);
    for (uint32 i = 0; i < project->getTrackCount(); ++i) {
        IMediaTrack* track = project->getTrack(i);
        auto object = queryInterface<IMediaObject>(track);
        std::printf("  %s: %u clips\n", object ? toUtf8(object->getName()).c_str() : "?",
                    track->getClipCount());
    }
    return 0;
}

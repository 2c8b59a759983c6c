// The tool's client and the read and write calls of the package door.
#include "packagereading.h"
#include "support/utf.h"

#include <atomic>
#include <iostream>

namespace CorvelleTool {

using CorvelleSupport::toUtf16;
namespace {

using namespace Halvorn;

// Lives on the stack for the one read; the package code only borrows it.
class FolderClient : public IMediaPackageManagerClient {
public:
    explicit FolderClient(const std::string& base) {
        if (base.empty())
            return;
        audio_ = toUtf16(base + "/Audio");
        video_ = toUtf16(base + "/Video");
        preset_ = toUtf16(base + "/Preset");
        midi_ = toUtf16(base + "/Midi");
    }

    tresult queryInterface(const FUID& iid, void** object) override {
        if (!object)
            return kInvalidArgument;
        if (iid == FUnknown::iid || iid == IMediaPackageManagerClient::iid) {
            addRef();
            *object = static_cast<IMediaPackageManagerClient*>(this);
            return kResultOk;
        }
        *object = nullptr;
        return kNoInterface;
    }
    uint32 addRef() override { return ++count_; }
    uint32 release() override { return --count_; }

    const char16* getPathForFileType(int32 type) override {
        const std::u16string* folder = type == 1   ? &preset_
                                       : type == 2 ? &audio_
                                       : type == 3 ? &midi_
                                       : type == 4 ? &video_
                                                   : nullptr;
        return folder && !folder->empty() ? folder->c_str() : nullptr;
    }

private:
    std::u16string audio_, video_, preset_, midi_;
    std::atomic<uint32> count_{1};
};

} // namespace

IPtr<IMediaProjectPackage> readPackage(const std::string& path, const std::string& mediaFolder) {
    const auto manager = IPtr<IMediaPackageManager>::adopt(CreatePackageManager());
    if (!manager)
        return {};
    FolderClient client(mediaFolder);
    const std::u16string path16 = toUtf16(path);
    return IPtr<IMediaProjectPackage>::adopt(manager->readPackage(path16.c_str(), &client));
}

int writePackageFile(IMediaProjectPackage* package, const std::string& path) {
    const auto manager = IPtr<IMediaPackageManager>::adopt(CreatePackageManager());
    if (!manager || !manager->writePackage(package, toUtf16(path).c_str())) {
        std::cerr << "corvelle: cannot write package '" << path
                  << "': its folder must exist and be writable\n";
        return 2;
    }
    return 0;
}

} // namespace CorvelleTool

// The tool's client and the read and write calls of the package door.
#include "packagereading.h"

#include "conventions.h"
#include "corvelle/utf8.h"
#include "support/counted.h"

#include <iostream>

namespace CorvelleTool {

using Halvorn::toUtf16;
using Halvorn::toUtf8;
namespace {

using namespace Halvorn;

// Made for the one read; the package code may keep a reference while it reads. It also takes
// the read's report of what was refused or failed.
class FolderClient : public Support::Counted<IMediaPackageManagerClient, IMediaPackageReadReport> {
public:
    FolderClient(const std::string& base, std::vector<ReadCase>& cases) : cases_(cases) {
        if (base.empty())
            return;
        audio_ = toUtf16(base + "/Audio");
        video_ = toUtf16(base + "/Video");
        preset_ = toUtf16(base + "/Preset");
        midi_ = toUtf16(base + "/Midi");
    }

    const char16* getPathForFileType(int32 type) override {
        const std::u16string* folder = type == 1   ? &preset_
                                       : type == 2 ? &audio_
                                       : type == 3 ? &midi_
                                       : type == 4 ? &video_
                                                   : nullptr;
        return folder && !folder->empty() ? folder->c_str() : nullptr;
    }

    tresult report(int32 what, const char16* subject) override {
        cases_.push_back({what, subject ? toUtf8(subject) : std::string()});
        return kResultOk;
    }

private:
    std::vector<ReadCase>& cases_;
    std::u16string audio_, video_, preset_, midi_;
};

// Says each case on stderr as a warning.
void reportCases(const std::vector<ReadCase>& cases) {
    for (const ReadCase& readCase : cases)
        std::cerr << "corvelle: " << describe(readCase) << "\n";
}

} // namespace

IPtr<IMediaProjectPackage> readPackage(const std::string& path, const std::string& mediaFolder,
                                       std::vector<ReadCase>& cases) {
    const auto manager = IPtr<IMediaPackageManager>::adopt(CreatePackageManager());
    if (!manager)
        return {};
    const auto client = IPtr<FolderClient>::adopt(new FolderClient(mediaFolder, cases));
    const std::u16string path16 = toUtf16(path);
    return IPtr<IMediaProjectPackage>::adopt(manager->readPackage(path16.c_str(), client.get()));
}

std::string describe(const ReadCase& readCase) {
    const char* text = "unknown case";
    switch (readCase.what) {
    case kReadRefusedPath:
        text = "refused media path leading out of the package";
        break;
    case kReadRefusedExternal:
        text = "refused external file that is no media file";
        break;
    case kReadCopyFailed:
        text = "medium could not be copied whole";
        break;
    case kReadSkippedEntry:
        text = "skipped entry: encrypted or of an unsupported compression method";
        break;
    case kReadOverlappingEntry:
        text = "skipped entry whose data overlap another's";
        break;
    }
    return std::string(text) + ": " + readCase.subject;
}

bool lostMedium(const std::vector<ReadCase>& cases) {
    for (const ReadCase& readCase : cases)
        if (readCase.what == kReadCopyFailed)
            return true;
    return false;
}

std::string lastFailure() {
    const auto manager = IPtr<IMediaPackageManager>::adopt(CreatePackageManager());
    const auto last = manager ? Halvorn::queryInterface<IMediaPackageLastError>(manager.get())
                              : IPtr<IMediaPackageLastError>();
    const char16* message = last ? last->getLastErrorMessage() : nullptr;
    return message && message[0] ? toUtf8(message) : "out of memory";
}

IMediaProject* projectOf(const IPtr<IMediaProjectPackage>& package, const std::string& path,
                         const std::vector<ReadCase>& warnings) {
    IMediaProject* project = package ? package->getProject() : nullptr;
    if (!project)
        std::cerr << "corvelle: " << path << ": " << lastFailure() << "\n";
    else
        reportCases(warnings);
    return project;
}

int writePackageFile(IMediaProjectPackage* package, const std::string& path) {
    const auto manager = IPtr<IMediaPackageManager>::adopt(CreatePackageManager());
    if (!manager || !manager->writePackage(package, toUtf16(path).c_str())) {
        std::cerr << "corvelle: " << lastFailure() << "\n";
        return kExitFailed;
    }
    return kExitSuccess;
}

} // namespace CorvelleTool

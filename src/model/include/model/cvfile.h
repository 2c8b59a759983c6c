// CvFile, a file reference of the model, and ICvFileAccessor, the face of objects that own one.
#pragma once

#include "model/cvnode.h"

namespace Halvorn {

// The category of a file; the package client keeps one folder for each.
enum CvFileType : uint32 {
    kCvFilePreset = 1, // plug-in state of a device
    kCvFileAudio = 2,
    kCvFileMidi = 3,
    kCvFileVideo = 4,
};

// A file reference. An external path is a full path outside the package; otherwise it is
// relative to the unpacked package, or absolute once the package manager has moved the file.
class CvFile : public CvNode {
public:
    CV_DECLARE_TYPE(CvFile, CvNode)

    CvFile(uint32 type, const String& path, bool external)
        : external_(external), type_(type), path_(path) {}

    // A new file held by the caller's one reference; a null path is empty.
    static IPtr<CvFile> make(uint32 type, const char16* path, bool external);

    uint32 getType() const { return type_; }
    const String& getPath() const { return path_; }
    bool isExternal() const { return external_; }

protected:
    ~CvFile() override = default;

private:
    bool external_;
    uint32 type_;
    String path_;
};

// Implemented by the objects that carry a file (devices, audio and video events), so that the
// package manager can collect and move the files of a project. For the system's own use.
struct ICvFileAccessor : FUnknown {
    // Borrowed, valid while the owner lives and keeps this file; never null.
    virtual CvFile* getFile() = 0;
    // Puts a new file of the owner's category in the place of the old one.
    virtual void setFile(const char16* path, bool external) = 0;

    static constexpr FUID iid = FUID::make(0xEE7D805A, 0x4DF5, 0x4B92, 0xB7EC, 0x8ED0397D91A5);
};

} // namespace Halvorn

// Package interfaces: reading and writing project packages without a host.
//
// A caller without a host gets a manager from CreatePackageManager, reads a package file into a
// project model with readPackage, walks the model through its IMedia interfaces, and writes a
// package with writePackage. The caller supplies a client that names one target folder per file
// type; the media of a package read are copied there and the model points at the copies.
#pragma once

#include "corvelle/base.h"
#include "corvelle/mediaproject.h"

namespace Halvorn {

// A handle on one project.
struct IMediaProjectPackage : FUnknown {
    // Borrowed: no reference added, valid while the package lives; null for a package without
    // a project.
    virtual IMediaProject* getProject() = 0;

    static constexpr FUID iid = FUID::make(0x106C2ACE, 0x1EC6, 0x4625, 0xBD3B, 0x5358820B2F67);
};

// Implemented by the caller: where the media files of a package shall end up. Besides
// getPathForFileType and the reference counting, only queryInterface for
// IMediaPackageReadReport is called, and the client is borrowed for the time of one readPackage.
struct IMediaPackageManagerClient : FUnknown {
    // The target folder for a file type (1 preset, 2 audio, 3 MIDI, 4 video) as zero-terminated
    // UTF-16, or null when files of that type aren't wanted. Read at once and never kept.
    virtual const char16* getPathForFileType(int32 type) = 0;

    static constexpr FUID iid = FUID::make(0x7CD4D09A, 0x81F3, 0x4904, 0xAA00, 0x3D312129D856);
};

// What a read refused or could not do, as told to an IMediaPackageReadReport.
enum PackageReadCase : int32 {
    // A package-relative media path that is absolute, climbs with "..", or leads out through a
    // link; the file stays a missing medium.
    kReadRefusedPath = 1,
    // An external media path that isn't absolute, isn't a regular file, has a component
    // beginning with ".", or lacks its file type's media extension; it stays uncopied.
    kReadRefusedExternal = 2,
    // A medium that exists but couldn't be copied whole into the client's folder (a full disk,
    // an I/O error); the copy is removed and the file keeps the document's path.
    kReadCopyFailed = 3,
    // An archive entry compressed with a method other than stored or deflated, or encrypted;
    // skipped as if absent.
    kReadSkippedEntry = 4,
    // An archive entry whose data overlap another entry's; skipped.
    kReadOverlappingEntry = 5,
    // The extraction wrote more than the package's size can account for; the read fails.
    kReadInflationLimit = 6,
    // A write into the temporary folder failed (a full disk, an I/O error); the read fails.
    kReadExtractionFailed = 7,
    // project.xml holds a single token (a tag with its attributes) or a text over 64 MiB; the
    // read fails.
    kReadDocumentTooLarge = 8,
};

// Optional, implemented by a client beside IMediaPackageManagerClient: readPackage asks the
// client for it once with queryInterface and tells it every case it meets. Borrowed for the
// time of the read.
struct IMediaPackageReadReport : FUnknown {
    // what is a PackageReadCase; subject the path or entry name concerned, zero-terminated
    // UTF-16, valid during the call only. The result is ignored.
    virtual tresult report(int32 what, const char16* subject) = 0;

    static constexpr FUID iid = FUID::make(0xD8079F40, 0xFED9, 0x413E, 0xBC1B, 0x237A6CE05F7A);
};

// Why the last readPackage or writePackage on a thread failed, as IMediaPackageLastError tells.
enum PackageErrorCode : int32 {
    kPackageNoError = 0,
    // The package file, or a folder on its path, doesn't exist.
    kPackageNotFound = 1,
    // The package is a folder, a FIFO, a device: only regular files are opened.
    kPackageNotRegularFile = 2,
    // The file can't be opened or read (permissions, an I/O error).
    kPackageUnreadable = 3,
    // Empty, or no zip archive at all.
    kPackageNotZip = 4,
    // A zip archive cut short: its directory or end record is missing or damaged.
    kPackageTruncated = 5,
    // The archive has no project.xml at its root.
    kPackageNoDocument = 6,
    // project.xml isn't well-formed, nests too deeply, holds a token over 64 MiB, or its root
    // isn't Project; the message gives the line and column where the reader stopped.
    kPackageBadDocument = 7,
    // No extraction folder could be made in the temporary folder ($TMPDIR, else /tmp).
    kPackageTemporaryFolder = 8,
    // A write into the extraction folder failed, or the extraction passed its bound.
    kPackageExtractionFailed = 9,
    // The package file couldn't be written: its folder is missing, the target is a folder, the
    // disk is full, and so on; an existing file at the target stays as it was.
    kPackageWriteFailed = 10,
    // A null argument, or a package without a project to write.
    kPackageInvalidArgument = 11,
    kPackageOutOfMemory = 12,
};

// Reached by queryInterface on the package manager. The reason is kept per thread, by all the
// managers of the module alike, from the end of one readPackage or writePackage to the start of
// the next on that thread; a success clears it.
struct IMediaPackageLastError : FUnknown {
    // A PackageErrorCode; kPackageNoError after a success or before any call.
    virtual int32 getLastError() = 0;
    // The cause with its place, for people, as zero-terminated UTF-16, e.g. "project.xml line
    // 12, column 4: mismatched tag" or "cannot write /x/y.corvelle: no space left on device";
    // empty after a success. Valid until the next readPackage or writePackage on this thread.
    virtual const char16* getLastErrorMessage() = 0;

    static constexpr FUID iid = FUID::make(0x84E42F29, 0x44F4, 0x40C5, 0xB541, 0x502861637DD0);
};

// Turns package files into project models and back. Holds no state between calls but the
// reason of the last failure (IMediaPackageLastError); every call runs to its end on the
// caller's thread.
struct IMediaPackageManager : FUnknown {
    // Reads the package file at path (UTF-16, "/" or "\" separators). One reference, the
    // caller releases; null when no project could be read, and also when the extraction failed
    // to write or passed its bound (see PackageReadCase); IMediaPackageLastError then tells
    // why. When the client wants no file type at all, only project.xml is extracted.
    virtual IMediaProjectPackage* readPackage(const char16* path,
                                              IMediaPackageManagerClient* client) = 0;
    // Writes the package's project to a package file at path, replacing a file there.
    // Nonzero for success; on failure IMediaPackageLastError tells why.
    virtual int32 writePackage(IMediaProjectPackage* package, const char16* path) = 0;

    static constexpr FUID iid = FUID::make(0x8D2E8B96, 0x68C3, 0x4C1B, 0xBDCA, 0x97E19CD23899);
};

} // namespace Halvorn

extern "C" {
// A new package manager with one reference, owned by the caller; null when memory runs out.
// Needs no InitDll.
CORVELLE_EXPORT Halvorn::IMediaPackageManager* CreatePackageManager();
}

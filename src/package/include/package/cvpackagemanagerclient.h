// CvPackageManagerClient: the system's own table from file type to target folder.
#pragma once

#include "corvelle/package.h"
#include "foundation/fstring.h"
#include "foundation/tarray.h"
#include "model/cvobject.h"

namespace Halvorn {

// Filled by a command with one folder per file type; the package manager reads it on import and
// the exporter asks it where to put the files it makes. A folder is only a path here: nothing
// in this class creates it.
class CvPackageManagerClient : public CvObject, public IMediaPackageManagerClient {
public:
    CV_DECLARE_TYPE(CvPackageManagerClient, CvObject)
    CV_REFCOUNT_METHODS(CvObject)

    // One row of the table, held by value: nobody else ever sees it.
    struct FileTypePath {
        int32 type;
        String path;
    };

    CvPackageManagerClient() = default;
    // Public so that a command may keep the client on its stack.
    ~CvPackageManagerClient() override = default;

    tresult queryInterface(const FUID& iid, void** object) override;

    // The folder of the first row with that type, or null. Valid until the table changes or the
    // client dies.
    const char16* getPathForFileType(int32 type) override;

    // Overwrites the row of that type, or appends one. No argument is refused.
    void setPathForFileType(int32 type, const String& path);

private:
    FileTypePath* findRow(int32 type);

    TArray<FileTypePath> rows_{10};
};

} // namespace Halvorn

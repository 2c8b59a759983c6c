// CvPackageManagerClient: lookup and registration of folders by file type.
#include "package/cvpackagemanagerclient.h"

namespace Halvorn {

tresult CvPackageManagerClient::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IMediaPackageManagerClient)
    return CvObject::queryInterface(iid, object);
}

CvPackageManagerClient::FileTypePath* CvPackageManagerClient::findRow(int32 type) {
    for (FileTypePath& row : rows_)
        if (row.type == type)
            return &row;
    return nullptr;
}

const char16* CvPackageManagerClient::getPathForFileType(int32 type) {
    FileTypePath* row = findRow(type);
    return row ? row->path.text16() : nullptr;
}

void CvPackageManagerClient::setPathForFileType(int32 type, const String& path) {
    if (FileTypePath* row = findRow(type)) {
        row->path = path;
        return;
    }
    // A table that can't grow keeps its rows: the type then simply has no folder.
    (void)rows_.add(FileTypePath{type, path});
}

} // namespace Halvorn

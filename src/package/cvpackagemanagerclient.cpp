// CvPackageManagerClient: lookup and registration of folders by file type.
#include "package/cvpackagemanagerclient.h"

#include <new>

namespace Halvorn {

tresult CvPackageManagerClient::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IMediaPackageManagerClient)
    return CvObject::queryInterface(iid, object);
}

CvPackageManagerClient::FileTypePath* CvPackageManagerClient::findRow(int32 type) const {
    for (const IPtr<FileTypePath>& row : rows_)
        if (row && row->type == type)
            return row.get();
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
    auto* row = new (std::nothrow) FileTypePath(type, path);
    if (row)
        rows_.add(IPtr<FileTypePath>::adopt(row));
}

} // namespace Halvorn

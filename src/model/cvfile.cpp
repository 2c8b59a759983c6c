// CvFile construction for the file accessors.
#include "model/cvfile.h"

namespace Halvorn {

IPtr<CvFile> CvFile::make(uint32 type, const char16* path, bool external) {
    return newObject<CvFile>(type, path ? String(path) : String(), external);
}

} // namespace Halvorn

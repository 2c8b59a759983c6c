// FFileIterator: reads one folder's regular files and subfolders and sorts them by name.
#include "foundation/ffileiterator.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace Halvorn {

FFileIterator::FFileIterator(const FUrl& folder) : folder_(folder.getPath()) {
    if (folder_.isEmpty())
        return;
    DIR* dir = opendir(folder_.text8());
    if (!dir)
        return;
    int fd = dirfd(dir);
    TArray<Item> items;
    while (dirent* entry = readdir(dir)) {
        const char8* name = entry->d_name;
        if (std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0)
            continue;
        struct stat info;
        if (fstatat(fd, name, &info, AT_SYMLINK_NOFOLLOW) != 0)
            continue;
        if (S_ISREG(info.st_mode) || S_ISDIR(info.st_mode))
            (void)items.add(Item{String(name), S_ISDIR(info.st_mode)});
    }
    closedir(dir);
    std::sort(items.begin(), items.end(), [](const Item& a, const Item& b) {
        return std::strcmp(a.name.text8(), b.name.text8()) < 0;
    });
    items_ = std::move(items);
}

FUrl* FFileIterator::next() {
    if (index_ >= items_.total())
        return nullptr;
    const Item& item = items_.at(index_++);
    String path(folder_);
    if (path.getChar8(path.length() - 1) != '/' && !path.append("/"))
        return nullptr;
    if (!path.append(item.name))
        return nullptr;
    return new (std::nothrow) FUrl(path, item.folder);
}

} // namespace Halvorn

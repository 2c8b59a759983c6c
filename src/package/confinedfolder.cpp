// ConfinedFolder: descriptor-relative creation with links refused at every level.
#include "package/confinedfolder.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Halvorn {
namespace {

constexpr uint32 kMaxComponentBytes = 255;

// Opens the child folder name of parent, creating it first when missing; -1 for a link, a
// file, or any failure.
int openChildFolder(int parent, const char8* name) {
    if (mkdirat(parent, name, 0777) != 0 && errno != EEXIST)
        return -1;
    return openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
}

} // namespace

ConfinedFolder::ConfinedFolder(const char8* rootPath) {
    if (rootPath && rootPath[0])
        root_ = open(rootPath, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

ConfinedFolder::~ConfinedFolder() {
    if (root_ >= 0)
        close(root_);
}

int ConfinedFolder::openFolder(const char8* relativePath, uint32 count) const {
    int current = dup(root_);
    uint32 start = 0;
    while (current >= 0 && start < count) {
        const char8* slash =
            static_cast<const char8*>(std::memchr(relativePath + start, '/', count - start));
        const uint32 end = slash ? static_cast<uint32>(slash - relativePath) : count;
        char8 name[kMaxComponentBytes + 1];
        const uint32 size = end - start;
        int next = -1;
        if (size > 0 && size <= kMaxComponentBytes) {
            std::memcpy(name, relativePath + start, size);
            name[size] = 0;
            next = openChildFolder(current, name);
        }
        close(current);
        current = next;
        start = end + 1;
    }
    return current;
}

int ConfinedFolder::createFile(const char8* relativePath) const {
    if (root_ < 0 || !relativePath || !relativePath[0])
        return -1;
    const char8* slash = std::strrchr(relativePath, '/');
    const char8* name = slash ? slash + 1 : relativePath;
    if (!name[0] || std::strlen(name) > kMaxComponentBytes)
        return -1;
    const int folder = openFolder(relativePath, static_cast<uint32>(name - relativePath));
    if (folder < 0)
        return -1;
    // Non-blocking so that a FIFO planted under the name fails instead of waiting for a reader.
    int file = openat(folder, name, O_WRONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0666);
    close(folder);
    if (file < 0)
        return -1;
    struct stat status;
    if (fstat(file, &status) != 0 || !S_ISREG(status.st_mode) || ftruncate(file, 0) != 0) {
        close(file);
        return -1;
    }
    const int flags = fcntl(file, F_GETFL);
    if (flags >= 0)
        (void)fcntl(file, F_SETFL, flags & ~O_NONBLOCK);
    return file;
}

bool ConfinedFolder::createFolder(const char8* relativePath) const {
    if (root_ < 0 || !relativePath)
        return false;
    const int folder = openFolder(relativePath, static_cast<uint32>(std::strlen(relativePath)));
    if (folder < 0)
        return false;
    close(folder);
    return true;
}

bool writeAll(int descriptor, const void* data, uint32 count) {
    auto* bytes = static_cast<const unsigned char*>(data);
    while (count > 0) {
        const ssize_t done = write(descriptor, bytes, count);
        if (done < 0 && errno == EINTR)
            continue;
        if (done <= 0)
            return false;
        bytes += done;
        count -= static_cast<uint32>(done);
    }
    return true;
}

} // namespace Halvorn

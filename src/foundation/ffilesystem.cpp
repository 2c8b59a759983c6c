// FNFileSystem: streams, existence tests, folder making and removal, copying, on POSIX calls.
#include "foundation/ffilesystem.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

namespace Halvorn {
namespace {

FNFileSystem theFileSystem;

constexpr size_t kCopyBufferSize = 64 * 1024;
// Enough for any run of concurrent claims of one name.
constexpr int32 kClaimAttempts = 64;

void setError(int32* error, int32 value) {
    if (error)
        *error = value;
}

bool isFolderAt(const char8* path) {
    struct stat info;
    return stat(path, &info) == 0 && S_ISDIR(info.st_mode);
}

// Opens without blocking (a fifo would otherwise wait for its other end) and keeps the
// descriptor only for a regular file. Gives -1 and sets errno otherwise.
int openRegularFile(const char8* path, int flags, mode_t permissions = 0) {
    int fd = open(path, flags | O_CLOEXEC | O_NONBLOCK, permissions);
    if (fd < 0)
        return -1;
    struct stat info;
    if (fstat(fd, &info) != 0 || !S_ISREG(info.st_mode)) {
        int reason = errno;
        if (fstat(fd, &info) == 0)
            reason = S_ISDIR(info.st_mode) ? EISDIR : EINVAL;
        close(fd);
        errno = reason;
        return -1;
    }
    fcntl(fd, F_SETFL, fcntl(fd, F_GETFL) & ~O_NONBLOCK);
    return fd;
}

FStream* wrap(int fd, int32* error) {
    if (fd < 0) {
        setError(error, errno);
        return nullptr;
    }
    auto* stream = new (std::nothrow) FStream(fd);
    if (!stream) {
        close(fd);
        setError(error, ENOMEM);
        return nullptr;
    }
    setError(error, 0);
    return stream;
}

// Deletes everything inside the folder open at fd, depth first, and closes fd. Links are
// removed as themselves: every open below uses O_NOFOLLOW and every test AT_SYMLINK_NOFOLLOW.
bool removeContents(int fd) {
    DIR* folder = fdopendir(fd);
    if (!folder) {
        close(fd);
        return false;
    }
    bool ok = true;
    while (ok) {
        errno = 0;
        dirent* entry = readdir(folder);
        if (!entry) {
            ok = errno == 0;
            break;
        }
        const char8* name = entry->d_name;
        if (std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0)
            continue;
        struct stat info;
        if (fstatat(fd, name, &info, AT_SYMLINK_NOFOLLOW) != 0) {
            ok = errno == ENOENT;
            continue;
        }
        if (S_ISDIR(info.st_mode)) {
            int inner = openat(fd, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
            ok = inner >= 0 && removeContents(inner) && unlinkat(fd, name, AT_REMOVEDIR) == 0;
        } else {
            ok = unlinkat(fd, name, 0) == 0 || errno == ENOENT;
        }
    }
    closedir(folder);
    return ok;
}

[[nodiscard]] bool writeAll(int fd, const char8* data, size_t size) {
    while (size > 0) {
        ssize_t n = write(fd, data, size);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        data += n;
        size -= size_t(n);
    }
    return true;
}

// Copies until the end of from; false on any read or write failure.
[[nodiscard]] bool copyContents(int from, int to) {
    std::unique_ptr<char8[]> buffer(new (std::nothrow) char8[kCopyBufferSize]);
    if (!buffer)
        return false;
    for (;;) {
        ssize_t n = read(from, buffer.get(), kCopyBufferSize);
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0)
            return false;
        if (n == 0)
            return true;
        if (!writeAll(to, buffer.get(), size_t(n)))
            return false;
    }
}

bool sameFile(const struct stat& a, const char8* path) {
    struct stat b;
    return stat(path, &b) == 0 && a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

} // namespace

FNFileSystem* const gFNFileSystem = &theFileSystem;

FStream* FNFileSystem::createStream(const FUrl& url, int32 mode, int32* error) const {
    if (url.isEmpty() || url.isFolder()) {
        setError(error, url.isEmpty() ? ENOENT : EISDIR);
        return nullptr;
    }
    // A bare name lies in the working folder, which exists.
    if (!url.getFolderPath().isEmpty() && !createFolder(url)) {
        setError(error, errno ? errno : ENOENT);
        return nullptr;
    }
    int access = (mode & FStream::kRead) ? O_RDWR : O_WRONLY;
    int fd = openRegularFile(url.getPath().text8(), access | O_CREAT | O_TRUNC | O_NOFOLLOW, 0666);
    return wrap(fd, error);
}

FStream* FNFileSystem::openStream(const FUrl& url, int32 mode, int32* error) const {
    bool reading = mode & FStream::kRead;
    bool writing = mode & FStream::kWrite;
    if (!reading && !writing) {
        setError(error, EINVAL);
        return nullptr;
    }
    if (url.isEmpty()) {
        setError(error, ENOENT);
        return nullptr;
    }
    int access = reading && writing ? O_RDWR : (writing ? O_WRONLY : O_RDONLY);
    return wrap(openRegularFile(url.getPath().text8(), access), error);
}

void FNFileSystem::closeStream(FStream* stream) const {
    if (!stream)
        return;
    stream->close();
    stream->release();
}

bool FNFileSystem::fileExists(const FUrl& url) const {
    struct stat info;
    if (url.isEmpty() || stat(url.getPath().text8(), &info) != 0)
        return false;
    return url.isFolder() ? S_ISDIR(info.st_mode) : S_ISREG(info.st_mode);
}

bool FNFileSystem::folderExists(const FUrl& url) const {
    return !url.isEmpty() && isFolderAt(url.getPath().text8());
}

bool FNFileSystem::createFolder(const FUrl& url) const {
    String path = url.isFolder() ? url.getPath() : url.getFolderPath();
    if (path.isEmpty())
        return false;
    const char8* text = path.text8();
    if (isFolderAt(text))
        return true;
    // Each level in turn; a level that exists already refuses harmlessly.
    for (int32 i = 1; i < path.length(); ++i) {
        if (text[i] == '/') {
            String level(text, i);
            mkdir(level.text8(), 0777);
        }
    }
    mkdir(text, 0777);
    return isFolderAt(text);
}

namespace {
// Finds a free name beside wanted and makes the item there exclusively with make, which fails
// with EEXIST when someone else was first; then the search runs again. So a caller never takes
// over an item it didn't make.
template <class Make> bool claimWith(const FUrl& wanted, FUrl& claimed, Make make) {
    for (int32 attempt = 0; attempt < kClaimAttempts; ++attempt) {
        claimed = wanted;
        if (!claimed.makeUnique())
            return false;
        if (make(claimed.getPath().text8()))
            return true;
        if (errno != EEXIST)
            return false;
    }
    return false;
}
} // namespace

bool FNFileSystem::claimUnique(const FUrl& wanted, FUrl& claimed) const {
    return claimWith(wanted, claimed, [&claimed](const char8* path) {
        if (claimed.isFolder())
            return mkdir(path, 0700) == 0;
        const int fd = open(path, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
        return fd >= 0 && close(fd) == 0;
    });
}

bool FNFileSystem::claimLockedFile(const FUrl& wanted, FUrl& claimed, int& lockedFd) const {
    lockedFd = -1;
    return claimWith(wanted, claimed, [&lockedFd](const char8* path) {
        const int fd = open(path, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
        if (fd < 0)
            return false;
        if (flock(fd, LOCK_EX) != 0) {
            close(fd);
            unlink(path);
            errno = EIO;
            return false;
        }
        lockedFd = fd;
        return true;
    });
}

bool FNFileSystem::renameFile(const FUrl& source, const FUrl& target) const {
    return !source.isEmpty() && !target.isEmpty() &&
           rename(source.getPath().text8(), target.getPath().text8()) == 0;
}

bool FNFileSystem::removeFile(const FUrl& url) const {
    return !url.isEmpty() && unlink(url.getPath().text8()) == 0;
}

bool FNFileSystem::removeFolder(const FUrl& url, bool recursive) const {
    if (url.isEmpty())
        return false;
    const char8* path = url.getPath().text8();
    struct stat info;
    if (lstat(path, &info) != 0)
        return errno == ENOENT;
    if (!S_ISDIR(info.st_mode))
        return false;
    if (recursive) {
        int fd = open(path, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
        if (fd < 0 || !removeContents(fd))
            return false;
    }
    return rmdir(path) == 0;
}

FUrl* FNFileSystem::copyFile(const FUrl& source, const FUrl& target, bool overwrite) const {
    if (source.isEmpty() || target.isEmpty())
        return nullptr;
    int from = openRegularFile(source.getPath().text8(), O_RDONLY);
    if (from < 0)
        return nullptr;
    const char8* targetPath = target.getPath().text8();
    struct stat sourceInfo;
    if (fstat(from, &sourceInfo) != 0 || (overwrite && sameFile(sourceInfo, targetPath))) {
        close(from);
        return nullptr;
    }
    int flags = O_WRONLY | O_CREAT | O_NOFOLLOW | (overwrite ? O_TRUNC : O_EXCL);
    int to = openRegularFile(targetPath, flags, 0666);
    if (to < 0) {
        close(from);
        return nullptr;
    }
    bool copied = copyContents(from, to);
    close(from);
    copied = close(to) == 0 && copied;
    if (!copied) {
        unlink(targetPath);
        return nullptr;
    }
    return new (std::nothrow) FUrl(target.getPath(), false);
}

} // namespace Halvorn

// Locations, audio facts through libsndfile, clips and the media pool.
#include "media.h"
#include "text.h"

#include <sndfile.h>
#include <sys/stat.h>

namespace Halvorn {
namespace RefHost {

bool readAudioFacts(const std::string& path, AudioFacts& facts) {
    SF_INFO info{};
    SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
    if (!file)
        return false;
    sf_close(file);
    facts.sampleRate = float(info.samplerate);
    facts.channels = info.channels;
    facts.frames = info.frames;
    return true;
}

bool fileExists(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

tresult Url::getPath(char16* buffer) {
    if (!buffer)
        return kInvalidArgument;
    toBuffer(path, buffer, kPathSize);
    return kResultOk;
}

tresult Url::setPath(const char16* text, int32 newFlags) {
    if (!text)
        return kInvalidArgument;
    path = text;
    for (auto& unit : path)
        if (unit == u'\\')
            unit = u'/';
    flags = newFlags;
    return kResultOk;
}

std::string Url::label() const { return toUtf8(path); }

FUnknown* Url::faceFor(const FUID& iid) {
    if (iid == FUnknown::iid || iid == IHostUrl::iid)
        return static_cast<IHostUrl*>(this);
    return nullptr;
}

std::string MediaFile::path() const { return location ? toUtf8(location->path) : std::string(); }

tresult MediaFile::load(IHostUrl* url) {
    auto* source = hostCast<Url>(url);
    if (!source || !readFacts(toUtf8(source->path)))
        return kResultFalse;
    location = ledger().make<Url>(source->path);
    pathText = toUtf8(source->path);
    return kResultOk;
}

IHostMediaFile* AudioClip::getFile() { return static_cast<IHostMediaFile*>(this); }

bool AudioClip::setFile(IHostAudioFileInfo* info) {
    auto* file = hostCast<AudioFile>(info);
    if (!file || !file->opened)
        return false;
    facts = file->facts;
    location = ledger().make<Url>(file->path);
    pathText = toUtf8(file->path);
    return true;
}

bool AudioClip::readFacts(const std::string& path) { return readAudioFacts(path, facts); }

FUnknown* AudioClip::faceFor(const FUID& iid) {
    if (iid == FUnknown::iid || iid == IHostAudioClip::iid)
        return static_cast<IHostAudioClip*>(this);
    return Support::faceOf<IHostMediaFile>(iid, this);
}

bool VideoClip::readFacts(const std::string& path) {
    return readVideoFacts(path, frames, sampleRate);
}

FUnknown* VideoClip::faceFor(const FUID& iid) {
    if (iid == FUnknown::iid || iid == IHostMediaFile::iid)
        return static_cast<IHostMediaFile*>(this);
    return Support::faceOf<IHostVideoClip>(iid, this);
}

bool AudioFile::open(IHostUrl* url) {
    auto* source = hostCast<Url>(url);
    opened = source && readAudioFacts(toUtf8(source->path), facts);
    if (opened)
        path = source->path;
    return opened;
}

FUnknown* AudioFile::faceFor(const FUID& iid) {
    if (iid == FUnknown::iid || iid == IHostAudioFile::iid)
        return static_cast<IHostAudioFile*>(this);
    return opened ? Support::faceOf<IHostAudioFileInfo>(iid, this) : nullptr;
}

IHostMediaFile* MediaPool::findFile(IHostUrl* url) {
    auto* wanted = hostCast<Url>(url);
    if (!wanted)
        return nullptr;
    for (auto& file : files)
        if (file->location && file->location->path == wanted->path)
            return file.get();
    return nullptr;
}

tresult MediaPool::addFile(IHostMediaFile* face, int32) {
    auto* file = hostCast<MediaFile>(face);
    if (!file)
        return kInvalidArgument;
    for (auto& held : files)
        if (held.get() == file)
            return kResultFalse;
    files.emplace_back(file);
    return kResultOk;
}

MediaFile* MediaPool::find(const std::string& id) const {
    for (auto& file : files)
        if (file->id == id)
            return file.get();
    return nullptr;
}

FUnknown* MediaPool::faceFor(const FUID& iid) {
    return iid == FUnknown::iid ? static_cast<IHostMediaPool*>(this) : nullptr;
}

} // namespace RefHost
} // namespace Halvorn

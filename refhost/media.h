// Media of the reference host: locations, audio files read with libsndfile, audio and video
// clips, and the project's media pool.
#pragma once

#include "hostapi/hostmedia.h"
#include "ledger.h"

#include <string>
#include <vector>

namespace Halvorn {
namespace RefHost {

struct AudioFacts {
    float sampleRate = 0.0f;
    int32 channels = 0;
    int64 frames = 0;
};

// The facts of an audio file; false when it is missing or not audio.
[[nodiscard]] bool readAudioFacts(const std::string& path, AudioFacts& facts);
[[nodiscard]] bool fileExists(const std::string& path);
// The length of a video file as frames at the rate given, from its movie header (MP4, MOV);
// false when the file is missing or has no such header.
[[nodiscard]] bool readVideoFacts(const std::string& path, int64& frames, float& sampleRate);

class Url : public HostObject, public IHostUrl {
public:
    explicit Url(Ledger& ledger, std::u16string path = {})
        : HostObject(ledger, "location"), path(std::move(path)) {}

    SUPPORT_COUNTED_UNKNOWN
    tresult getPath(char16* buffer) override;
    tresult setPath(const char16* path, int32 flags) override;

    std::string label() const override;
    std::u16string path;
    int32 flags = 0;

protected:
    FUnknown* faceFor(const FUID& iid) override;
};

// A file of the pool. pathText is the path as the session file wrote it.
class MediaFile : public HostObject, public IHostMediaFile {
public:
    MediaFile(Ledger& ledger, const char* kind) : HostObject(ledger, kind) {}

    IHostUrl* getLocation() override { return location.get(); }
    tresult load(IHostUrl* url) override;

    std::string label() const override { return id; }
    // The absolute path of the file, empty before it has a location.
    std::string path() const;

    std::string id;
    std::string pathText;
    IPtr<Url> location;

protected:
    // Reads what the file tells of itself; false when it isn't of this clip's kind.
    [[nodiscard]] virtual bool readFacts(const std::string& path) = 0;
    void dispose() override { location = nullptr; }
};

class AudioClip : public MediaFile, public IHostAudioClip {
public:
    explicit AudioClip(Ledger& ledger) : MediaFile(ledger, "audio clip") {}

    SUPPORT_COUNTED_UNKNOWN
    IHostMediaFile* getFile() override;
    bool setFile(IHostAudioFileInfo* info) override;

    AudioFacts facts;

protected:
    FUnknown* faceFor(const FUID& iid) override;
    bool readFacts(const std::string& path) override;
};

// A video's length comes from the file's movie header, counted in frames of 48 kHz audio; a
// session may state its facts instead.
class VideoClip : public MediaFile, public IHostVideoClip {
public:
    explicit VideoClip(Ledger& ledger) : MediaFile(ledger, "video clip") {}

    SUPPORT_COUNTED_UNKNOWN
    int64 getFrameCount() override { return frames; }
    float getSampleRate() override { return sampleRate; }

    int64 frames = 0;
    float sampleRate = 0.0f;

protected:
    FUnknown* faceFor(const FUID& iid) override;
    bool readFacts(const std::string& path) override;
};

class AudioFile : public HostObject, public IHostAudioFile, public IHostAudioFileInfo {
public:
    explicit AudioFile(Ledger& ledger) : HostObject(ledger, "audio file") {}

    SUPPORT_COUNTED_UNKNOWN
    bool open(IHostUrl* url) override;
    float getSampleRate() override { return facts.sampleRate; }
    int32 getChannelCount() override { return facts.channels; }
    int64 getFrameCount() override { return facts.frames; }

    AudioFacts facts;
    std::u16string path;
    bool opened = false;

protected:
    FUnknown* faceFor(const FUID& iid) override;
};

class MediaPool : public HostObject, public IHostMediaPool {
public:
    explicit MediaPool(Ledger& ledger) : HostObject(ledger, "media pool") {}

    SUPPORT_COUNTED_UNKNOWN
    IHostMediaFile* findFile(IHostUrl* url) override;
    tresult addFile(IHostMediaFile* file, int32 flags) override;

    MediaFile* find(const std::string& id) const;
    std::vector<IPtr<MediaFile>> files;

protected:
    FUnknown* faceFor(const FUID& iid) override;
    void dispose() override { files.clear(); }
};

} // namespace RefHost
} // namespace Halvorn

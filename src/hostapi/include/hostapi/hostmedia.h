// The host's media: locations, audio files and their facts, clips and the project's media pool.
//
// Declarations only, shared by export, import and our reference host. Where the host's table
// holds operations between these, only the ones used are declared, in their order.
#pragma once

#include "corvelle/base.h"

namespace Halvorn {
namespace Quor {

// A location. A new one comes from each IHostContext::getInterface with this identifier.
struct IHostUrl : FUnknown {
    enum { kPathSize = 1024 };
    // Fills a buffer of kPathSize units with the zero-terminated path.
    virtual tresult getPath(char16* buffer) = 0;
    // flags 0 for a file, 1 for a folder.
    virtual tresult setPath(const char16* path, int32 flags) = 0;

    static constexpr FUID iid = FUID::make(0x0AF38EA1, 0x40F2, 0x4B14, 0x965B, 0xF97CA4FF94D1);
};

// A file of the pool: audio clips and video clips answer for it.
struct IHostMediaFile : FUnknown {
    // Borrowed, valid while the file lives; null before the file has a location.
    virtual IHostUrl* getLocation() = 0;
    virtual tresult load(IHostUrl* url) = 0;

    static constexpr FUID iid = FUID::make(0xE34A31B4, 0xADCB, 0x40BC, 0xBCE6, 0x4393CFBF48BF);
};

// Facts of an opened audio file.
struct IHostAudioFileInfo : FUnknown {
    virtual float getSampleRate() = 0;
    virtual int32 getChannelCount() = 0;
    virtual int64 getFrameCount() = 0;

    static constexpr FUID iid = FUID::make(0x0251DA1B, 0x82F7, 0x43B1, 0x9017, 0x504B587B0623);
};

// An audio file reader; new at each getInterface. Once opened it answers for IHostAudioFileInfo.
struct IHostAudioFile : FUnknown {
    // True if the file exists and is audio.
    virtual bool open(IHostUrl* url) = 0;

    static constexpr FUID iid = FUID::make(0x98ECBB42, 0x93A1, 0x4849, 0x98FE, 0x6F8C40EC22D3);
};

// The audio of an audio event; answers for IHostMediaFile.
struct IHostAudioClip : FUnknown {
    // Borrowed, valid while the clip lives; leads on to the location.
    virtual IHostMediaFile* getFile() = 0;
    virtual bool setFile(IHostAudioFileInfo* info) = 0;

    static constexpr FUID iid = FUID::make(0xCB1EE990, 0xBC4F, 0x40C7, 0xA0E0, 0x1D1EE7551F55);
};

// The video of a video event; answers for IHostMediaFile.
struct IHostVideoClip : FUnknown {
    // The length in sample frames.
    virtual int64 getFrameCount() = 0;
    virtual float getSampleRate() = 0;

    static constexpr FUID iid = FUID::make(0x803C3FED, 0x57A6, 0x48E8, 0xB81F, 0xCE638CC87AD3);
};

// The project's media pool. No identifier.
struct IHostMediaPool : FUnknown {
    // Borrowed, valid while the pool holds it: the pool's file at this location, or null.
    virtual IHostMediaFile* findFile(IHostUrl* url) = 0;
    // The pool adds its own reference. flags is 0.
    virtual tresult addFile(IHostMediaFile* file, int32 flags) = 0;
    // No identifier: this face is never asked for through queryInterface, and naming
    // I::iid for it doesn't compile.
    struct iid;
};

} // namespace Quor
} // namespace Halvorn

// Shared test fixture: the example session with its media in a temporary folder, loaded into a
// workstation that the test drives through the host interfaces and whose ledger must end clean.
#pragma once

#include "corvelle/package.h"
#include "hostapi/hostapi.h"
#include "support/scratchfolder.h"
#include "text.h"
#include "workstation.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace Halvorn {
class CvService;
namespace RefHostTest {

void writeWav(const std::string& path, int frames, int channels, int sampleRate);
void writeText(const std::string& path, const std::string& text);
nlohmann::json exampleSession();
// The bytes of a video file that has only what tells its length: "ftyp", and "moov" with a
// movie header of this version (0 or 1), timescale and duration.
std::string movieFile(int version, uint32 timescale, uint64 duration);
std::string utf8(const char16* text);
// A sound file's bytes: frames of one channel at 44.1 kHz.
std::string wavBytes(const std::string& scratch, int frames);
// The filter service as a host makes it, initialized with host.
IPtr<CvService> startService(IHostContext* host);
// Reads the package with its media into the type folders below into (Audio, Video, Preset,
// Midi); with into empty, only the document.
IPtr<IMediaProjectPackage> readPackage(const std::string& path, const std::string& into = {});

class HostTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;
    // Loads session with the media of the example, replacing the workstation.
    void load(const nlohmann::json& session);

    IHostContext* host() const { return station->context(); }
    template <class I> IPtr<I> service() const {
        void* out = nullptr;
        if (host()->getInterface(I::iid, &out) != kResultOk)
            return {};
        return IPtr<I>::adopt(static_cast<I*>(out));
    }
    IHostProject* project() const;
    // The children of a timeline object in iteration order; borrowed.
    static std::vector<FUnknown*> children(FUnknown* object);
    // A project track by name, as the iterator hands it out; borrowed.
    FUnknown* track(const std::u16string& name) const;
    IHostParameterOwner* mixer() const;
    // A mixer channel by its title; borrowed.
    IHostParameterOwner* channel(const std::u16string& title) const;
    static IHostParameterOwner* child(IHostParameterOwner* owner, const std::string& name);

    std::unique_ptr<CorvelleSupport::ScratchFolder> folder;
    std::unique_ptr<RefHost::Workstation> station;
};

} // namespace RefHostTest
} // namespace Halvorn

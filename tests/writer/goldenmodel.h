// The model behind tests/data/golden/project.xml, built in code through the model's fillers.
#pragma once

#include "corvelle/ptr.h"
#include "model/cvproject.h"

#include <string>

namespace WriterTest {

// The media that the golden model refers to, made below a folder of the test's own.
struct GoldenMedia {
    explicit GoldenMedia(const std::string& folder);

    std::string guitar;     // audio/guitar.wav
    std::string guitarTwin; // another guitar.wav, in another folder: the first one must win
    std::string missing;    // an audio path where no file lies
    std::string movie;      // video/movie.mp4
    std::string state;      // plugins/reverb.quorpreset
};

// Every element family once: a folder with an audio and a notes track, channels with every
// fixed parameter, a plug-in, built-in devices, an equalizer with a band, sends, audio with
// warps, notes, video, automation of both point kinds, tempo, signature and markers, and the
// objects that the format leaves out (an AU plug-in, a VCA channel, a lane without target).
Halvorn::IPtr<Halvorn::CvProject> buildGoldenProject(const GoldenMedia& media);

} // namespace WriterTest

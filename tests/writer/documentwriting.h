// Runs the document writer on a model into a tree of the test's own and gives back the text;
// the small models whose media the tests stage.
#pragma once

#include "corvelle/ptr.h"
#include "model/cvproject.h"

#include <string>
#include <vector>

namespace WriterTest {

// Writes project.xml for the project into tree (staging the media there) and gives its bytes;
// written tells whether writeProject said true.
std::string writeProjectDocument(Halvorn::IMediaProject* project, const std::string& tree,
                                 bool* written = nullptr);

// An audio and a video track of one clip each and a master channel of plug-ins, whose events
// and devices refer to the given files.
Halvorn::IPtr<Halvorn::CvProject> projectOf(const std::vector<std::string>& audio,
                                            const std::vector<std::string>& video = {},
                                            const std::vector<std::string>& states = {});

} // namespace WriterTest

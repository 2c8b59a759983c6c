// Runs the document writer on a model into a tree of the test's own and gives back the text.
#pragma once

#include "corvelle/mediaproject.h"

#include <string>

namespace WriterTest {

// Writes project.xml for the project into tree (staging the media there) and gives its bytes;
// written tells whether writeProject said true.
std::string writeProjectDocument(Halvorn::IMediaProject* project, const std::string& tree,
                                 bool* written = nullptr);
std::string writeMetaDataDocument(const std::string& tree);

// The first line where two texts differ, with both versions, for a readable failure.
std::string firstDifference(const std::string& expected, const std::string& actual);

} // namespace WriterTest

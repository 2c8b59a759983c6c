// Helpers of the document tests: read a document given as text, and read the model's texts.
#pragma once

#include "corvelle/ptr.h"
#include "documents/cvxmlreader.h"
#include "foundation/memorystream.h"
#include "model/cvproject.h"

#include <string>

namespace Halvorn {
namespace DocumentTest {

// The project that the reader makes of the text, or null.
inline IPtr<CvProject> read(const std::string& xml) {
    MemoryStream stream(const_cast<char*>(xml.data()), xml.size());
    IPtr<CvXmlReader> reader = newObject<CvXmlReader>();
    return IPtr<CvProject>::adopt(reader->readProject(&stream));
}

// A whole document with the given content inside the root.
inline std::string project(const std::string& content) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Project version=\"1.0\">" + content +
           "</Project>";
}

inline std::string utf8(const char16* text) { return String(text).text8(); }

} // namespace DocumentTest
} // namespace Halvorn

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

// A document whose Structure holds the given content.
inline std::string structure(const std::string& content) {
    return project("<Structure>" + content + "</Structure>");
}

inline std::string utf8(const char16* text) { return String(text).text8(); }

// Id, name and colour of a model object, or of an object behind an interface.
inline IMediaObject* objectFace(CvNode* node) { return node; }
inline IPtr<IMediaObject> objectFace(FUnknown* object) {
    return queryInterface<IMediaObject>(object);
}

template <class T> std::string idOf(T* object) {
    auto face = objectFace(object);
    return face ? utf8(face->getId()) : "<no object>";
}

template <class T> std::string nameOf(T* object) {
    auto face = objectFace(object);
    return face ? utf8(face->getName()) : "<no object>";
}

// The colour as "#rrggbbaa".
template <class T> std::string colorOf(T* object) {
    auto face = objectFace(object);
    if (!face)
        return "<no object>";
    IMediaColor* color = face->getColor();
    return CvColor(color->getRed(), color->getGreen(), color->getBlue(), color->getAlpha())
        .toString()
        .text8();
}

} // namespace DocumentTest
} // namespace Halvorn

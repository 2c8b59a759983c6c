// The interfaces of the XML output layer: IUTF8XmlWriter for calls one by one, IXmlWriter for
// whole elements. Both are faces of UTF8XmlWriter; the project documents use the first.
#pragma once

#include "corvelle/stream.h"

namespace Halvorn {

// The common base of the layer's interfaces; it adds no operation.
struct IXmlModule : FUnknown {};

// Text is zero-terminated UTF-8; a null text gives kInvalidArgument.
struct IUTF8XmlWriter : IXmlModule {
    // flags: the option bits of Xml::Writer; docType may be null.
    virtual tresult open(IBStream* stream, int32 flags, const char8* docType) = 0;
    virtual tresult startElement(const char8* name) = 0;
    virtual tresult addAttribute(const char8* name, const char8* value) = 0;
    virtual tresult endElement() = 0;
    virtual tresult writeComment(const char8* text) = 0;
    virtual tresult writeText(const char8* text, bool escape) = 0;

    static constexpr FUID iid = FUID::make(0xB78E6B8B, 0x077D, 0x4A94, 0xAA7E, 0xBB92F9701548);
};

struct IXmlWriter : IXmlModule {
    // Opens with indentation and no document type.
    virtual tresult open(IBStream* stream) = 0;
    // Starts the element, adds count attributes and, with close, ends it at once; stops at the
    // first failure and gives its result.
    virtual tresult startElement(const char8* name, int32 count, const char8** names,
                                 const char8** values, bool close) = 0;
    // kInvalidArgument unless name is the innermost open element.
    virtual tresult endElement(const char8* name) = 0;
    // Holds its place in the table; not offered: kNotImplemented.
    virtual tresult reserved() = 0;

    static constexpr FUID iid = FUID::make(0xB17ED555, 0xCA82, 0x4F33, 0xAF3A, 0xE93C6B7260B7);
};

} // namespace Halvorn

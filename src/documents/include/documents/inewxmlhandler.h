// INewXmlHandler: receives the events of an XML parse, one call for each element and text run.
#pragma once

#include "corvelle/base.h"

namespace Halvorn {

class FXmlParser2;

// The parser calls these on its own thread, in document order. parser is the one that calls,
// borrowed for the call; a handler may stop it through it.
struct INewXmlHandler : FUnknown {
    // attributes: the parser's null-ended list of alternating names and values, UTF-8.
    virtual void startElement(FXmlParser2* parser, const char8* name, const char8** attributes) = 0;
    virtual void endElement(FXmlParser2* parser, const char8* name) = 0;
    // text is not zero-terminated: length bytes of UTF-8.
    virtual void characterData(FXmlParser2* parser, const char8* text, int32 length) = 0;
    virtual void comment(FXmlParser2* parser, const char8* text) = 0;

    static constexpr FUID iid = FUID::make(0x8BC2E9B8, 0x9910, 0x4B12, 0xAB35, 0x40EA0F9DD7E1);
};

} // namespace Halvorn

// CvXmlOutput: the project writer's typed calls onto the output layer, one per value kind.
#pragma once

#include "documents/cvbufferedstream.h"
#include "documents/xml/utf8xmlwriter.h"
#include "foundation/fstring.h"

#include <string>

namespace Halvorn {

// Each value goes out by the format's rule for its type. An attribute with an empty value is
// left out rather than passed on, since the output layer would take it for an error of the
// caller and cut the document there: the attributes that the format writes "always" but that
// the model can leave empty (a lane's track, a device's name, an unknown role or unit) then
// read as their defaults. Model text is made safe for XML on the way (see Xml::toXmlUtf8).
class CvXmlOutput {
public:
    // The document goes to stream, through a buffer of its own.
    explicit CvXmlOutput(IBStream* stream) : buffer_(stream) {}

    // Opens the layer with indentation and no document type.
    [[nodiscard]] bool open();
    // True when the whole document reached the stream.
    [[nodiscard]] bool close();

    void start(const char8* element);
    void end();

    // UTF-8 and UTF-16 text, both made safe for XML.
    void text(const char8* name, const char8* utf8);
    void text(const char8* name, const char16* text);
    void real(const char8* name, double value, uint32 precision);
    void integer(const char8* name, int64 value);
    void boolean(const char8* name, bool value);

private:
    void add(const char8* name, const std::string& value);

    CvBufferedStream buffer_;
    UTF8XmlWriter writer_; // closed before the buffer goes
};

} // namespace Halvorn

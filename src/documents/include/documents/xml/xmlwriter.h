// Xml::Writer: the streaming writer that turns element and attribute calls into UTF-8 text.
#pragma once

#include "corvelle/ptr.h"
#include "corvelle/stream.h"

#include <deque>
#include <string>
#include <string_view>

namespace Halvorn {
namespace Xml {

// The caller's order of calls is the whole format of a document; this writer only checks that
// each call is legal in its state. Every piece of output goes to the stream in one write. After
// any failure (a short write, an illegal call) it swallows all further output until close, and
// close reports it, so a caller that looks only at close knows whether the document is whole.
// Beyond the letter of the calls it refuses what would make the text ill-formed: a second root
// element, text outside the root, and an unbalanced end.
class Writer {
public:
    // Option bits of open.
    enum Flags : int32 {
        kIndent = 1,        // a line feed and tabs before each element, a line feed at the end
        kCheckNames = 2,    // refuse element names with characters that can't start or stand
        kCheckComments = 4, // refuse comments that end in "-" or hold "--"
        kNoDeclaration = 8, // no XML declaration line
    };

    enum State { kClosed, kIdle, kInStartTag, kFailed };

    // Texts here: at most 80 bytes of text content on one indented line.
    static constexpr size_t kTextPieceSize = 80;

    Writer() = default;
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;
    // Closes whatever is open.
    ~Writer() { close(); }

    // Takes a reference on the stream and writes the declaration and, when docType isn't
    // empty, a DOCTYPE line. kResultFalse when already open (the first stream stays in use) or
    // when that first write fails; kInvalidArgument without a stream.
    tresult open(IBStream* stream, int32 flags, std::string_view docType);
    // Ends every open element, adds the final line feed and lets go of the stream. kResultOk
    // only when the document was whole; safe in any state.
    tresult close();

    tresult startElement(std::string_view name);
    // Only in a start tag, with a non-empty name and value; the value is escaped.
    tresult addAttribute(std::string_view name, std::string_view value);
    // " />" for an element that is still in its start tag, else a closing tag.
    tresult endElement();
    tresult writeComment(std::string_view text);
    tresult writeText(std::string_view text, bool escape);

    State getState() const { return state_; }
    // The innermost open element's name, or empty.
    std::string_view innermostElement() const;

private:
    [[nodiscard]] tresult fail();
    // Writes buffer_ in one piece; on a short write or a stream error goes to the failed state.
    [[nodiscard]] tresult flush();
    // The failed and closed states end every operation but close before it starts.
    [[nodiscard]] bool isUsable(tresult& result) const;
    void appendIndent(size_t depth);
    static void appendEscaped(std::string& out, std::string_view text);
    static bool isValidName(std::string_view name);
    static bool isValidComment(std::string_view text);

    IPtr<IBStream> stream_;
    std::deque<std::string> openElements_;
    State state_ = kClosed;
    int32 flags_ = 0;
    bool atDocumentStart_ = false;
    bool rootWritten_ = false;
    std::string buffer_;
};

} // namespace Xml
} // namespace Halvorn

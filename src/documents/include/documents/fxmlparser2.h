// FXmlParser2: pulls a stream through expat and forwards its events to an INewXmlHandler.
#pragma once

#include "corvelle/base.h"
#include "corvelle/ptr.h"
#include "corvelle/stream.h"
#include "documents/inewxmlhandler.h"

struct XML_ParserStruct;

namespace Halvorn {

// One parser for one document. The encoding given at construction overrides whatever the
// document's declaration names. No namespace processing. Not copyable.
class FXmlParser2 {
public:
    static constexpr int32 kBlockSize = 32768;
    // The longest single token (a start tag with its attributes, a comment) and the longest run
    // of text that a document may hold; more is refused as too large.
    static constexpr int64 kMaxTokenBytes = 64ll << 20;

    // Holds a reference to handler (null allowed: events are then dropped).
    FXmlParser2(INewXmlHandler* handler, const char8* encoding);
    ~FXmlParser2();
    FXmlParser2(const FXmlParser2&) = delete;
    FXmlParser2& operator=(const FXmlParser2&) = delete;

    void setHandler(INewXmlHandler* handler);

    // Reads the stream in blocks of kBlockSize to its end; while a token stays open across
    // blocks, the block grows with it, so that the cost stays linear in the document's size.
    // True for a well-formed document and for a suspended parse; also when something follows
    // the document element, and then the stream stands at the first byte behind the document.
    // False for malformed XML, a token or text over kMaxTokenBytes, a stopped parse, a null
    // stream or a parser that could not be made.
    [[nodiscard]] bool parse(IBStream* stream);

    // For a handler during parse: stop ends the parse as failed, suspend ends it as a success
    // that can be taken up again with resume.
    void stop();
    void suspend();
    [[nodiscard]] bool resume();

    // expat's error code of the last parse (an XML_Error), 0 when there was none.
    int32 getErrorCode() const;
    // expat's short text for that code ("mismatched tag"); empty when there was none.
    const char8* getErrorText() const;
    // Where the parse stands, or where it stopped: line and column counted from 1.
    int32 getLine() const;
    int32 getColumn() const;
    // True when the last parse failed on a token or text over kMaxTokenBytes.
    bool wasTooLarge() const { return tooLarge_; }

private:
    static void onStartElement(void* self, const char8* name, const char8** attributes);
    static void onEndElement(void* self, const char8* name);
    static void onCharacterData(void* self, const char8* text, int length);
    static void onComment(void* self, const char8* text);
    // A token that closed within one large block was never seen open: its size is checked as
    // it is handed over. True when it was too large and the parse is stopped.
    bool refuseLargeToken();

    XML_ParserStruct* parser_ = nullptr;
    IPtr<INewXmlHandler> handler_;
    int64 textRun_ = 0;
    bool tooLarge_ = false;
};

} // namespace Halvorn

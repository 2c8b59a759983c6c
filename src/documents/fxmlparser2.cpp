// FXmlParser2: the block loop over expat and the forwarding of its callbacks.
#include "documents/fxmlparser2.h"

#include <expat.h>

namespace Halvorn {

FXmlParser2::FXmlParser2(INewXmlHandler* handler, const char8* encoding)
    : parser_(XML_ParserCreate(encoding)), handler_(handler) {
    if (!parser_)
        return;
    XML_SetUserData(parser_, this);
    XML_SetStartElementHandler(parser_, &FXmlParser2::onStartElement);
    XML_SetEndElementHandler(parser_, &FXmlParser2::onEndElement);
    XML_SetCharacterDataHandler(parser_, &FXmlParser2::onCharacterData);
    XML_SetCommentHandler(parser_, &FXmlParser2::onComment);
}

FXmlParser2::~FXmlParser2() {
    if (parser_)
        XML_ParserFree(parser_);
}

void FXmlParser2::setHandler(INewXmlHandler* handler) { handler_ = handler; }

bool FXmlParser2::parse(IBStream* stream) {
    if (!parser_ || !stream)
        return false;
    tooLarge_ = false;
    textRun_ = 0;
    int64 fed = 0;
    int32 blockSize = kBlockSize;
    for (;;) {
        void* buffer = XML_GetBuffer(parser_, blockSize);
        if (!buffer)
            return false;
        int32 count = 0;
        if (stream->read(buffer, blockSize, &count) != kResultOk || count < 0 || count > blockSize)
            count = 0;
        fed += count;
        XML_Status status = XML_ParseBuffer(parser_, count, count == 0);
        if (status == XML_STATUS_SUSPENDED)
            return true;
        if (status == XML_STATUS_OK) {
            if (count == 0)
                return true;
            // expat scans a token that is still open again from its start with every block;
            // a block at least as large as the open part keeps that cost linear in total.
            const XML_Index tokenStart = XML_GetCurrentByteIndex(parser_);
            const int64 open = tokenStart >= 0 && tokenStart <= fed ? fed - tokenStart : 0;
            if (open > kMaxTokenBytes) {
                tooLarge_ = true;
                return false;
            }
            blockSize = open > kBlockSize ? static_cast<int32>(open) : kBlockSize;
            continue;
        }
        if (XML_GetErrorCode(parser_) != XML_ERROR_JUNK_AFTER_DOC_ELEMENT)
            return false;
        // What follows the document is left to the stream's next reader.
        XML_Index end = XML_GetCurrentByteIndex(parser_);
        if (end > 0)
            stream->seek(end, IBStream::kSeekFromStart, nullptr);
        return true;
    }
}

void FXmlParser2::stop() {
    if (parser_)
        XML_StopParser(parser_, XML_FALSE);
}

void FXmlParser2::suspend() {
    if (parser_)
        XML_StopParser(parser_, XML_TRUE);
}

bool FXmlParser2::resume() { return parser_ && XML_ResumeParser(parser_) != XML_STATUS_ERROR; }

int32 FXmlParser2::getErrorCode() const {
    return parser_ ? static_cast<int32>(XML_GetErrorCode(parser_)) : 0;
}

const char8* FXmlParser2::getErrorText() const {
    const XML_LChar* text = parser_ ? XML_ErrorString(XML_GetErrorCode(parser_)) : nullptr;
    return text && getErrorCode() != XML_ERROR_NONE ? text : "";
}

int32 FXmlParser2::getLine() const {
    return parser_ ? static_cast<int32>(XML_GetCurrentLineNumber(parser_)) : 0;
}

// expat counts columns from 0; people and editors from 1.
int32 FXmlParser2::getColumn() const {
    return parser_ ? static_cast<int32>(XML_GetCurrentColumnNumber(parser_)) + 1 : 0;
}

bool FXmlParser2::refuseLargeToken() {
    if (XML_GetCurrentByteCount(parser_) <= kMaxTokenBytes)
        return false;
    tooLarge_ = true;
    stop();
    return true;
}

void FXmlParser2::onStartElement(void* self, const char8* name, const char8** attributes) {
    auto* parser = static_cast<FXmlParser2*>(self);
    parser->textRun_ = 0;
    if (parser->refuseLargeToken())
        return;
    if (parser->handler_)
        parser->handler_->startElement(parser, name, attributes);
}

void FXmlParser2::onEndElement(void* self, const char8* name) {
    auto* parser = static_cast<FXmlParser2*>(self);
    parser->textRun_ = 0;
    if (parser->handler_)
        parser->handler_->endElement(parser, name);
}

void FXmlParser2::onCharacterData(void* self, const char8* text, int length) {
    auto* parser = static_cast<FXmlParser2*>(self);
    // expat hands text over in pieces, so a run of text is counted across them.
    parser->textRun_ += length;
    if (parser->textRun_ > kMaxTokenBytes) {
        parser->tooLarge_ = true;
        parser->stop();
        return;
    }
    if (parser->handler_)
        parser->handler_->characterData(parser, text, length);
}

void FXmlParser2::onComment(void* self, const char8* text) {
    auto* parser = static_cast<FXmlParser2*>(self);
    if (parser->refuseLargeToken())
        return;
    if (parser->handler_)
        parser->handler_->comment(parser, text);
}

} // namespace Halvorn

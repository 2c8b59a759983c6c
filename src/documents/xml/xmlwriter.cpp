// Xml::Writer: declaration, indentation, empty-element form and escaping of the output layer.
#include "documents/xml/xmlwriter.h"

#include <climits>

namespace Halvorn {
namespace Xml {

namespace {

constexpr std::string_view kDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

struct Escape {
    char byte;
    std::string_view entity;
};

// Searched linearly for each byte; every other byte, tab and carriage return included, passes.
constexpr Escape kEscapes[] = {
    {'&', "&amp;"},  {'<', "&lt;"},    {'>', "&gt;"},
    {'"', "&quot;"}, {'\'', "&apos;"}, {'\n', "&#10;"},
};

// Characters that may neither start nor stand in a checked element name.
constexpr std::string_view kNameStartRefused = "-.0123456789";
constexpr std::string_view kNameRefused = " \"`\\!#$%&'()*+,/;<=>?@[]^{|}~";

// Backs up from a cut at `end` so that no UTF-8 sequence is split across two lines.
size_t utf8Boundary(std::string_view text, size_t end) {
    if (end >= text.size())
        return text.size();
    size_t cut = end;
    while (cut > 0 && (static_cast<unsigned char>(text[cut]) & 0xC0) == 0x80)
        --cut;
    return cut == 0 ? end : cut;
}

} // namespace

tresult Writer::open(IBStream* stream, int32 flags, std::string_view docType) {
    if (state_ != kClosed)
        return kResultFalse;
    if (!stream)
        return kInvalidArgument;
    stream_ = stream;
    openElements_.clear();
    rootWritten_ = false;
    flags_ = flags;
    state_ = kIdle;
    buffer_.clear();
    if (!(flags & kNoDeclaration))
        buffer_ = kDeclaration;
    if (!docType.empty()) {
        buffer_ += "<!DOCTYPE ";
        buffer_ += docType;
        buffer_ += ">\n";
    }
    if (!buffer_.empty() && flush() != kResultOk)
        return kResultFalse;
    atDocumentStart_ = true;
    return kResultOk;
}

tresult Writer::close() {
    if (state_ == kIdle || state_ == kInStartTag) {
        while (!openElements_.empty() && endElement() == kResultOk) {
        }
        if (state_ == kIdle && (flags_ & kIndent)) {
            buffer_ = "\n";
            (void)flush();
        }
    }
    const bool whole = state_ == kIdle;
    state_ = kClosed;
    openElements_.clear();
    stream_ = nullptr;
    return whole ? kResultOk : kResultFalse;
}

bool Writer::isUsable(tresult& result) const {
    if (!stream_) {
        result = kNotInitialized;
        return false;
    }
    if (state_ == kFailed) {
        result = kResultFalse;
        return false;
    }
    return true;
}

tresult Writer::startElement(std::string_view name) {
    tresult result;
    if (!isUsable(result))
        return result;
    // A second root would make the document ill-formed.
    if (name.empty() || (openElements_.empty() && rootWritten_))
        return fail();
    if ((flags_ & kCheckNames) && !isValidName(name))
        return fail();
    buffer_.clear();
    if (state_ == kInStartTag)
        buffer_ = ">";
    if (flags_ & kIndent) {
        if (!atDocumentStart_)
            buffer_ += '\n';
        appendIndent(openElements_.size());
    }
    buffer_ += '<';
    buffer_ += name;
    if (flush() != kResultOk)
        return kResultFalse;
    atDocumentStart_ = false;
    rootWritten_ = true;
    openElements_.emplace_back(name);
    state_ = kInStartTag;
    return kResultOk;
}

tresult Writer::addAttribute(std::string_view name, std::string_view value) {
    tresult result;
    if (!isUsable(result))
        return result;
    if (state_ != kInStartTag || name.empty() || value.empty())
        return fail();
    buffer_ = " ";
    buffer_ += name;
    buffer_ += "=\"";
    appendEscaped(buffer_, value);
    buffer_ += '"';
    return flush();
}

tresult Writer::endElement() {
    tresult result;
    if (!isUsable(result))
        return result;
    if (openElements_.empty())
        return fail();
    if (state_ == kInStartTag) {
        buffer_ = " />";
    } else {
        buffer_.clear();
        if (flags_ & kIndent) {
            buffer_ += '\n';
            appendIndent(openElements_.size() - 1);
        }
        buffer_ += "</";
        buffer_ += openElements_.back();
        buffer_ += '>';
    }
    if (flush() != kResultOk)
        return kResultFalse;
    openElements_.pop_back();
    state_ = kIdle;
    return kResultOk;
}

tresult Writer::writeComment(std::string_view text) {
    tresult result;
    if (!isUsable(result))
        return result;
    if (state_ != kIdle || text.empty())
        return fail();
    if ((flags_ & kCheckComments) && !isValidComment(text))
        return kResultFalse;
    buffer_ = "<!--";
    buffer_ += text;
    buffer_ += "-->";
    if (!(flags_ & kIndent))
        buffer_ += '\n';
    if (flush() != kResultOk)
        return kResultFalse;
    atDocumentStart_ = false;
    return kResultOk;
}

tresult Writer::writeText(std::string_view text, bool escape) {
    tresult result;
    if (!isUsable(result))
        return result;
    // Text outside the root element would make the document ill-formed.
    if (text.empty() || openElements_.empty())
        return fail();
    buffer_.clear();
    if (state_ == kInStartTag) {
        buffer_ = ">";
        state_ = kIdle;
    }
    if (!(flags_ & kIndent)) {
        if (escape)
            appendEscaped(buffer_, text);
        else
            buffer_ += text;
        return flush();
    }
    buffer_ += '\n';
    appendIndent(openElements_.size());
    size_t start = 0;
    while (start < text.size()) {
        const size_t end = utf8Boundary(text, start + kTextPieceSize);
        const std::string_view piece = text.substr(start, end - start);
        if (start > 0) {
            buffer_ += '\n';
            appendIndent(openElements_.size());
        }
        if (escape)
            appendEscaped(buffer_, piece);
        else
            buffer_ += piece;
        start = end;
    }
    return flush();
}

std::string_view Writer::innermostElement() const {
    return openElements_.empty() ? std::string_view() : std::string_view(openElements_.back());
}

tresult Writer::fail() {
    openElements_.clear();
    state_ = kFailed;
    return kResultFalse;
}

tresult Writer::flush() {
    if (buffer_.size() > static_cast<size_t>(INT32_MAX))
        return fail();
    const int32 count = static_cast<int32>(buffer_.size());
    int32 done = 0;
    if (stream_->write(buffer_.data(), count, &done) != kResultOk || done != count)
        return fail();
    return kResultOk;
}

void Writer::appendIndent(size_t depth) { buffer_.append(depth, '\t'); }

void Writer::appendEscaped(std::string& out, std::string_view text) {
    for (char byte : text) {
        std::string_view entity;
        for (const Escape& escape : kEscapes) {
            if (escape.byte == byte) {
                entity = escape.entity;
                break;
            }
        }
        if (entity.empty())
            out += byte;
        else
            out += entity;
    }
}

bool Writer::isValidName(std::string_view name) {
    if (kNameStartRefused.find(name.front()) != std::string_view::npos)
        return false;
    return name.find_first_of(kNameRefused) == std::string_view::npos;
}

bool Writer::isValidComment(std::string_view text) {
    return text.back() != '-' && text.find("--") == std::string_view::npos;
}

} // namespace Xml
} // namespace Halvorn

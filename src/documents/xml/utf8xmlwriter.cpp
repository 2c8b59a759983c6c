// UTF8XmlWriter: passes the calls of its two faces on to the Xml::Writer it holds.
#include "documents/xml/utf8xmlwriter.h"

namespace Halvorn {

tresult UTF8XmlWriter::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, IUTF8XmlWriter)
    CV_QUERY(iid, object, IXmlWriter)
    return FObject::queryInterface(iid, object);
}

tresult UTF8XmlWriter::open(IBStream* stream, int32 flags, const char8* docType) {
    return writer_.open(stream, flags, docType ? docType : "");
}

tresult UTF8XmlWriter::startElement(const char8* name) {
    return name ? writer_.startElement(name) : kInvalidArgument;
}

tresult UTF8XmlWriter::addAttribute(const char8* name, const char8* value) {
    return name && value ? writer_.addAttribute(name, value) : kInvalidArgument;
}

tresult UTF8XmlWriter::endElement() { return writer_.endElement(); }

tresult UTF8XmlWriter::writeComment(const char8* text) {
    return text ? writer_.writeComment(text) : kInvalidArgument;
}

tresult UTF8XmlWriter::writeText(const char8* text, bool escape) {
    return text ? writer_.writeText(text, escape) : kInvalidArgument;
}

tresult UTF8XmlWriter::open(IBStream* stream) {
    return writer_.open(stream, Xml::Writer::kIndent, "");
}

tresult UTF8XmlWriter::startElement(const char8* name, int32 count, const char8** names,
                                    const char8** values, bool close) {
    if (!name || count < 0 || (count > 0 && (!names || !values)))
        return kInvalidArgument;
    tresult result = writer_.startElement(name);
    for (int32 i = 0; result == kResultOk && i < count; ++i)
        result = addAttribute(names[i], values[i]);
    if (result == kResultOk && close)
        result = writer_.endElement();
    return result;
}

tresult UTF8XmlWriter::endElement(const char8* name) {
    if (!name || writer_.innermostElement() != std::string_view(name))
        return kInvalidArgument;
    return writer_.endElement();
}

} // namespace Halvorn

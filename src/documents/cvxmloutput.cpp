// CvXmlOutput: text, real, integer and Boolean attributes by the document's value rules.
#include "documents/cvxmloutput.h"

#include "documents/cvschemanames.h"
#include "documents/cvvaluerules.h"
#include "documents/xml/xmltext.h"

namespace Halvorn {

bool CvXmlOutput::open() {
    return writer_.open(&buffer_, Xml::Writer::kIndent, nullptr) == kResultOk;
}

bool CvXmlOutput::close() {
    const bool whole = writer_.close() == kResultOk;
    return buffer_.flush() && whole;
}

void CvXmlOutput::start(const char8* element) { (void)writer_.startElement(element); }

void CvXmlOutput::end() { (void)writer_.endElement(); }

void CvXmlOutput::add(const char8* name, const std::string& value) {
    if (!value.empty())
        (void)writer_.addAttribute(name, value.c_str());
}

void CvXmlOutput::text(const char8* name, const char8* utf8) { add(name, Xml::toXmlUtf8(utf8)); }

void CvXmlOutput::text(const char8* name, const char16* value) { add(name, Xml::toXmlUtf8(value)); }

void CvXmlOutput::real(const char8* name, double value, uint32 precision) {
    const String printed = CvValueRules::formatReal(value, precision);
    add(name, printed.text8());
}

void CvXmlOutput::integer(const char8* name, int64 value) { add(name, std::to_string(value)); }

void CvXmlOutput::boolean(const char8* name, bool value) {
    add(name, value ? CvSchema::Text::kTrue : CvSchema::Text::kFalse);
}

} // namespace Halvorn

// UTF8XmlWriter: the reference-counted object around one Xml::Writer, with the layer's two faces.
#pragma once

#include "documents/xml/ixmlwriter.h"
#include "documents/xml/xmlwriter.h"
#include "foundation/fobject.h"

namespace Halvorn {

// Made on the stack of its user, with its one reference; the destructor closes the writer.
class UTF8XmlWriter : public FObject, public IUTF8XmlWriter, public IXmlWriter {
public:
    CV_DECLARE_TYPE(UTF8XmlWriter, FObject)
    CV_REFCOUNT_METHODS(FObject)
    tresult queryInterface(const FUID& iid, void** object) override;

    UTF8XmlWriter() = default;
    ~UTF8XmlWriter() override = default;

    tresult open(IBStream* stream, int32 flags, const char8* docType) override;
    tresult startElement(const char8* name) override;
    tresult addAttribute(const char8* name, const char8* value) override;
    tresult endElement() override;
    tresult writeComment(const char8* text) override;
    tresult writeText(const char8* text, bool escape) override;

    tresult open(IBStream* stream) override;
    tresult startElement(const char8* name, int32 count, const char8** names, const char8** values,
                         bool close) override;
    tresult endElement(const char8* name) override;
    tresult reserved() override { return kNotImplemented; }

    // Ends what is open and lets go of the stream; kResultOk when the document is whole.
    tresult close() { return writer_.close(); }
    Xml::Writer::State getState() const { return writer_.getState(); }

private:
    Xml::Writer writer_;
};

} // namespace Halvorn

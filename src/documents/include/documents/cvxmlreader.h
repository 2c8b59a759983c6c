// CvXmlReader: turns a project document into a CvProject, through a tree of plain nodes.
#pragma once

#include "corvelle/ptr.h"
#include "corvelle/stream.h"
#include "documents/documenterror.h"
#include "documents/cvxmltree.h"
#include "documents/inewxmlhandler.h"
#include "foundation/fstring.h"
#include "model/cvobject.h"

namespace Halvorn {

class CvProject;

// One object for one reading: construct, call readProject, release. The first stage parses
// the whole document into a compact element tree; the second builds the typed model from that
// tree, so Structure is read before Arrangement whatever their order in the file.
//
// Hostile documents: elements nested deeper than kMaxDepth make the document malformed, which
// keeps every later walk of the tree (and its destruction) within a bounded stack. An element's
// attributes past the kMaxAttributes-th are left out.
class CvXmlReader : public CvObject, public INewXmlHandler {
public:
    CV_DECLARE_TYPE(CvXmlReader, FObject)
    CV_REFCOUNT_METHODS(CvObject)
    tresult queryInterface(const FUID& iid, void** object) override;

    static constexpr int32 kMaxDepth = 512;
    static constexpr int32 kMaxAttributes = 256;

    CvXmlReader();

    // A new project with one reference owed to the caller, or null for a missing file, a
    // stream that can't be opened, malformed XML, a root other than "Project", or memory that
    // ran out. path is the full path of the file, "/" separated.
    [[nodiscard]] CvProject* readProject(const String& path);
    // The same from a stream standing at the document's first byte.
    [[nodiscard]] CvProject* readProject(IBStream* stream);
    // Why the last reading gave null, and where; kNone after a success.
    const DocumentError& lastError() const { return error; }

    // For the parser alone.
    void startElement(FXmlParser2* parser, const char8* name, const char8** attributes) override;
    void endElement(FXmlParser2* parser, const char8* name) override;
    void characterData(FXmlParser2* parser, const char8* text, int32 length) override;
    void comment(FXmlParser2* parser, const char8* text) override;

protected:
    ~CvXmlReader() override;

private:
    [[nodiscard]] bool parseTree(IBStream* stream);
    // Stops the parse with the reason; the place is taken when the parser has returned.
    void stopWith(FXmlParser2* parser, DocumentError::Kind kind, const char8* message);
    CvProject* fail(DocumentError::Kind kind, const char8* message);
    [[nodiscard]] static CvProject* buildProject(const CvXmlElement& root);
    static double readTransport(const CvXmlElement& root, CvProject* project);

    // Held until the reader goes or the next reading begins.
    CvXmlTree tree;
    // Set by the handlers when they stop the parse (too deep, out of memory), and by the
    // reading's end.
    DocumentError error;
};

} // namespace Halvorn

// CvXmlReader: the first stage into a node tree, and the frame of the second stage.
#include "documents/cvxmlreader.h"

#include "documents/cvarrangementreader.h"
#include "documents/cvnodevalues.h"
#include "documents/cvschemanames.h"
#include "documents/cvstructurereader.h"
#include "documents/cvtables.h"
#include "documents/fxmlparser2.h"
#include "foundation/ffilesystem.h"
#include "model/cvproject.h"

#include <cstring>
#include <new>

namespace Halvorn {

using namespace CvSchema;
using namespace CvNodeValues;

CvXmlReader::CvXmlReader() = default;

CvXmlReader::~CvXmlReader() = default;

tresult CvXmlReader::queryInterface(const FUID& iid, void** object) {
    CV_QUERY(iid, object, INewXmlHandler)
    return CvObject::queryInterface(iid, object);
}

CvProject* CvXmlReader::fail(DocumentError::Kind kind, const char8* message) {
    error = DocumentError();
    error.kind = kind;
    error.message = message;
    return nullptr;
}

CvProject* CvXmlReader::readProject(const String& path) {
    FUrl url(path, false);
    if (!gFNFileSystem->fileExists(url))
        return fail(DocumentError::kUnreadable, "no such file");
    FStream* file = gFNFileSystem->openStream(url, FStream::kRead);
    if (!file)
        return fail(DocumentError::kUnreadable, "cannot be opened");
    CvProject* project = nullptr;
    void* face = nullptr;
    if (file->queryInterface(IBStream::iid, &face) == kResultOk)
        project = readProject(IPtr<IBStream>::adopt(static_cast<IBStream*>(face)).get());
    gFNFileSystem->closeStream(file);
    return project;
}

CvProject* CvXmlReader::readProject(IBStream* stream) {
    try {
        if (!parseTree(stream))
            return nullptr;
        const CvXmlElement root = tree.root();
        if (!root || std::strcmp(root.getName(), Element::kProject) != 0)
            return fail(DocumentError::kNotProject, "the root element is not Project");
        return buildProject(root);
    } catch (const std::bad_alloc&) {
        return fail(DocumentError::kOutOfMemory, "out of memory");
    }
}

bool CvXmlReader::parseTree(IBStream* stream) {
    tree.clear();
    error = DocumentError();
    FXmlParser2 parser(this, "UTF-8");
    if (parser.parse(stream) && error.kind == DocumentError::kNone)
        return true;
    if (error.kind == DocumentError::kNone) {
        const char8* text = parser.getErrorText();
        error.kind = parser.wasTooLarge() ? DocumentError::kTooLarge : DocumentError::kMalformed;
        error.message = parser.wasTooLarge() ? "a tag or a text over 64 MiB"
                        : text[0]            ? text
                                             : "unreadable document";
    }
    error.line = parser.getLine();
    error.column = parser.getColumn();
    return false;
}

void CvXmlReader::stopWith(FXmlParser2* parser, DocumentError::Kind kind, const char8* message) {
    error.kind = kind;
    error.message = message;
    parser->stop();
}

void CvXmlReader::startElement(FXmlParser2* parser, const char8* name, const char8** attributes) {
    if (error.kind != DocumentError::kNone)
        return;
    if (tree.openDepth() >= kMaxDepth)
        return stopWith(parser, DocumentError::kTooDeep, "elements nested too deeply");
    int32 count = 0;
    while (attributes && count < kMaxAttributes && attributes[2 * count] &&
           attributes[2 * count + 1])
        ++count;
    try {
        tree.open(name, attributes, count);
    } catch (const std::bad_alloc&) {
        // No exception may pass through the parser's C frames.
        stopWith(parser, DocumentError::kOutOfMemory, "out of memory");
    }
}

void CvXmlReader::endElement(FXmlParser2*, const char8*) {
    if (error.kind == DocumentError::kNone)
        tree.close();
}

// The format has no text content, and comments carry no meaning.
void CvXmlReader::characterData(FXmlParser2*, const char8*, int32) {}

void CvXmlReader::comment(FXmlParser2*, const char8*) {}

// Tempo and signature where Transport has them; gives the tempo read, or 120 without one.
double CvXmlReader::readTransport(const CvXmlElement& root, CvProject* project) {
    const CvXmlElement transport = root.findChild(Element::kTransport);
    if (!transport)
        return 120.0;
    double bpm = 120.0;
    if (const CvXmlElement tempo = transport.findChild(Element::kTempo)) {
        String id = readId(tempo);
        double value = readReal(tempo, Attribute::kValue, 120.0);
        double min = readReal(tempo, Attribute::kMin, 10.0);
        double max = readReal(tempo, Attribute::kMax, 300.0);
        uint32 unit = unitFromString(readText(tempo, Attribute::kUnit, String(Text::kUnknown)));
        IPtr<CvParameter> parameter = newObject<CvParameter>(unit, id);
        parameter->setMin(min);
        parameter->setMax(max);
        parameter->setValue(value);
        project->setTempo(parameter.get());
        bpm = value;
    }
    if (const CvXmlElement signature = transport.findChild(Element::kTimeSignature)) {
        String id = readId(signature);
        auto numerator = static_cast<uint16>(readInteger(signature, Attribute::kNumerator, 4));
        auto denominator = static_cast<uint16>(readInteger(signature, Attribute::kDenominator, 4));
        project->setTimeSignature(newObject<CvSignature>(numerator, denominator, id).get());
    }
    return bpm;
}

CvProject* CvXmlReader::buildProject(const CvXmlElement& root) {
    // A missing Application reads as one without attributes.
    String name(Text::kDefaultApplicationName);
    String version(Text::kDefaultApplicationVersion);
    if (const CvXmlElement application = root.findChild(Element::kApplication)) {
        name = readText(application, Attribute::kName, name);
        version = readText(application, Attribute::kVersion, version);
    }
    IPtr<CvProject> project = newObject<CvProject>(name, version);

    // The tempo of Transport is the one converter from beats to seconds for this reading.
    IPtr<CvTimeDomain> timeDomain =
        newObject<CvTimeDomain>(readTransport(root, project.get()));

    if (const CvXmlElement structure = root.findChild(Element::kStructure))
        CvStructureReader(project.get()).read(structure);
    if (const CvXmlElement arrangement = root.findChild(Element::kArrangement))
        CvArrangementReader(project.get(), timeDomain.get()).read(arrangement);
    return project.release();
}

} // namespace Halvorn

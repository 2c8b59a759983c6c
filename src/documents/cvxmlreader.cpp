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

CvProject* CvXmlReader::readProject(const String& path) {
    FUrl url(path, false);
    if (!gFNFileSystem->fileExists(url))
        return nullptr;
    FStream* file = gFNFileSystem->openStream(url, FStream::kRead);
    if (!file)
        return nullptr;
    CvProject* project = nullptr;
    void* face = nullptr;
    if (file->queryInterface(IBStream::iid, &face) == kResultOk)
        project = readProject(IPtr<IBStream>::adopt(static_cast<IBStream*>(face)).get());
    gFNFileSystem->closeStream(file);
    return project;
}

CvProject* CvXmlReader::readProject(IBStream* stream) {
    try {
        if (!parseTree(stream) || !root)
            return nullptr;
        const CvNode* top = root.get();
        if (top->getNodeName() != String(Element::kProject))
            return nullptr;
        return buildProject();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

bool CvXmlReader::parseTree(IBStream* stream) {
    root = nullptr;
    openElements.removeAll();
    failed = false;
    FXmlParser2 parser(this, "UTF-8");
    bool parsed = parser.parse(stream);
    // Only a finished tree is of use; the open elements are unlinked, so this frees them flat.
    openElements.removeAll();
    return parsed && !failed;
}

void CvXmlReader::startElement(FXmlParser2* parser, const char8* name, const char8** attributes) {
    if (failed)
        return;
    if (openElements.total() >= kMaxDepth) {
        failed = true;
        parser->stop();
        return;
    }
    try {
        IPtr<CvNode> node = newObject<CvNode>(String(name), String());
        int32 count = 0;
        while (attributes && count < kMaxAttributes && attributes[2 * count] &&
               attributes[2 * count + 1])
            ++count;
        node->reserveAttributes(count);
        for (int32 i = 0; i < count; ++i)
            node->setAttribute(String(attributes[2 * i]), String(attributes[2 * i + 1]));
        if (!openElements.add(node)) {
            failed = true;
            parser->stop();
        }
    } catch (const std::bad_alloc&) {
        // No exception may pass through the parser's C frames.
        failed = true;
        parser->stop();
    }
}

void CvXmlReader::endElement(FXmlParser2*, const char8*) {
    if (failed || openElements.isEmpty())
        return;
    int32 top = openElements.total() - 1;
    IPtr<CvNode> node = openElements.at(top);
    openElements.removeAt(top);
    if (openElements.isEmpty())
        root = node;
    else
        openElements.at(openElements.total() - 1)->addChild(node.get());
}

// The format has no text content, and comments carry no meaning.
void CvXmlReader::characterData(FXmlParser2*, const char8*, int32) {}

void CvXmlReader::comment(FXmlParser2*, const char8*) {}

// Tempo and signature where Transport has them; gives the tempo read, or 120 without one.
double CvXmlReader::readTransport(CvProject* project) const {
    CvNode* transport = root->findChild(String(Element::kTransport));
    if (!transport)
        return 120.0;
    double bpm = 120.0;
    if (CvNode* tempo = transport->findChild(String(Element::kTempo))) {
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
    if (CvNode* signature = transport->findChild(String(Element::kTimeSignature))) {
        String id = readId(signature);
        auto numerator = static_cast<uint16>(readInteger(signature, Attribute::kNumerator, 4));
        auto denominator = static_cast<uint16>(readInteger(signature, Attribute::kDenominator, 4));
        project->setTimeSignature(newObject<CvSignature>(numerator, denominator, id).get());
    }
    return bpm;
}

CvProject* CvXmlReader::buildProject() const {
    // A missing Application reads as one without attributes.
    String name(Text::kDefaultApplicationName);
    String version(Text::kDefaultApplicationVersion);
    if (CvNode* application = root->findChild(String(Element::kApplication))) {
        name = readText(application, Attribute::kName, name);
        version = readText(application, Attribute::kVersion, version);
    }
    IPtr<CvProject> project = newObject<CvProject>(name, version);

    // The tempo of Transport is the one converter from beats to seconds for this reading.
    IPtr<CvTimeDomain> timeDomain = newObject<CvTimeDomain>(readTransport(project.get()));

    if (CvNode* structure = root->findChild(String(Element::kStructure)))
        CvStructureReader(project.get()).read(structure);
    if (CvNode* arrangement = root->findChild(String(Element::kArrangement)))
        CvArrangementReader(project.get(), timeDomain.get()).read(arrangement);
    return project.release();
}

} // namespace Halvorn

// Fuzz target: any bytes as a project document, read and then walked through the model's faces.
#include "corvelle/ptr.h"
#include "documents/cvxmlreader.h"
#include "foundation/memorystream.h"
#include "model/cvproject.h"
#include "support/modelwalk.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace Halvorn;
    MemoryStream stream(const_cast<uint8_t*>(data), size);
    IPtr<CvXmlReader> reader = newObject<CvXmlReader>();
    IPtr<CvProject> project = IPtr<CvProject>::adopt(reader->readProject(&stream));
    if (!project)
        return 0;
    // Every reachable value is read, so that a reader bug that leaves a bad object fails here;
    // nothing is kept.
    CorvelleSupport::walkModel(*project, [](const CorvelleSupport::ModelNode&) { return false; });
    volatile int32 accessors = project->getFileAccessors().total();
    (void)accessors;
    return 0;
}

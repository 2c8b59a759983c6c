// CvHostUtilities: free functions over host objects that export and import share, and the
// registry entry that ties a model id to a host object.
#pragma once

#include "corvelle/ptr.h"
#include "foundation/fstring.h"
#include "foundation/tarray.h"
#include "hostapi/hostapi.h"
#include "model/cvnode.h"
#include "model/cvobject.h"

namespace Halvorn {
namespace CvHostUtilities {

// One entry of a registry: a model id and its host counterpart. The host pointer holds no
// reference: the host's tree outlives the command. On import it may be null.
class CvProjectDevice : public CvObject {
public:
    CV_DECLARE_TYPE(CvProjectDevice, CvObject)

    CvProjectDevice(const String& id, Quor::IHostParameterOwner* object) : id(id), object(object) {}

    String id;
    Quor::IHostParameterOwner* object;

protected:
    ~CvProjectDevice() override = default;
};

// A host service from the context; empty when there is no context or it lacks the service.
template <class I> IPtr<I> hostService(Quor::IHostContext* host) {
    void* face = nullptr;
    if (!host || host->getInterface(I::iid, &face) != kResultOk || !face)
        return {};
    return IPtr<I>::adopt(static_cast<I*>(face));
}

// The first child of owner whose name is name, compared exactly; null for a null owner.
// Borrowed, as the host's getChild gives it.
Quor::IHostParameterOwner* findChild(Quor::IHostParameterOwner* owner, const String& name);

// The owner's parameter with this identifier; empty when owner is null or lacks it.
IPtr<Quor::IHostParameter> findParameter(Quor::IHostParameterOwner* owner, const char8* id);

// The parameter's display text, read through a buffer of bufferSize units; empty when the host
// gives none.
String parameterText(Quor::IHostParameter* parameter, int32 bufferSize);

// An "ARGB" number as the host gives colours: alpha in the top byte, then red, green, blue.
CvColor colorFromArgb(uint32 argb);

// The object's colour against context; all zero unless it is a timeline event that has one.
CvColor readColor(Quor::IHostEditContext* context, FUnknown* object);

// The children of object that answer for I, in order. Borrowed: the query's reference is given
// back at once, and the host's containers keep the children alive.
template <class I> TArray<I*> collectChildren(FUnknown* object) {
    TArray<I*> found(-1);
    auto timeline = ::Halvorn::queryInterface<Quor::IHostTimelineObject>(object);
    auto children = IPtr<Quor::IHostIterator>::adopt(timeline ? timeline->getChildren() : nullptr);
    while (children && !children->isDone()) {
        if (auto face = ::Halvorn::queryInterface<I>(children->next()))
            found.add(face.get());
    }
    return found;
}

// The path of a media file as the chain of borrowed objects from an event leads to it; empty
// when a link is missing or the host gives no path.
String mediaPath(Quor::IHostUrl* location);

} // namespace CvHostUtilities
} // namespace Halvorn

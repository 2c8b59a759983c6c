// Edit contexts and the recording edit session.
#include "editing.h"
#include "text.h"

namespace Halvorn {
namespace RefHost {

IHostEditContext* EditContext::contextFor(FUnknown* object) {
    auto* node = hostCast<TimelineNode>(object);
    if (!node)
        return nullptr;
    return ledger().make<EditContext>(IPtr<TimelineNode>(node)).release();
}

IHostTimelineObject* EditContext::getObject() { return object_.get(); }

FUnknown* EditContext::faceFor(const FUID& iid) {
    return iid == FUnknown::iid ? static_cast<IHostEditContext*>(this) : nullptr;
}

tresult EditSession::setMode(int32 mode) {
    mode_ = mode;
    return kResultOk;
}

tresult EditSession::commit(IHostProject*, const char16* name) {
    history_.push_back({toUtf8(fromBuffer(name)), std::move(pending_)});
    pending_.clear();
    return kResultOk;
}

tresult EditSession::add(IHostEditContext* context, FUnknown* object) {
    // The session owns the reference that came with object, whatever becomes of it.
    auto* place = hostCast<EditContext>(context);
    auto* node = hostCast<TimelineNode>(object);
    if (!node) {
        if (object)
            object->release();
        return kInvalidArgument;
    }
    IPtr<TimelineNode> owned = IPtr<TimelineNode>::adopt(node);
    if (!place || !place->node())
        return kInvalidArgument;
    TimelineNode* parent = place->node();
    if (parent->holds(node)) {
        note(std::string("keep ") + node->kind() + " '" + node->label() + "'");
        return kResultOk;
    }
    if (!parent->accepts(*node))
        return kResultFalse;
    note(std::string("add ") + node->kind() + " '" + node->label() + "' to " + parent->kind() +
         " '" + parent->label() + "'");
    parent->adopt(std::move(owned));
    return kResultOk;
}

tresult EditSession::move(IHostEditContext* context, FUnknown* object, int32 index) {
    auto* place = hostCast<EditContext>(context);
    auto* node = hostCast<TimelineNode>(object);
    if (!place || !place->node() || !node || !place->node()->moveChild(node, index))
        return kResultFalse;
    note(std::string("move ") + node->kind() + " '" + node->label() + "' to " +
         std::to_string(index));
    return kResultOk;
}

FUnknown* EditSession::faceFor(const FUID& iid) {
    if (iid == FUnknown::iid || iid == IHostEditSession::iid)
        return static_cast<IHostEditSession*>(this);
    return nullptr;
}

} // namespace RefHost
} // namespace Halvorn

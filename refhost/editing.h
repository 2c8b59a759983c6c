// Edit contexts and edit sessions of the reference host: where changes go and how they are
// recorded as named steps of the undo history.
#pragma once

#include "hostapi/hostproject.h"
#include "ledger.h"
#include "timeline.h"

#include <string>
#include <vector>

namespace Halvorn {
namespace RefHost {

// One named step of the undo history, with the changes it holds.
struct EditStep {
    std::string name;
    std::vector<std::string> actions;
};

class EditContext : public HostObject, public IHostEditContext {
public:
    EditContext(Ledger& ledger, IPtr<TimelineNode> object)
        : HostObject(ledger, "edit context"), object_(std::move(object)) {}

    SUPPORT_COUNTED_UNKNOWN
    IHostEditContext* contextFor(FUnknown* object) override;
    IHostTimelineObject* getObject() override;

    TimelineNode* node() const { return object_.get(); }

protected:
    FUnknown* faceFor(const FUID& iid) override;
    void dispose() override { object_ = nullptr; }

private:
    IPtr<TimelineNode> object_;
};

class EditSession : public HostObject, public IHostEditSession {
public:
    EditSession(Ledger& ledger, std::vector<EditStep>& history)
        : HostObject(ledger, "edit session"), history_(history) {}

    SUPPORT_COUNTED_UNKNOWN
    tresult setMode(int32 mode) override;
    tresult commit(IHostProject* project, const char16* name) override;
    tresult add(IHostEditContext* context, FUnknown* object) override;
    tresult move(IHostEditContext* context, FUnknown* object, int32 index) override;

    void note(const std::string& action) { pending_.push_back(action); }
    const std::vector<std::string>& pending() const { return pending_; }
    int32 mode() const { return mode_; }

protected:
    FUnknown* faceFor(const FUID& iid) override;

private:
    std::vector<EditStep>& history_;
    std::vector<std::string> pending_;
    int32 mode_ = 0;
};

} // namespace RefHost
} // namespace Halvorn

// The ledger's counting and its report.
#include "ledger.h"

namespace Halvorn {
namespace RefHost {

namespace {
std::string describe(const HostObject& object) {
    std::string text = object.kind();
    std::string label = object.label();
    if (!label.empty())
        text += " '" + label + "'";
    return text;
}
} // namespace

HostObject::HostObject(Ledger& ledger, const char* kind) : ledger_(ledger), kind_(kind) {}

void HostObject::misused(const char* what) { ledger_.fault(*this, what); }

tresult HostObject::answer(const FUID& iid, void** out) {
    if (out && alive()) {
        if (iid == identity) {
            retain();
            *out = this;
            return kResultOk;
        }
        if (ledger_.refuses(iid)) {
            *out = nullptr;
            return kNoInterface;
        }
    }
    return RefCounted::answer(iid, out);
}

Ledger::~Ledger() {
    for (auto& object : objects_)
        object->dispose();
}

void Ledger::fault(const HostObject& object, const char* what) {
    faults_.push_back(std::string(what) + " " + describe(object));
}

LedgerReport Ledger::report() const {
    LedgerReport result;
    result.faults = faults_;
    for (const auto& object : objects_)
        if (object->alive())
            result.leaks.push_back(describe(*object) + " still holds " +
                                   std::to_string(object->count()) + " reference(s)");
    return result;
}

int32 Ledger::liveCount() const {
    int32 count = 0;
    for (const auto& object : objects_)
        count += object->alive() ? 1 : 0;
    return count;
}

std::string LedgerReport::text() const {
    if (clean())
        return "no leaks, no over-releases\n";
    std::string text;
    for (const auto& line : leaks)
        text += "leak: " + line + "\n";
    for (const auto& line : faults)
        text += "fault: " + line + "\n";
    return text;
}

bool Ledger::refuses(const FUID& iid) const {
    for (const FUID& refused : refused_)
        if (refused == iid)
            return true;
    return false;
}

} // namespace RefHost
} // namespace Halvorn

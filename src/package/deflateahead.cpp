// DeflateAhead: one lock guards who takes which file; the deflating is done outside it.
#include "package/deflateahead.h"

#include <algorithm>
#include <system_error>

namespace Halvorn {
namespace {

constexpr size_t kMaxHelpers = 4;

// One core is the writer's.
size_t helperCount(size_t files) {
    const size_t cores = std::max(1u, std::thread::hardware_concurrency());
    return std::min({cores - 1, kMaxHelpers, files});
}

} // namespace

DeflateAhead::DeflateAhead(const std::vector<IPtr<FUrl>>& files)
    : files_(files), slots_(files.size()), reach_(helperCount(files.size()) + 2) {
    helpers_.reserve(reach_ - 2); // so that only starting a thread can fail below
    for (size_t i = 2; i < reach_; ++i) {
        try {
            helpers_.emplace_back([this] { helpOut(); });
        } catch (const std::system_error&) {
            break; // fewer helpers, or the writer alone
        }
    }
}

DeflateAhead::~DeflateAhead() {
    {
        std::lock_guard<std::mutex> guard(mutex_);
        stopping_ = true;
    }
    changed_.notify_all();
    for (std::thread& helper : helpers_)
        helper.join();
}

const DeflatedFile* DeflateAhead::take(size_t i) {
    std::unique_lock<std::mutex> lock(mutex_);
    for (;;) {
        if (slots_[i].done)
            return slots_[i].isDeflated ? &slots_[i].deflated : nullptr;
        if (next_ == i) {
            next_ = i + 1;
            return nullptr;
        }
        if (!deflateNext(lock))
            changed_.wait(lock);
    }
}

void DeflateAhead::release(size_t i) {
    slots_[i].deflated = DeflatedFile();
    {
        std::lock_guard<std::mutex> guard(mutex_);
        released_ = i + 1;
    }
    changed_.notify_all();
}

void DeflateAhead::helpOut() {
    std::unique_lock<std::mutex> lock(mutex_);
    while (!stopping_ && next_ < files_.size())
        if (!deflateNext(lock))
            changed_.wait(lock);
}

bool DeflateAhead::deflateNext(std::unique_lock<std::mutex>& lock) {
    if (next_ >= files_.size() || next_ >= released_ + reach_)
        return false;
    const size_t i = next_++;
    lock.unlock();
    DeflatedFile deflated;
    const bool isDeflated = deflateFile(*files_[i], kHeldBytes, deflated);
    lock.lock();
    slots_[i].deflated = std::move(deflated);
    slots_[i].isDeflated = isDeflated;
    slots_[i].done = true;
    changed_.notify_all();
    return true;
}

} // namespace Halvorn

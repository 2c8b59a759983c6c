// FFileIterator: the files and folders of one folder, in a fixed order.
#pragma once

#include "foundation/furl.h"
#include "foundation/tarray.h"

namespace Halvorn {

// Reads the folder once, at construction, and gives its items sorted by name bytewise (UTF-8),
// so that every walk, and every output made from one, is the same on every run. "." and ".."
// are skipped, and so is every item that is neither a regular file nor a folder, symbolic
// links included: a walk never leaves its folder. A folder that can't be read gives nothing.
class FFileIterator {
public:
    explicit FFileIterator(const FUrl& folder);
    FFileIterator(const FFileIterator&) = delete;
    FFileIterator& operator=(const FFileIterator&) = delete;

    // The next item with one reference for the caller (its folder flag set for a folder), or
    // null after the last.
    [[nodiscard]] FUrl* next();

private:
    struct Item {
        String name;
        bool folder = false;
    };

    String folder_;
    TArray<Item> items_;
    int32 index_ = 0;
};

} // namespace Halvorn

// One thing `corvelle check` found in a package: what a lenient reader would drop or repair.
#pragma once

#include <string>

namespace CorvelleTool {

enum class Severity {
    kWarning, // the reader repairs or ignores it: a value read as a default, an unknown name
    kError,   // the receiver can't read the package, or loses content of it
};

struct Finding {
    Severity severity;
    std::string code;    // stable, lower case with dashes, for scripts
    std::string place;   // an entry name, or "project.xml:LINE:COLUMN"
    std::string message; // one line for people
};

} // namespace CorvelleTool

// DocumentError: why a project document could not be read, and where in it.
#pragma once

#include "corvelle/base.h"

namespace Halvorn {

// Passed up from the reader instead of a bare null, so that a caller can tell the user which
// line to look at.
struct DocumentError {
    enum Kind : int32 {
        kNone = 0,
        kUnreadable,  // the file can't be opened
        kMalformed,   // not well-formed XML; message is expat's text
        kTooDeep,     // elements nested deeper than the reader follows
        kTooLarge,    // a tag or a text over the parser's bound
        kNotProject,  // a root element other than "Project"
        kOutOfMemory,
    };
    Kind kind = kNone;
    // The place of the fault: line and column from 1, both 0 when there is none.
    int32 line = 0;
    int32 column = 0;
    // A short static text in lower case; empty for kNone.
    const char8* message = "";
};

} // namespace Halvorn

// What every corvelle command promises its caller: the exit codes and the JSON format version.
#pragma once

namespace CorvelleTool {

constexpr int kExitSuccess = 0;
constexpr int kExitFailed = 1;   // the work failed
constexpr int kExitUsage = 2;    // an unknown command or option, or a missing argument
constexpr int kExitWarnings = 3; // finished, but something was left out, each said on stderr

// The "format" field of every JSON output: raised when a field changes meaning or goes away,
// not when one is added.
constexpr int kJsonFormat = 1;

// The help text's epilogue, so that --help and docs/cli.md tell the same codes.
constexpr const char* kExitCodesHelp =
    "Exit codes: 0 success, 1 the work failed, 2 usage error, 3 finished with warnings "
    "(for example a media file that could not be placed, or a path or entry the read refused), "
    "128+N stopped by signal N, leaving nothing behind.\n";

} // namespace CorvelleTool

// Running a command so that SIGINT and SIGTERM leave no temporary folder or partial file behind.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace CorvelleTool {

// The places a command may leave something in when it is cut short.
struct Leftovers {
    // Package files the command writes: a staging folder "corvtmp..." and a partial file
    // ".NAME.part..." that appear beside one are removed.
    std::vector<std::string> targets;
    // Folders that receive media: files that appear in them are removed.
    std::vector<std::string> mediaFolders;
};

// Runs command in a child process with a private temporary folder ($TMPDIR), which is removed
// afterwards whatever happens; when none can be made, the child keeps the caller's $TMPDIR. When SIGINT or SIGTERM arrives, the child is stopped with that
// signal, whatever appeared in the leftover places during the run is removed, and the result is
// 128 plus the signal; otherwise it is the command's own result.
int runRemovingLeftovers(const Leftovers& leftovers, const std::function<int()>& command);

} // namespace CorvelleTool

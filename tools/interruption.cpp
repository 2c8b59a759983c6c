// runRemovingLeftovers: a child does the work; the parent cleans up after a signal.
#include "interruption.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <set>
#include <sys/wait.h>
#include <unistd.h>

namespace CorvelleTool {
namespace {

namespace fs = std::filesystem;

volatile sig_atomic_t gSignal = 0;
volatile pid_t gChild = 0;

void forwardSignal(int signal) {
    gSignal = signal;
    if (gChild > 0)
        kill(gChild, signal);
}

struct Watched {
    fs::path folder;
    std::string prefix; // empty: every file counts
    std::set<std::string> before;
};

std::set<std::string> namesIn(const Watched& watched) {
    std::set<std::string> names;
    std::error_code error;
    for (fs::directory_iterator it(watched.folder, error), end; !error && it != end;
         it.increment(error))
        names.insert(it->path().filename().string());
    return names;
}

bool matches(const Watched& watched, const std::string& name) {
    return watched.prefix.empty() || name.compare(0, watched.prefix.size(), watched.prefix) == 0;
}

std::vector<Watched> watch(const Leftovers& leftovers) {
    std::vector<Watched> watched;
    for (const std::string& target : leftovers.targets) {
        fs::path path(target);
        fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
        watched.push_back({folder, "corvtmp", {}});
        watched.push_back({folder, "." + path.filename().string() + ".part", {}});
    }
    for (const std::string& folder : leftovers.mediaFolders)
        for (const char* type : {"Audio", "Video", "Preset", "Midi"})
            watched.push_back({fs::path(folder) / type, "", {}});
    for (Watched& each : watched)
        each.before = namesIn(each);
    return watched;
}

void removeNew(const std::vector<Watched>& watched) {
    for (const Watched& each : watched)
        for (const std::string& name : namesIn(each))
            if (matches(each, name) && !each.before.count(name)) {
                std::error_code ignored;
                fs::remove_all(each.folder / name, ignored); // never follows links
            }
}

void installHandlers(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

// The child's result as an exit status, a death by signal as 128 plus it.
int statusOf(int status) {
    if (WIFEXITED(status))
        return WEXITSTATUS(status);
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : 1;
}

} // namespace

int runRemovingLeftovers(const Leftovers& leftovers, const std::function<int()>& command) {
    std::error_code error;
    std::string privateTemp = (fs::temp_directory_path(error) / "corvelle-XXXXXX").string();
    // A temporary folder that can't take this private one can't take the library's either: the
    // command then runs without one and says why in its own words.
    if (error || !mkdtemp(privateTemp.data()))
        privateTemp.clear();
    const std::vector<Watched> watched = watch(leftovers);
    std::cout.flush();
    installHandlers(forwardSignal);
    const pid_t child = fork();
    if (child == 0) {
        installHandlers(SIG_DFL);
        if (!privateTemp.empty())
            setenv("TMPDIR", privateTemp.c_str(), 1);
        const int result = gSignal ? 128 + gSignal : command();
        std::cout.flush();
        std::fflush(nullptr);
        _exit(result);
    }
    gChild = child;
    // A signal that came before the child was known is passed on now.
    if (child > 0 && gSignal)
        kill(child, gSignal);
    int status = 0;
    int result = 1;
    if (child < 0) {
        std::cerr << "corvelle: cannot start the work\n";
    } else {
        while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
        }
        result = statusOf(status);
    }
    if (gSignal || (WIFSIGNALED(status) && child > 0)) {
        removeNew(watched);
        if (gSignal)
            result = 128 + gSignal;
    }
    if (!privateTemp.empty())
        fs::remove_all(privateTemp, error);
    return result;
}

} // namespace CorvelleTool

// Scratch folder, child-process runs and printing shared by the read benchmarks.
#include "read_bench_support.h"
#include "support/scratchfolder.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace ReadBench {
namespace {

namespace fs = std::filesystem;

volatile sig_atomic_t gWorker = 0;

// The parent only ends the worker's group, the peers' commands included; it stays alive to
// remove the scratch folder. SIGTERM because system() in the worker ignores SIGINT.
void forwardSignal(int) {
    if (gWorker > 0)
        kill(-gWorker, SIGTERM);
}

// Waits for one child and gives its exit status and resource use; false if it didn't exit.
bool waitForChild(pid_t child, int& exitCode, rusage& usage) {
    int status = 0;
    pid_t done;
    do
        done = wait4(child, &status, 0, &usage);
    while (done < 0 && errno == EINTR);
    if (done != child || !WIFEXITED(status))
        return false;
    exitCode = WEXITSTATUS(status);
    return true;
}

bool readAll(int descriptor, void* data, std::size_t count) {
    auto* bytes = static_cast<char*>(data);
    while (count > 0) {
        const ssize_t got = read(descriptor, bytes, count);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return false;
        bytes += got;
        count -= std::size_t(got);
    }
    return true;
}

double processorSeconds(const rusage& usage) {
    return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

} // namespace

int runWithScratchFolder(const std::string& program,
                         const std::function<int(const std::string&)>& body) {
    std::unique_ptr<CorvelleSupport::ScratchFolder> folder;
    try {
        folder = std::make_unique<CorvelleSupport::ScratchFolder>();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", program.c_str(), error.what());
        return 1;
    }
    const std::string& scratch = folder->path();
    std::fflush(stdout);
    const pid_t worker = fork();
    if (worker == 0) {
        setpgid(0, 0);
        // The library's own temporary folders go there too, so an interrupted read leaves
        // nothing behind either.
        const std::string temporary = scratch + "/tmp";
        std::error_code error;
        fs::create_directory(temporary, error);
        const int code = !error && setenv("TMPDIR", temporary.c_str(), 1) == 0 ? body(scratch) : 1;
        std::fflush(stdout);
        std::fflush(stderr);
        _exit(code);
    }
    int code = 1;
    if (worker > 0) {
        setpgid(worker, worker);
        gWorker = worker;
        struct sigaction forward {};
        forward.sa_handler = forwardSignal;
        for (int signal : {SIGINT, SIGTERM, SIGHUP})
            sigaction(signal, &forward, nullptr);
        rusage usage{};
        if (!waitForChild(worker, code, usage)) {
            std::fprintf(stderr, "the benchmark's worker process died\n");
            code = 1;
        }
    }
    return code;
}

Run runInChild(const std::function<double()>& job) {
    Run run;
    int channel[2];
    if (pipe(channel) != 0)
        return run;
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
        close(channel[0]);
        const double seconds = job();
        const bool sent = write(channel[1], &seconds, sizeof seconds) == sizeof seconds;
        _exit(sent ? 0 : 1);
    }
    close(channel[1]);
    double seconds = -1.0;
    const bool received = child > 0 && readAll(channel[0], &seconds, sizeof seconds);
    close(channel[0]);
    int code = 1;
    rusage usage{};
    const bool exited = child > 0 && waitForChild(child, code, usage);
    run.ok = received && exited && code == 0 && seconds >= 0.0;
    run.seconds = seconds;
    run.peakKiB = usage.ru_maxrss;
    run.cpuSeconds = processorSeconds(usage);
    return run;
}

Run runCommand(const std::string& command) {
    Run run;
    rusage before{}, after{};
    getrusage(RUSAGE_CHILDREN, &before);
    const double start = now();
    const int status = std::system(command.c_str());
    run.seconds = secondsSince(start);
    getrusage(RUSAGE_CHILDREN, &after);
    run.cpuSeconds = processorSeconds(after) - processorSeconds(before);
    run.ok = status != -1 && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    return run;
}

double now() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

double secondsSince(double start) { return now() - start; }

double processorNow() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) / 1e9;
}

double median(std::vector<double> values) {
    if (values.empty())
        return 0.0;
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2.0;
}

bool writeNoiseFile(const std::string& path, std::size_t bytes, std::mt19937_64& random) {
    std::ofstream file(path, std::ios::binary);
    std::vector<char> block(1 << 20);
    while (file && bytes > 0) {
        const std::size_t count = std::min(bytes, block.size());
        for (std::size_t i = 0; i < count; i += 8) {
            const std::uint64_t value = random();
            std::memcpy(&block[i], &value, std::min<std::size_t>(8, count - i));
        }
        file.write(block.data(), std::streamsize(count));
        bytes -= count;
    }
    return bool(file);
}

long fileSize(const std::string& path) {
    std::error_code error;
    const auto size = fs::file_size(path, error);
    return error ? -1 : long(size);
}

void emptyFolder(const std::string& path) {
    std::error_code ignored;
    fs::remove_all(path, ignored);
    fs::create_directories(path, ignored);
}

void printFigure(const char* what, double ours, double peer, const char* unit, double goal) {
    const double ratio = peer > 0.0 ? ours / peer : 0.0;
    std::printf("%-46s %9.3f %-2s vs %9.3f %-2s  ratio %6.2f  goal <= %4.1f  %s\n", what, ours,
                unit, peer, unit, ratio, goal, ratio <= goal ? "met" : "MISSED");
    std::fflush(stdout);
}

std::string listed(const std::vector<double>& values) {
    std::string text;
    for (double value : values) {
        char number[32];
        std::snprintf(number, sizeof number, " %.3f", value);
        text += number;
    }
    return text;
}

} // namespace ReadBench

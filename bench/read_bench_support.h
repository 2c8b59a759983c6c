// Shared pieces of the read benchmarks: a scratch folder, runs in child processes, medians.
#pragma once

#include <cstddef>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace ReadBench {

// One measured run: wall seconds as the job timed itself, the processor seconds (user and
// system) and peak resident set of the process that ran it. ok is false when the job failed or
// its process died. Processor time suffers less than wall time from a busy machine.
struct Run {
    double seconds = 0.0;
    double cpuSeconds = 0.0;
    long peakKiB = 0;
    bool ok = false;
};

// Makes a fresh folder below $TMPDIR (or /tmp), runs body in a child process with its path and
// with $TMPDIR pointing into it, and removes the folder however the child ended, also when the
// user interrupts the run. Gives the child's exit code; program names it in a failure line.
int runWithScratchFolder(const std::string& program,
                         const std::function<int(const std::string&)>& body);

// Runs job in a forked child, so that its memory is its own and its peak can't mix with
// another run's. The job gives the seconds it measured, or a negative number on failure.
Run runInChild(const std::function<double()>& job);

// Times a shell command from start to end; ok when it exited with 0.
Run runCommand(const std::string& command);

double secondsSince(double start);
double now();
// Processor seconds of the calling process, which a busy machine disturbs less than the clock.
double processorNow();

double median(std::vector<double> values);

// Audio-like bytes: noise, which deflate can hardly shrink, as with real recordings.
bool writeNoiseFile(const std::string& path, std::size_t bytes, std::mt19937_64& random);

long fileSize(const std::string& path);

// Empties a folder (which must exist afterwards) without touching what lies beside it.
void emptyFolder(const std::string& path);

// One line per figure: what was measured, ours against the peer (both in unit), the ratio and
// the goal. A missed goal is reported, never treated as a failure.
void printFigure(const char* what, double ours, double peer, const char* unit, double goal);

// The values as one line of text, for showing every run behind a median.
std::string listed(const std::vector<double>& values);

} // namespace ReadBench

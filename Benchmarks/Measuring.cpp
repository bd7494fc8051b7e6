#include "Measuring.h"

#include <fcntl.h>
#include <malloc.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>

namespace tavrin::benchmarks {
namespace {

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

double spentBy(int who) {
    rusage usage{};
    ::getrusage(who, &usage);
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double processorSeconds(clockid_t clock) {
    timespec now{};
    ::clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

Cost measured(int who, const std::function<void()>& work) {
    const double processorBefore = spentBy(who);
    const auto begin = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
    return {.clock = took.count(), .processor = spentBy(who) - processorBefore};
}

void runProgram(const std::vector<std::string>& command) {
    std::vector<char*> arguments;
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    if (::posix_spawnp(&child, arguments.front(), &actions, nullptr, arguments.data(), environ) == 0)
        ::waitpid(child, nullptr, 0);
    ::posix_spawn_file_actions_destroy(&actions);
}

long peakKiB() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmHWM:")) return std::stol(line.substr(6));
    }
    return 0;
}

}  // namespace

double processorOfThread() {
    return processorSeconds(CLOCK_THREAD_CPUTIME_ID);
}

double processorOfProcess() {
    return processorSeconds(CLOCK_PROCESS_CPUTIME_ID);
}

Cost costOf(const std::function<void()>& work) {
    return measured(RUSAGE_SELF, work);
}

Cost costOfProgram(const std::vector<std::string>& command) {
    return measured(RUSAGE_CHILDREN, [&] { runProgram(command); });
}

std::vector<Cost> leastCosts(int rounds, const std::vector<std::function<Cost()>>& runs,
                             const std::function<void()>& beforeEach) {
    std::vector<Cost> least(runs.size(), {1e9, 1e9});
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t i = 0; i < runs.size(); ++i) {
            // Each round begins with another, so that none always runs in the wake of the same one.
            const std::size_t index = (i + static_cast<std::size_t>(round)) % runs.size();
            if (beforeEach) beforeEach();
            const Cost cost = runs[index]();
            least[index].clock = std::min(least[index].clock, cost.clock);
            least[index].processor = std::min(least[index].processor, cost.processor);
        }
    }
    return least;
}

long memoryGrowth(const std::function<void()>& work) {
    void* memory = ::mmap(nullptr, sizeof(long), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) return -1;
    auto* growth = static_cast<long*>(memory);
    *growth = -1;
    const pid_t child = ::fork();
    if (child == 0) {
        // What was freed before would be taken again, and not be seen.
        ::malloc_trim(0);
        std::ofstream("/proc/self/clear_refs") << '5';
        const long before = peakKiB();
        work();
        *growth = peakKiB() - before;
        ::_exit(0);
    }
    ::waitpid(child, nullptr, 0);
    const long result = *growth;
    ::munmap(memory, sizeof(long));
    return result;
}

void report(const std::string& what, double value, const std::string& unit, const std::string& target) {
    std::printf("%s\t%.3f\t%s\t%s\n", what.c_str(), value, unit.c_str(), target.c_str());
    std::fflush(stdout);
}

void note(const std::string& text) {
    std::printf("# %s\n", text.c_str());
    std::fflush(stdout);
}

}  // namespace tavrin::benchmarks

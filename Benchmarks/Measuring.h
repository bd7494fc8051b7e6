// What the benchmark programs share: clocks, minima of alternating runs, and the line that Benchmarks/run reads.
//
// Machines are noisy, and what disturbs a run only ever makes it longer. So the things that are compared run in turns,
// and the shortest run of each counts.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace tavrin::benchmarks {

/// Seconds: by the clock, and of the processor (user and system).
struct Cost {
    double clock = 0;
    double processor = 0;
};

/// Seconds that the processor has spent for this thread, and for the whole process.
[[nodiscard]] double processorOfThread();
[[nodiscard]] double processorOfProcess();

[[nodiscard]] Cost costOf(const std::function<void()>& work);
/// The same for a program that is started; its output is thrown away. Nothing when it can't be.
[[nodiscard]] Cost costOfProgram(const std::vector<std::string>& command);

/// Runs each of them in turn, `rounds` times over, and gives the least of each.
[[nodiscard]] std::vector<Cost> leastCosts(int rounds, const std::vector<std::function<Cost()>>& runs,
                                           const std::function<void()>& beforeEach = {});

/// KiB by which the peak memory of a process of its own grows while `work` runs.
[[nodiscard]] long memoryGrowth(const std::function<void()>& work);

/// One line of the table: `target` in words ("<= 1.10"), or empty.
void report(const std::string& what, double value, const std::string& unit, const std::string& target = {});
void note(const std::string& text);

}  // namespace tavrin::benchmarks

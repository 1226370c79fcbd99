#pragma once

#include <algorithm>
#include <benchmark/benchmark.h>
#include <ctime>
#include <vector>

// Times in milliseconds of the processor, so that other programs do not count.

inline double now() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

inline double since(double start) {
    return now() - start;
}

/// The middle, the 95th of a hundred and the worst.
inline void report(benchmark::State& state, std::vector<double> times) {
    if (times.empty())
        return;
    std::ranges::sort(times);
    double sum = 0;
    for (const double time : times)
        sum += time;
    state.SetIterationTime(sum / 1000);
    state.counters["mean"] = sum / static_cast<double>(times.size());
    state.counters["p50"] = times[times.size() / 2];
    state.counters["p95"] = times[times.size() * 95 / 100];
    state.counters["worst"] = times.back();
    state.counters["count"] = static_cast<double>(times.size());
}

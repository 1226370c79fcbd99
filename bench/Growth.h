#pragma once

#include <benchmark/benchmark.h>
#include <chrono>

/// Runs `work(count)`, which returns the seconds it took, for `count` and for four times as many, and reports
/// both and their ratio: about 4 where the work is linear, 5 at n log n, 16 where every row looks at all
/// others.
template <typename Work>
void reportGrowth(benchmark::State& state, Work work) {
    const auto count = static_cast<int>(state.range(0));
    for (auto run : state) {
        const double few = work(count);
        const double many = work(4 * count);
        state.SetIterationTime(few + many);
        state.counters["few_s"] = few;
        state.counters["many_s"] = many;
        state.counters["growth"] = many / few;
    }
}

/// Seconds since it was made.
class Stopwatch {
public:
    double seconds() const {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - m_start).count();
    }

private:
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

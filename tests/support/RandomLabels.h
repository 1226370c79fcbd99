#pragma once

#include "base/LabelFormat.h"

#include <initializer_list>
#include <random>

// Labels of all shapes, made of few ingredients so that neighbours often agree in some attribute.
class RandomLabels {
public:
    explicit RandomLabels(unsigned seed) : m_random(seed) {}

    LabelRuns make() {
        LabelRuns runs;
        for (int i = below(12); i > 0; --i)
            LabelFormat::append(runs, {LabelRun::eKind(below(3)), {}, style()});
        LabelRuns filled;
        for (LabelRun& run : runs)
            LabelFormat::append(filled, fill(run));
        return filled;
    }

private:
    int below(int n) { return std::uniform_int_distribution<>(0, n - 1)(m_random); }
    template <typename T>
    T pick(std::initializer_list<T> items) {
        return items.begin()[below(int(items.size()))];
    }
    LabelStyle style() {
        return {pick({"Arial", "Odd;{%3B}%25", "Größe"}),
                pick({3.5, 7.0, 0.1 + 0.2, 1e-7, 2.5e11}),
                pick({0, 3, 256}),
                below(2) == 1,
                below(2) == 1,
                below(4) == 1};
    }
    LabelRun fill(LabelRun run) {
        if (run.kind == LabelRun::kText)
            run.text = pick({"a", "{", "}}", "{name}", " \t ", "Ø 12 – Träger", "{L1}", "=;%", "br"});
        if (run.kind == LabelRun::kVariable)
            run.text = pick({"name", "future_value", "x.y-2"});
        return run;
    }

    std::mt19937 m_random;
};

// Two ways to do the same, timed by turns in one run, because a machine is never as fast as it was a minute ago. What
// becomes of it is a line that ./bench makes a row of its table of:
//
//   row|what|reference|reach|median of the ratios|lower quartile|upper quartile|our time|the reference's time
#pragma once

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <vector>

namespace bench {

inline double Microseconds() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double, std::micro>(now).count();
}

template <class Step>
double Timed(Step step) {
    const double start = Microseconds();
    step();
    return Microseconds() - start;
}

/// The value below which that share of them lies.
inline double Quantile(std::vector<double> values, double share) {
    if (values.empty()) return 0;
    const auto place = static_cast<std::ptrdiff_t>(std::lround(share * static_cast<double>(values.size() - 1)));
    std::nth_element(values.begin(), values.begin() + place, values.end());
    return values[static_cast<std::size_t>(place)];
}

struct Row {
    const char* what;
    const char* reference;
    double reach;  ///< the ratio that is wanted at most
};

class Comparison {
public:
    /// What one round took, or any other measure of both.
    void Add(double ours, double reference) {
        m_ours.push_back(ours);
        m_reference.push_back(reference);
        m_ratios.push_back(ours / reference);
    }

    /// unit stands behind the two measures, which are divided by count.
    void Print(const Row& row, const char* unit = "us", double count = 1) const {
        std::printf("row|%s|%s|%g|%.3f|%.3f|%.3f|%.4g %s|%.4g %s\n", row.what, row.reference, row.reach,
                    Quantile(m_ratios, 0.5), Quantile(m_ratios, 0.25), Quantile(m_ratios, 0.75),
                    Quantile(m_ours, 0.5) / count, unit, Quantile(m_reference, 0.5) / count, unit);
    }

private:
    std::vector<double> m_ours;
    std::vector<double> m_reference;
    std::vector<double> m_ratios;
};

/// Runs both by turns; the first round, in which everything is still to be found, does not count. Each step does its
/// work count times.
template <class Ours, class Reference>
void Compare(const Row& row, int rounds, int count, Ours ours, Reference reference) {
    Comparison comparison;
    for (int i = 0; i <= rounds; ++i) {
        const double first = Timed(ours);
        const double second = Timed(reference);
        if (i > 0) comparison.Add(first, second);
    }
    comparison.Print(row, "us", count);
}

}  // namespace bench

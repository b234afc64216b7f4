// SPDX-FileCopyrightText: 2026 The bxwifid developers
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

/// What one thing cost each time it was done, in microseconds.
class Series
{
public:
    void add(double cost) { costs.push_back(cost); }
    template<typename Action>
    void time(Action action)
    {
        const auto begin = std::chrono::steady_clock::now();
        action();
        const auto end = std::chrono::steady_clock::now();
        add(std::chrono::duration<double, std::micro>(end - begin).count());
    }
    double median() const
    {
        std::vector<double> sorted = costs;
        std::sort(sorted.begin(), sorted.end());
        return sorted[sorted.size() / 2];
    }
    double worst() const { return *std::max_element(costs.begin(), costs.end()); }

private:
    std::vector<double> costs;
};

struct Figure {
    std::string name;
    const char *unit;
    double value;
    double worst = 0;
    double floor = 0; ///< the least that the value could be; 0 for none, as with all from here
    double aim = 0;   ///< the largest ratio of value to floor that is wanted
};

/// Prints a figure as a line of tab-separated columns.
inline void print(const Figure &figure)
{
    std::printf("%s\t%s\t%.1f\t%.1f\t%.1f\t%.2f\n", figure.name.c_str(), figure.unit, figure.value,
                figure.worst, figure.floor, figure.aim);
}

inline void print(const std::string &name, const Series &series, double floor = 0, double aim = 0)
{
    print({name, "us", series.median(), series.worst(), floor, aim});
}

#pragma once

#include <string>

/// Asks for a line after the run: the time of one benchmark divided by that of another, both of
/// this run (medians over their repetitions), and the bound it is meant to keep.
struct Ratio {
    std::string benchmark;
    std::string baseline;
    double meant; ///< at most this
};

/// To be called before main, by the file that holds the benchmarks.
bool addRatio(const Ratio& ratio);

// process.h: what a whole process costs.
#pragma once

#include <string>
#include <vector>

namespace kcnvrt::bench {

using Command = std::vector<std::string>;

struct Cost {
    double seconds;    // of CPU, user and system
    double kilobytes;  // the most memory that it had at a time
};

// Keeps this process, and those that it starts, on one core.
void stay_on_one_core();

// Runs the commands in turn, so many rounds, their output thrown away: for each command the cost of each round. What
// the machine does besides disturbs the commands of a round alike. Ends the program when a command fails.
std::vector<std::vector<Cost>> run_in_turn(const std::vector<Command>& commands, int rounds);

double median(std::vector<double> values);
double median_of(const std::vector<Cost>& costs, double Cost::*part);

// Of the CPU time in the same round.
double median_ratio(const std::vector<Cost>& costs, const std::vector<Cost>& others);

}  // namespace kcnvrt::bench

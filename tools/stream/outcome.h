// What a part of the input came to, until its turn comes to be written.
#pragma once

#include <cstddef>
#include <exception>
#include <mutex>
#include <string>
#include <vector>

#include "census/census.h"
#include "tally.h"

namespace kcnvrt {

struct Outcome {
    // How far things are.
    struct Mark {
        std::size_t lines;
        std::size_t rejects;
        std::size_t problems;
        std::size_t findings;
        Tally tally;
    };

    std::size_t number = 0;              // of the part, from 0: parts are written in this order
    std::unique_lock<std::mutex> large;  // held by what is to be written before another large one is read
    std::string lines;                   // of the output
    std::string rejects;
    std::string problems;
    std::vector<Finding> findings;  // where losses are looked for
    Tally tally;
    std::vector<Mark> behind_rejects;  // where the run may end
    std::exception_ptr failure;        // what ends the run, behind all this

    Mark end() const { return {lines.size(), rejects.size(), problems.size(), findings.size(), tally}; }
    // Forgets what came behind the mark, and no reject.
    void go_back(const Mark& mark) {
        lines.resize(mark.lines);
        rejects.resize(mark.rejects);
        problems.resize(mark.problems);
        findings.resize(mark.findings);
        tally = mark.tally;
    }
};

}  // namespace kcnvrt

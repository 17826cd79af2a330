// A line on standard error that says how far a long run is.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

#include "subject.h"
#include "tally.h"

namespace kcnvrt {

class Progress {
public:
    Progress(bool is_shown, const Subject& subject);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // Shows the line anew, if the last time was long enough ago.
    void show(const Tally& tally);

    // Before anything else is written to standard error.
    void clear();

    // Since it was made.
    double seconds() const;

private:
    using Clock = std::chrono::steady_clock;

    std::string line(const Tally& tally) const;
    double part_done(const Tally& tally) const;

    const bool is_shown_;
    const bool is_terminal_;
    const Subject subject_;
    const Clock::time_point start_ = Clock::now();
    Clock::time_point next_;
    bool is_on_screen_ = false;
};

}  // namespace kcnvrt

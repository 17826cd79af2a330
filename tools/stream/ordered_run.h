// A run whose parts are converted by any number of threads, and written in their order.
#pragma once

#include <functional>

#include "commands/command_line.h"
#include "delivery.h"
#include "wake.h"

namespace kcnvrt {

class OrderedRun {
public:
    // Opens what the user named.
    OrderedRun(const Options& options, const Subject& subject);

    // Calls `next` in every thread until it is false: it converts the next part, and leaves no exception.
    ExitStatus run(const std::function<bool(Outcome&)>& next);

    Report report() const { return delivery_.report(); }

    // What wakes a thread that waits for input, and what is written to while it does; -1 for nothing.
    Wake& wake() { return wake_; }
    int standard_output() const { return delivery_.standard_output(); }

private:
    const std::size_t jobs_;
    Wake wake_;
    Delivery delivery_;
};

}  // namespace kcnvrt

// Parts that are done in any order are delivered in theirs.
#pragma once

#include <condition_variable>
#include <exception>
#include <functional>
#include <map>
#include <mutex>

#include "outcome.h"

namespace kcnvrt {

class Turns {
public:
    // `deliver` is called by one thread at a time, and says whether to go on. `on_end` is called once, when the run is
    // over before its end. At most so many outcomes wait.
    Turns(std::function<bool(Outcome&)> deliver, std::function<void()> on_end, std::size_t most_waiting);

    // Delivers an outcome, and those that waited for it, or leaves it to the thread before. False once the run is over.
    bool hand_in(Outcome&& outcome);

    // Ends the run by the exception that is being handled.
    void fail();

    // Throws what ended the run, if anything failed.
    void rethrow();

private:
    using Lock = std::unique_lock<std::mutex>;

    bool may_wait(const Outcome& outcome) const;
    void deliver_from(Outcome outcome, Lock& lock);
    bool deliver(Outcome& outcome);

    std::function<bool(Outcome&)> deliver_;
    std::function<void()> on_end_;
    std::size_t most_waiting_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::map<std::size_t, Outcome> waiting_;
    std::size_t next_ = 0;
    bool is_delivering_ = false;
    bool is_over_ = false;
    std::exception_ptr failure_;
};

}  // namespace kcnvrt

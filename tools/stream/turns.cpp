#include "turns.h"

#include <utility>

namespace kcnvrt {

Turns::Turns(std::function<bool(Outcome&)> deliver, std::function<void()> on_end, std::size_t most_waiting)
    : deliver_(std::move(deliver)), on_end_(std::move(on_end)), most_waiting_(most_waiting) {}

bool Turns::may_wait(const Outcome& outcome) const {
    return outcome.number != next_ && !outcome.large.owns_lock() && waiting_.size() < most_waiting_;
}

bool Turns::hand_in(Outcome&& outcome) {
    Lock lock(mutex_);
    changed_.wait(lock, [&] { return is_over_ || may_wait(outcome) || (outcome.number == next_ && !is_delivering_); });
    if (is_over_) return false;
    if (may_wait(outcome)) {
        waiting_.emplace(outcome.number, std::move(outcome));
    } else {
        deliver_from(std::move(outcome), lock);
    }
    return !is_over_;
}

// It takes the turns of those that wait, one by one, without the lock while it delivers.
void Turns::deliver_from(Outcome outcome, Lock& lock) {
    is_delivering_ = true;
    for (;;) {
        lock.unlock();
        const bool goes_on = deliver(outcome);
        lock.lock();
        ++next_;
        is_over_ = is_over_ || !goes_on;
        const auto following = waiting_.find(next_);
        if (is_over_ || following == waiting_.end()) break;
        outcome = std::move(following->second);
        waiting_.erase(following);
        changed_.notify_all();
    }
    is_delivering_ = false;
    changed_.notify_all();
    if (is_over_) on_end_();
}

// Nobody else looks at the failure while this thread delivers, unless another one fails: the first counts.
bool Turns::deliver(Outcome& outcome) {
    try {
        return deliver_(outcome);
    } catch (...) {
        failure_ = std::current_exception();
        return false;
    }
}

void Turns::fail() {
    const Lock lock(mutex_);
    if (is_over_) return;
    failure_ = std::current_exception();
    is_over_ = true;
    changed_.notify_all();
    on_end_();
}

void Turns::rethrow() {
    if (failure_) std::rethrow_exception(failure_);
}

}  // namespace kcnvrt

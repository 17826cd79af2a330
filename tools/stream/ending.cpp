#include "ending.h"

#include <pthread.h>
#include <unistd.h>

#include <atomic>
#include <csignal>

#include "disk/passing_file.h"

namespace kcnvrt {

namespace {

// The signal that waits; 0 where none does.
std::atomic<int> asked{0};
std::atomic<bool> has_writer{false};
std::atomic<pthread_t> writer{};
std::atomic_flag is_ending;

static_assert(std::atomic<int>::is_always_lock_free && std::atomic<bool>::is_always_lock_free &&
                  std::atomic<pthread_t>::is_always_lock_free,
              "the handler of a signal uses them");

// The passing files can be removed only once: who comes second waits for the end.
void remove_files_and_raise(int signal) {
    if (is_ending.test_and_set()) return;
    PassingFile::remove_all();
    std::signal(signal, SIG_DFL);
    raise(signal);
}

bool is_from_this_process(const siginfo_t& info) {
    return info.si_code == SI_TKILL && info.si_pid == getpid();
}

// The signal comes to any thread. The one that writes has to get it too, so that a write that waits for the reader
// returns.
void hold_off_or_end(int signal, siginfo_t* info, void*) {
    int none = 0;
    const bool is_first = asked.compare_exchange_strong(none, signal);
    if (!has_writer) return remove_files_and_raise(signal);
    const bool is_writer = pthread_equal(writer, pthread_self()) != 0;
    if (is_first && !is_writer) pthread_kill(writer, signal);
    if (!is_first && !(is_writer && is_from_this_process(*info))) remove_files_and_raise(signal);
}

}  // namespace

void end_between_lines() {
    for (const int signal : PassingFile::kEndingSignals) {
        struct sigaction before;
        if (sigaction(signal, nullptr, &before) != 0 || before.sa_handler == SIG_IGN) continue;
        struct sigaction action = {};
        action.sa_sigaction = hold_off_or_end;
        action.sa_flags = SA_SIGINFO;
        sigaction(signal, &action, nullptr);
    }
}

bool is_end_asked() {
    return asked != 0;
}

void end_by_signal() {
    remove_files_and_raise(asked);
    for (;;) pause();
}

// Either the handler sees the writer, or the writer sees the signal.
WritingLines::WritingLines() {
    writer = pthread_self();
    has_writer = true;
    if (is_end_asked()) end_by_signal();
}

WritingLines::~WritingLines() {
    has_writer = false;
    if (is_end_asked()) end_by_signal();
}

}  // namespace kcnvrt

#include "disk/passing_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <utility>

namespace kcnvrt {

namespace {

constexpr int kMostNames = 100;  // that others may have taken

std::atomic_flag list_is_held;
PassingFile* first_of_list;

sigset_t ending_signals() {
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : PassingFile::kEndingSignals) sigaddset(&set, signal);
    return set;
}

void take_list() {
    while (list_is_held.test_and_set(std::memory_order_acquire)) {
    }
}

// Who holds the list cannot be interrupted by the handler, which would wait for it for ever.
class ListHeld {
public:
    ListHeld() {
        const sigset_t ending = ending_signals();
        pthread_sigmask(SIG_BLOCK, &ending, &before_);
        take_list();
    }
    ~ListHeld() {
        list_is_held.clear(std::memory_order_release);
        pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }
    ListHeld(const ListHeld&) = delete;
    ListHeld& operator=(const ListHeld&) = delete;

private:
    sigset_t before_;
};

// Nobody else's name; that the file is new says O_EXCL.
std::string new_name(const std::string& folder) {
    timespec now;
    clock_gettime(CLOCK_REALTIME, &now);
    return folder + ".kcnvrt-" + std::to_string(getpid()) + "-" + std::to_string(now.tv_nsec);
}

}  // namespace

int PassingFile::create(const std::string& folder, mode_t permissions) {
    remove();
    for (int names = 0; names < kMostNames; ++names) {
        std::string name = new_name(folder);
        const ListHeld held;
        const int descriptor = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, permissions);
        if (descriptor >= 0) {
            path_ = std::move(name);
            next_ = std::exchange(first_of_list, this);
            return descriptor;
        }
        if (errno != EEXIST) break;
    }
    return -1;
}

bool PassingFile::rename_to(const std::string& path) {
    if (std::rename(path_.c_str(), path.c_str()) != 0) return false;
    forget();
    return true;
}

void PassingFile::remove() {
    if (path_.empty()) return;
    unlink(path_.c_str());
    forget();
}

void PassingFile::forget() {
    const ListHeld held;
    PassingFile** link = &first_of_list;
    while (*link != this) link = &(*link)->next_;
    *link = next_;
    path_.clear();
}

void PassingFile::remove_all() {
    take_list();
    for (const PassingFile* file = first_of_list; file != nullptr; file = file->next_) unlink(file->path_.c_str());
}

// The signal, which is blocked while it is handled, ends the process when the handler returns.
void PassingFile::remove_all_and_end(int signal) {
    remove_all();
    raise(signal);
}

void PassingFile::remove_on_ending_signals() {
    struct sigaction action = {};
    action.sa_handler = remove_all_and_end;
    action.sa_mask = ending_signals();
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int signal : kEndingSignals) {
        struct sigaction before;
        if (sigaction(signal, nullptr, &before) == 0 && before.sa_handler != SIG_IGN)
            sigaction(signal, &action, nullptr);
    }
}

}  // namespace kcnvrt

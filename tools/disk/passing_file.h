// A file under a passing name, which neither a failure nor an ending signal leaves behind.
#pragma once

#include <sys/types.h>

#include <csignal>
#include <string>

namespace kcnvrt {

class PassingFile {
public:
    PassingFile() = default;
    ~PassingFile() { remove(); }
    PassingFile(const PassingFile&) = delete;
    PassingFile& operator=(const PassingFile&) = delete;

    // Makes a file of a new name in the folder, "" or with a slash at its end. Its descriptor for writing; -1 with
    // errno set where it cannot be made. The umask applies to `permissions`.
    int create(const std::string& folder, mode_t permissions);

    // False, with errno set, where it cannot take the place of `path`.
    bool rename_to(const std::string& path);

    void remove();

    // Every passing file, in the last moments of the process: no other is made after it. It calls nothing but what the
    // handler of a signal may call, and is called once.
    static void remove_all();

    static constexpr int kEndingSignals[] = {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGALRM, SIGXCPU};

    // Ending signals then remove every passing file, and still end the process. One that the process was started to
    // ignore (nohup) stays ignored.
    static void remove_on_ending_signals();

private:
    static void remove_all_and_end(int signal);

    void forget();

    std::string path_;  // empty where there is no file
    PassingFile* next_ = nullptr;
};

}  // namespace kcnvrt

// kcnvrt: converts a gateway's configuration between its two JSON layouts.

#include <fcntl.h>
#include <unistd.h>

#include <csignal>

#include "commands/command_line.h"
#include "disk/passing_file.h"
#include "memory/arena.h"
#include "memory/out_of_memory.h"

namespace {

// A standard stream that came closed would lend its number to the next file opened, which others then write into.
// What takes its place fails every read and write, as the closed one would.
void occupy_standard_descriptors() {
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) < 0) open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

}  // namespace

int main(int argc, char** argv) {
    occupy_standard_descriptors();
    // Writing then fails with an error that is handled like any other.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    kcnvrt::PassingFile::remove_on_ending_signals();
    kcnvrt::end_well_without_exceptions();
    kcnvrt::install_arenas();
    return kcnvrt::run_command_line(argc, argv);
}

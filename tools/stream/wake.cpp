#include "wake.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>

#include "failure.h"

namespace kcnvrt {

Wake::Wake() : event_(eventfd(0, EFD_CLOEXEC)) {
    if (event_ < 0) throw Failure{kUnusableFile, "kcnvrt", "eventfd", std::strerror(errno)};
}

Wake::~Wake() {
    close(event_);
}

void Wake::up() {
    const uint64_t one = 1;
    while (write(event_, &one, sizeof one) < 0 && errno == EINTR) {
    }
}

bool Wake::wait_for(int input, int output) const {
    pollfd files[] = {{input, POLLIN, 0}, {event_, POLLIN, 0}, {output, 0, 0}};
    while (poll(files, 3, -1) < 0 && errno == EINTR) {
    }
    return files[1].revents == 0 && (files[2].revents & POLLERR) == 0;
}

bool has_input(int descriptor) {
    pollfd file = {descriptor, POLLIN, 0};
    return poll(&file, 1, 0) > 0;
}

}  // namespace kcnvrt

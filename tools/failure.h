// How a run of the tool ends.
#pragma once

#include <string>

namespace kcnvrt {

enum ExitStatus {
    kConverted = 0,
    kRejected = 1,
    kDifferent = 1,
    kWrongUsage = 2,
    kUnusableFile = 3,
};

// Ends the run with a message.
struct Failure {
    ExitStatus status;
    std::string source;
    std::string function;
    std::string message;
};

// The reader of the result went away: he has all he wanted, so the run ends without a message.
struct ClosedPipe {};

}  // namespace kcnvrt

// What conversions write to standard output of their own accord, kept apart from the result.
#pragma once

#include <string>

namespace kcnvrt {

// While one lives, whatever the process writes to standard output is set aside.
class StdoutSetAside {
public:
    StdoutSetAside();
    ~StdoutSetAside();
    StdoutSetAside(const StdoutSetAside&) = delete;
    StdoutSetAside& operator=(const StdoutSetAside&) = delete;

    // Gives standard output back; what was written in between.
    std::string restore();

private:
    void give_back();

    int stdout_ = -1;
    int aside_ = -1;
};

}  // namespace kcnvrt

// What wakes a thread that waits for input when the run is over.
#pragma once

namespace kcnvrt {

class Wake {
public:
    Wake();
    ~Wake();
    Wake(const Wake&) = delete;
    Wake& operator=(const Wake&) = delete;

    // For good. May be called by any thread.
    void up();

    // Waits until there is something to read. False where it was woken before, or where the reader of `output` went
    // away.
    bool wait_for(int input, int output) const;

private:
    int event_;
};

// Whether reading would not have to wait.
bool has_input(int descriptor);

}  // namespace kcnvrt

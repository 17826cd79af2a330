// capture.h: what the C library's standard output gets in a scope.
#pragma once

#include <string>

class StdoutCapture {
public:
    StdoutCapture();
    ~StdoutCapture();
    StdoutCapture(const StdoutCapture&) = delete;
    StdoutCapture& operator=(const StdoutCapture&) = delete;

    // Ends the capture and returns the text written since it began.
    std::string finish();

private:
    void restore();

    int saved_;
    int file_;
};

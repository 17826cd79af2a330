// silence.h: nothing is written to standard output in a scope. Some conversions print diagnostics there.
#pragma once

// Only around calls of the library: a failure that a test prints meanwhile would be lost.
class Silence {
public:
    Silence();
    ~Silence();
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;
};

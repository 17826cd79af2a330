// properties.h: what holds for every conversion of every source.
#pragma once

#include <functional>
#include <string>

#include "k_err.h"
#include "tree.h"

// What a call gives back, and how many fields it says have failed.
struct Returned {
    Tree tree;
    int failures = 0;
};

using Call = std::function<Returned(json_t* source, k_err_t* err)>;

// What a call gives back when fields failed: nothing, or what could be converted, with a message or without.
enum class OnFailure { kNothing, kTheRest, kTheRestInSilence };

// Calls it several times, and ends the process when one of these is not so:
// the source stays as it is; equal calls give equal results and messages, with an error record or without; nothing
// comes back exactly when fields failed, and then there is a message; every message has a place that is in the source;
// what comes back can be written as JSON and read again if the source can, and does not change when the source is
// released; Jansson has as many blocks afterwards as before.
void check(const Call& call, Tree source, OnFailure on_failure);

// Ends the process unless it is so, showing the source.
void require(bool is_so, const char* what, const json_t* source);

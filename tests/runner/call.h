// call.h: one call of a case, observed.
#pragma once

#include <jansson.h>

#include <string>
#include <utility>
#include <vector>

#include "tree.h"

// Everything a caller can observe of one call.
struct Outcome {
    int result = 0;
    std::string output;                                         // as text, member by member in order
    bool output_fits = true;                                    // it is the expected value
    std::string difference;                                     // where it is not
    std::vector<std::pair<std::string, std::string>> messages;  // function, text
    std::vector<std::string> pointers;                          // of the messages as JSON: null where there is none
    std::vector<std::string> places_that_are_not;  // messages whose pointer leads nowhere, or that lack one
    bool has_counted = false;                      // among the messages
    std::string printed;                           // on standard output
    bool inputs_unchanged = true;
    bool output_stands_alone = true;  // it is still the same after the caller has released the source
    long leaked = 0;                  // blocks of Jansson's
};

enum class Record { kGiven, kNull };

// Calls the function of a case that is written as it should be, on inputs of its own.
Outcome run_call(const json_t* data, Record record);

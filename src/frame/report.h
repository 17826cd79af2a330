// report.h: the author of messages, and where they belong. Made once per converter and passed down.
#pragma once

#include <cstdint>

#include "json.h"
#include "k_err.h"

namespace kcnvrt {

class Report {
public:
    // `function` is the name that every message carries; the line is where the report was made.
    Report(const char* function, k_err_t* err, int line = __builtin_LINE())
        : function_{function}, err_{err}, line_{line} {}

    // Reports one message and yields 1, the count of failed fields, so that reporting and counting cannot drift apart.
    [[gnu::format(printf, 2, 3), gnu::cold]] int fail(const char* format, ...) const;

    // Reports a problem that is not counted.
    [[gnu::format(printf, 2, 3), gnu::cold]] void note(const char* format, ...) const;

    // The same, about the member `name` of `object`.
    [[gnu::format(printf, 4, 5), gnu::cold]] int fail_at(json_t* object, Key name, const char* format, ...) const;

    // Every message that has no place yet is about the member `name` of `object`; about the object itself when it has
    // no such member, or none is named. What has no members (k_err_place) leaves them to who knows more: whoever walks
    // over entries of any type places what their converter could not.
    [[gnu::cold]] void place(json_t* object, Key name) const;
    [[gnu::cold]] void place(json_t* object) const;
    // About the entry of that number, counted from 1, of an array or a numbered list.
    [[gnu::cold]] void place_entry(json_t* list, int64_t number) const;

    // A count of failures, whose messages are placed.
    int placed(int failures, json_t* object, Key name) const {
        if (failures != 0) place(object, name);
        return failures;
    }
    int placed_entry(int failures, json_t* list, int64_t number) const {
        if (failures != 0) place_entry(list, number);
        return failures;
    }

    // The same record under another author's name.
    Report under(const char* function, int line = __builtin_LINE()) const { return {function, err_, line}; }

    k_err_t* err() const { return err_; }
    const char* function() const { return function_; }

private:
    const char* function_;
    k_err_t* err_;
    int line_;
};

// Runs a conversion whose failures do not count: its messages say so.
template <class Convert>
void uncounted(k_err_t* err, Convert convert) {
    const size_t first = k_err_count(err);
    convert();
    k_err_leave_out(err, first);
}

}  // namespace kcnvrt

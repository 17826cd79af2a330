// report.h: the author of messages. Made once per converter and passed down.
#pragma once

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

    // The same record under another author's name.
    Report under(const char* function, int line = __builtin_LINE()) const { return {function, err_, line}; }

    k_err_t* err() const { return err_; }
    const char* function() const { return function_; }

private:
    const char* function_;
    k_err_t* err_;
    int line_;
};

}  // namespace kcnvrt

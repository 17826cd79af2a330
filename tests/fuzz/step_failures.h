// step_failures.h: the failures of a whole document, counted a second time.
//
// The linker leads the section runner, and the handlers that the document calls without it, to this file. What they
// return is added up by the rules that the document follows, and so it is known what the document must return.
#pragma once

class StepFailures {
public:
    StepFailures();
    ~StepFailures();
    StepFailures(const StepFailures&) = delete;
    StepFailures& operator=(const StepFailures&) = delete;

    int count() const;
};

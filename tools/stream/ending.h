// Signals that end the run, which wait until a line that is being written is whole.
#pragma once

namespace kcnvrt {

// From here on ending signals remove every passing file and end the process, but not in the middle of a line. A second
// one ends it at once. One that the process was started to ignore (nohup) stays ignored.
void end_between_lines();

// Whether a signal waits.
bool is_end_asked();

// Ends the process as the signal that waits would have done.
[[noreturn]] void end_by_signal();

// While one lives, its thread writes lines: it looks at is_end_asked() when a write returns. There is one at a time.
class WritingLines {
public:
    WritingLines();
    ~WritingLines();
    WritingLines(const WritingLines&) = delete;
    WritingLines& operator=(const WritingLines&) = delete;
};

}  // namespace kcnvrt

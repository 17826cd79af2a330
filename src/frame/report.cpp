// Messages into the error record.
#include "frame/report.h"

#include <cstdarg>

namespace kcnvrt {

int Report::fail(const char* format, ...) const {
    va_list arguments;
    va_start(arguments, format);
    k_err_vset(err_, function_, line_, format, arguments);
    va_end(arguments);
    return 1;
}

void Report::note(const char* format, ...) const {
    va_list arguments;
    va_start(arguments, format);
    k_err_vset(err_, function_, line_, format, arguments);
    va_end(arguments);
}

}  // namespace kcnvrt

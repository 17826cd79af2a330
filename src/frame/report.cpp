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
    const size_t first = k_err_count(err_);
    va_list arguments;
    va_start(arguments, format);
    k_err_vset(err_, function_, line_, format, arguments);
    va_end(arguments);
    k_err_leave_out(err_, first);
}

int Report::fail_at(json_t* object, Key name, const char* format, ...) const {
    va_list arguments;
    va_start(arguments, format);
    k_err_vset(err_, function_, line_, format, arguments);
    va_end(arguments);
    place(object, name);
    return 1;
}

void Report::place(json_t* object, Key name) const {
    k_err_place(err_, object, name.text(), name.length());
}

void Report::place(json_t* object) const {
    k_err_place(err_, object, nullptr, 0);
}

void Report::place_entry(json_t* list, int64_t number) const {
    place(list, Decimal{json_is_array(list) ? number - 1 : number});
}

}  // namespace kcnvrt

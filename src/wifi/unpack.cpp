#include "wifi/unpack.h"

#include <cstdarg>

#include "k_err.h"

namespace kcnvrt {

int unpack(json_t* source, json_error_t& error, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int result = json_vunpack_ex(source, &error, 0, format, arguments);
    va_end(arguments);
    if (result != 0 && json_error_code(&error) == json_error_out_of_memory) k_err_no_memory();
    return result;
}

bool fits(json_t* source, const Unpacked& member) {
    json_t* const value = get(source, member.name);
    if (value == nullptr) return member.is_optional;
    return member.type == 'b'   ? json_is_boolean(value)
           : member.type == 'i' ? json_is_integer(value)
                                : json_is_string(value);
}

}  // namespace kcnvrt

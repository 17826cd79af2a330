// unpack.h: reading by one of Jansson's formats.
#pragma once

#include "frame/json.h"
#include "frame/report.h"

namespace kcnvrt {

// 0, or -1 and what is wrong in `error`. Reading stops at the first field that does not fit; those before it are read.
int unpack(json_t* source, json_error_t& error, const char* format, ...);

// A member as a format has it: "{s: b}", "{s: i}", "{s: s}", and with "?" an optional one.
struct Unpacked {
    Name name;
    char type;
    bool is_optional = false;
};

// Whether the member is there and fits, or is optional and absent.
bool fits(json_t* source, const Unpacked& member);

// What stopped the reading is the first that does not fit.
template <size_t N>
void place_misfit(json_t* source, const Unpacked (&members)[N], const Report& report) {
    for (const Unpacked& member : members)
        if (!fits(source, member)) return report.place(source, member.name);
    report.place(source);
}

}  // namespace kcnvrt

// One list for all who damage examples.
#include "damages.h"

std::vector<Tree> damages() {
    std::vector<Tree> values;
    for (const char* text : {"", "text", "7", "-1", "4294967295", "4294967296", "10.0.0.0/99", "AAA", "Port"})
        values.emplace_back(json_string(text));
    for (const json_int_t number : {json_int_t{0}, json_int_t{1}, json_int_t{7}, json_int_t{-7}, json_int_t{70000}})
        values.emplace_back(json_integer(number));
    values.emplace_back(json_real(0.5));
    values.emplace_back(json_true());
    values.emplace_back(json_false());
    values.emplace_back(json_null());
    values.emplace_back(json_object());
    values.emplace_back(json_array());
    values.emplace_back(json_pack("[s]", "7"));
    values.emplace_back(json_pack("{s:s}", "70000", "7"));
    return values;
}

#include "ifaces/blocks.h"

namespace kcnvrt::ways {

namespace {

// Typed on the way back too: the old layout of this block keeps booleans and integers as such.
// clang-format off
constexpr auto kDot1x = fields(
    field<carry, boolean_to_new>("enable"),
    field<carry, integer_to_new>("eap_method"),
    carried("login"),
    password("passwd"));
// clang-format on

constexpr const char* kAuthor = "parse_8021x";

}  // namespace

int dot1x_to_new(json_t* destination, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    Json block = object();
    const int failures = to_new(kDot1x, value, block.get(), report.under(kAuthor));
    set(destination, key, std::move(block));
    return failures;
}

int dot1x_to_old(json_t* destination, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    Json block = object();
    const int failures = to_old(kDot1x, value, block.get(), report.under(kAuthor));
    set(destination, key, std::move(block));
    return failures;
}

}  // namespace kcnvrt::ways

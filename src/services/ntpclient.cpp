// The NTP client.
#include <cerrno>
#include <cstdlib>

#include "frame/list.h"
#include "k_cnvrt.h"
#include "k_cnvrt/services.h"

using namespace kcnvrt;

namespace {

// Unlike an integer elsewhere it must be there, may have leading blanks and a sign, and "" is 0.
int hour_to_new(json_t* settings, Key key, json_t* hour, const Report& report) {
    if (!json_is_string(hour)) return report.fail("Invalid field \"hour\", is not string");
    char* end = nullptr;
    errno = 0;
    const int64_t number = std::strtoll(text_of(hour), &end, 10);
    if (*end != '\0' || errno == ERANGE) return report.fail("Invalid field \"hour\", string not contains digits");
    set(settings, key, integer(number));
    return 0;
}

constexpr Word<hour_to_new, ways::integer_to_old> hour;

// clang-format off
constexpr auto kTimeClient = fields(
    carried  ("dst"),
    carried  ("time"),
    carried  ("enable"),
    carried  ("use_dhcp"),
    hour     ("hour"),
    name_list("servers"),
    name_list("dhcp-servers"));
// clang-format on

}  // namespace

int parse_old_ntpclient(json_t* source, json_t* destination, k_err_t* err) {
    return to_new(kTimeClient, source, destination, Report{__func__, err});
}

int parse_new_ntpclient(json_t* source, json_t* destination, k_err_t* err) {
    return to_old(kTimeClient, source, destination, Report{__func__, err});
}

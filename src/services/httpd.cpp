// The web server.
#include "frame/field.h"
#include "k_cnvrt.h"
#include "k_cnvrt/services.h"

using namespace kcnvrt;

namespace {

// clang-format off
constexpr auto kWebServer = fields(
    //              old        new
    boolean_in_both("enable"),
    boolean_in_new ("use_ssl", "https_enable"),
    carried        ("port"),
    carried        ("port_s"));
// clang-format on

}  // namespace

int parse_old_httpd(json_t* source, json_t* destination, k_err_t* err) {
    return to_new(kWebServer, source, destination, Report{__func__, err});
}

int parse_new_httpd(json_t* source, json_t* destination, k_err_t* err) {
    return to_old(kWebServer, source, destination, Report{__func__, err});
}

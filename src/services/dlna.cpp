// The media server.
#include "frame/nested.h"
#include "k_cnvrt.h"
#include "k_cnvrt/services.h"

using namespace kcnvrt;

namespace {

// clang-format off
constexpr auto kMediaDir = fields(
    carried("path"),
    carried("type"));

// Towards the old layout a directory keeps all its members.
constexpr Word<ways::nested<list_to_new, kMediaDir, "">, ways::elements_to_old> media_dirs;

constexpr auto kMediaServer = fields(
    //              old        new
    boolean_in_both("enabled", "enable"),
    carried        ("interval"),
    carried        ("name"),
    media_dirs     ("media_dirs"));
// clang-format on

}  // namespace

int parse_old_dlna(json_t* source, json_t* destination, k_err_t* err) {
    return to_new(kMediaServer, source, destination, Report{__func__, err});
}

int parse_new_dlna(json_t* source, json_t* destination, k_err_t* err) {
    return to_old(kMediaServer, source, destination, Report{__func__, err});
}

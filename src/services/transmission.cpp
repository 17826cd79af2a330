// The BitTorrent client.
#include "frame/field.h"
#include "k_cnvrt.h"
#include "k_cnvrt/services.h"

using namespace kcnvrt;

namespace {

// clang-format off
constexpr auto kTorrentClient = fields(
    carried ("enable"),
    carried ("peer-port"),
    carried ("peer-limit"),
    carried ("main-dir"),
    carried ("device-dir"),
    carried ("rpc-port"),
    carried ("open-files-limit"),
    carried ("using-auth"),
    carried ("user"),
    password("pass"));
// clang-format on

}  // namespace

int parse_old_transmission(json_t* source, json_t* destination, k_err_t* err) {
    return to_new(kTorrentClient, source, destination, Report{__func__, err});
}

int parse_new_transmission(json_t* source, json_t* destination, k_err_t* err) {
    return to_old(kTorrentClient, source, destination, Report{__func__, err});
}

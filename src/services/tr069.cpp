// The TR-069 client.
#include "k_cnvrt/tr069.h"

#include "frame/nested.h"
#include "k_cnvrt.h"
#include "services/tr069_misc.h"

using namespace kcnvrt;

namespace {

// 0 is "" in the old layout. A value of another type is no failure: towards new it is dropped, towards old it reads
// as 0.

int max_envs_to_new(json_t* settings, Key key, json_t* value, const Report& report) {
    if (!json_is_string(value)) return 0;
    if (json_string_length(value) != 0) return ways::integer_to_new(settings, key, value, report);
    set(settings, key, integer(0));
    return 0;
}

int max_envs_to_old(json_t* settings, Key key, json_t* value, const Report& report) {
    if (json_integer_value(value) != 0) return ways::integer_to_old(settings, key, value, report);
    if (value != nullptr) set(settings, key, string(""));
    return 0;
}

constexpr Word<max_envs_to_new, max_envs_to_old> max_envs;

// clang-format off

constexpr auto kManagementServer = fields(
    boolean_field("periodicinformenable"),
    integer_field("periodicinforminterval"),
    password     ("password"),
    password     ("connectionrequestpassword"),
    carried      ("url"),
    carried      ("username"),
    carried      ("connectionrequesturl"),
    carried      ("connectionrequestusername"),
    carried      ("periodicinformtime"));

constexpr auto kFileTransfer = fields(
    password("password"),
    carried ("status"),
    carried ("cmd_key"),
    carried ("file_type"),
    carried ("url"),
    carried ("username"),
    carried ("end_time"),
    carried ("delay"),
    carried ("file_size"),
    carried ("fault"));

constexpr auto management_server = object_field<kManagementServer, "parse_managementserver">;
constexpr auto file_transfers = list_field<kFileTransfer, "parse_file_trans">;

constexpr auto kClient = fields(
    carried          ("iface"),
    carried          ("enable"),
    carried          ("l2_key"),
    carried          ("l3_key"),
    integer_field    ("end_port"),
    integer_field    ("debug_mode"),
    integer_field    ("start_port"),
    integer_field    ("authenticate"),
    integer_field    ("getrpcmethodsenable"),
    integer_field    ("schedule_inform_time"),
    element_list     ("notify"),
    max_envs         ("max_envs"),
    misc             ("misc"),
    management_server("managementserver"),
    file_transfers   ("file_trans"));

// clang-format on

}  // namespace

int parse_old_tr069(json_t* source, json_t* destination, k_err_t* err) {
    return to_new(kClient, source, destination, Report{__func__, err});
}

int parse_new_tr069(json_t* source, json_t* destination, k_err_t* err) {
    return to_old(kClient, source, destination, Report{__func__, err});
}

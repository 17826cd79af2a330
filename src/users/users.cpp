// The users of the device's management interfaces: an array (version 0) or a versioned object against a numbered list.
#include "frame/nested.h"
#include "k_cnvrt.h"

using namespace kcnvrt;

namespace {

// clang-format off
// A user of the array layout.
constexpr auto kPasswdUser = fields(
    carried ("login"),
    carried ("pass_cr"),
    password("pass"));

// A user of the object layout, where the login is the member's name.
constexpr auto kUser = fields(
    carried ("pass_cr"),
    password("pass"),
    carried ("debug"));

// Rights that the old layout keeps in the user itself and the new one in the user's "services".
constexpr auto kRights = fields(
    carried("web"),
    carried("shell"),
    carried("dcc"));
// clang-format on

// Towards the old layout.

int users_to_array(json_t* list, json_t* destination, const Report& report) {
    // The other container is refused without a message: the caller tries both.
    if (!json_is_array(destination)) return 1;
    return list_to_old(kPasswdUser, list, destination, report);
}

int users_to_object(json_t* users, json_t* destination, const Report& report) {
    if (!json_is_object(destination)) return 1;
    int failures = 0;
    Json list = object();
    for (const auto [name, instance] : members(get(users, "list"))) {
        Json user = object();
        failures += to_old(kUser, instance, user.get(), report);
        failures += to_old(kRights, get(instance, "services"), user.get(), report);
        set_named(list.get(), get(instance, "login"), std::move(user));
    }
    set(destination, "list", std::move(list));
    carry(destination, "version", get(users, "version"));
    carry(destination, "services", get(users, "services"));
    return failures;
}

// Towards the new layout.

int convert_old_users_element(json_t* old_user, ListBuilder& list, k_err_t* err) {
    Json user = object();
    const int failures = to_new(kPasswdUser, old_user, user.get(), Report{__func__, err});
    list.add(std::move(user));
    return failures;
}

// The layout without versions: an array of users, or one user that is in no array.
int passwd_to_new(json_t* passwd, json_t* destination, k_err_t* err) {
    int failures = 0;
    ListBuilder list;
    for (const auto [number, user] : elements(passwd)) failures += convert_old_users_element(user, list, err);
    if (json_is_object(passwd)) failures += convert_old_users_element(passwd, list, err);
    set(destination, "list", list.finish());
    set(destination, "version", integer(0));
    return failures;
}

int user_to_new(Key login, json_t* old_user, ListBuilder& list, const Report& report) {
    Json user = object();
    int failures = to_new(kUser, old_user, user.get(), report);
    set(user.get(), "login", string(login));
    Json rights = object();
    failures += to_new(kRights, old_user, rights.get(), report);
    if (!is_empty(rights.get())) set(user.get(), "services", std::move(rights));
    list.add(std::move(user));
    return failures;
}

int object_to_new(json_t* users, json_t* destination, const Report& report) {
    json_t* const version = get(users, "version");
    set(destination, "version", version == nullptr ? integer(1) : share(version));
    carry(destination, "services", get(users, "services"));
    const SortedMembers logins{get(users, "list")};
    if (logins.failed()) return report.fail_at(users, "list", "Error allocated memory!\n");
    int failures = 0;
    ListBuilder list;
    for (const auto& [login, user] : logins) failures += user_to_new(login, user, list, report);
    set(destination, "list", list.finish());
    return failures;
}

}  // namespace

int k_cnvrt_get_users_from_new(json_t* source, json_t* destination, k_err_t* err) {
    if (source == nullptr) return 0;
    const Report report{__func__, err};
    json_t* const version = get(source, "version");
    if (version == nullptr) return report.fail("Field \"version\" is missing!");
    if (!json_is_integer(version)) return report.fail_at(source, "version", "Field \"version\" not integer!");
    if (json_integer_value(version) < 0) return report.fail_at(source, "version", "Error field \"version\" < 0");
    return json_integer_value(version) == 0 ? users_to_array(get(source, "list"), destination, report)
                                            : users_to_object(source, destination, report);
}

int k_cnvrt_get_users_from_old(json_t* source, json_t* destination, k_err_t* err) {
    if (source == nullptr) return 0;
    const Report report{__func__, err};
    if (has(source, "list")) return object_to_new(source, destination, report);
    if (json_is_array(source) || json_is_object(source)) return passwd_to_new(source, destination, err);
    return report.fail("Invalid incoming json! Is not array or object!");
}

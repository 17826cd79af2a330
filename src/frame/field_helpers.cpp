// The exported field helpers: the ways of field.h with the arguments that C callers pass.
#include <cstring>

#include "frame/field.h"
#include "k_cnvrt.h"

using namespace kcnvrt;

namespace {

// Stores one value on behalf of a C caller; without a key there is nothing to store under.
int store_one(Way way, json_t* destination, const char* key, json_t* value, const char* function, int line,
              k_err_t* err) {
    if (key == nullptr) return 0;
    return way(destination, {key, std::strlen(key)}, value, Report{function, err, line});
}

}  // namespace

int json_integer_old_set_safe(json_t* destination, const char* key, json_t* value, const char* function, int line,
                              k_err_t* err) {
    return store_one(ways::integer_to_old, destination, key, value, function, line, err);
}

int json_boolean_old_set_safe(json_t* destination, const char* key, json_t* value, const char* function, int line,
                              k_err_t* err) {
    return store_one(ways::boolean_to_old, destination, key, value, function, line, err);
}

int json_string_old_set_safe(json_t* destination, const char* key, json_t* value, const char* function, int line,
                             k_err_t* err) {
    return store_one(ways::string_to_old, destination, key, value, function, line, err);
}

int json_string_set_password_old(json_t* destination, const char* key, json_t* value, const char* function, int line,
                                 k_err_t* err) {
    return store_one(ways::password_to_old, destination, key, value, function, line, err);
}

int json_string_set_safe(json_t* destination, const char* key, json_t* value, const char* function, int line,
                         k_err_t* err) {
    return store_one(ways::string_to_new, destination, key, value, function, line, err);
}

int json_integer_set_safe(json_t* destination, const char* key, json_t* value, const char* function, int line,
                          k_err_t* err) {
    return store_one(ways::integer_to_new, destination, key, value, function, line, err);
}

int json_boolean_set_safe(json_t* destination, const char* key, json_t* value, const char* function, int line,
                          k_err_t* err) {
    return store_one(ways::boolean_to_new, destination, key, value, function, line, err);
}

int json_string_set_password(json_t* destination, const char* key, json_t* value, const char* function, int line,
                             k_err_t* err) {
    return store_one(ways::password_to_new, destination, key, value, function, line, err);
}

int json_string_set_def(json_t* destination, const char* key, json_t* value, const char* default_text,
                        const char* function, int line, k_err_t* err) {
    if (key == nullptr) return 0;
    return ways::string_or_default(destination, {key, std::strlen(key)}, value, default_text,
                                   Report{function, err, line});
}

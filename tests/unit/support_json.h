// support_json.h: JSON as text for the tests of differences.
#pragma once

#include <gtest/gtest.h>
#include <jansson.h>

#include <string>

#include "k_conf.h"
#include "owners.h"

namespace support_test {

using Json = Tree;

inline Json parse(const std::string& text) {
    json_error_t error;
    Json value{json_loadb(text.data(), text.size(), JSON_DECODE_ANY | JSON_ALLOW_NUL, &error)};
    EXPECT_NE(value, nullptr) << error.text << " in " << text;
    return value;
}

// Equal texts are equal values down to 1 and 1.0, and 0.0 and -0.0.
inline std::string dump(json_t* value) {
    if (value == nullptr) return "(null)";
    char* text = json_dumps(value, JSON_ENCODE_ANY | JSON_COMPACT | JSON_SORT_KEYS);
    std::string result = text == nullptr ? "(cannot be written)" : text;
    free(text);
    return result;
}
inline std::string dump(const Json& value) {
    return dump(value.get());
}

// The members in their own order.
inline std::string dump_in_order(const Json& value) {
    char* text = json_dumps(value.get(), JSON_ENCODE_ANY | JSON_COMPACT);
    std::string result = text == nullptr ? "(cannot be written)" : text;
    free(text);
    return result;
}

inline Json diff(const Json& base, const Json& candidate, unsigned flag, k_err_t* err = nullptr) {
    return Json{k_conf_diff_set2(base.get(), candidate.get(), 0, flag, err)};
}
inline Json applied(const Json& base, const Json& difference, k_err_t* err = nullptr) {
    return Json{k_conf_apply(base.get(), difference.get(), err)};
}

// An array in an array in an array, as many as `levels`.
inline Json nested(size_t levels) {
    Json value{json_array()};
    for (size_t i = 1; i < levels; ++i) {
        Json outer{json_array()};
        json_array_append_new(outer.get(), value.release());
        value = std::move(outer);
    }
    return value;
}

}  // namespace support_test

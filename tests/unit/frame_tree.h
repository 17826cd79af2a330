// frame_tree.h: trees as tests write and read them: JSON with single quotes for double ones.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "frame/json.h"
#include "k_err.h"

inline kcnvrt::Json tree(std::string text) {
    std::replace(text.begin(), text.end(), '\'', '"');
    json_error_t error;
    kcnvrt::Json parsed{json_loads(text.c_str(), JSON_DECODE_ANY | JSON_REJECT_DUPLICATES, &error)};
    EXPECT_NE(parsed, nullptr) << text << ": " << error.text;
    return parsed;
}

inline std::string text(json_t* value) {
    if (value == nullptr) return "absent";
    char* dumped = json_dumps(value, JSON_ENCODE_ANY | JSON_COMPACT);
    std::string written = dumped == nullptr ? "" : dumped;
    free(dumped);
    std::replace(written.begin(), written.end(), '"', '\'');
    return written;
}
inline std::string text(const kcnvrt::Json& value) {
    return text(value.get());
}

// An error record that lives as long as a test.
class Messages {
public:
    Messages() : err_{k_err_new()} {}
    ~Messages() { k_err_free(err_); }
    Messages(const Messages&) = delete;
    Messages& operator=(const Messages&) = delete;

    operator k_err_t*() const { return err_; }

    using List = std::vector<std::pair<std::string, std::string>>;
    List list() const {
        List messages;
        for (size_t i = 0; i < k_err_count(err_); ++i)
            messages.emplace_back(k_err_function(err_, i), k_err_message(err_, i));
        return messages;
    }

    // Where each belongs in a source, "nowhere" where it has no place.
    std::vector<std::string> places_in(const kcnvrt::Json& source) const {
        k_err_locate(err_, 0, source.get());
        std::vector<std::string> places;
        for (size_t i = 0; i < k_err_count(err_); ++i) {
            const char* const pointer = k_err_pointer(err_, i);
            places.emplace_back(pointer == nullptr ? "nowhere" : pointer);
        }
        return places;
    }

private:
    k_err_t* err_;
};

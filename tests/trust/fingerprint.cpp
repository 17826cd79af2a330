// A hash over types, names, values, and the counts of references.
#include "fingerprint.h"

#include <cstring>
#include <string_view>

namespace {

// FNV-1a.
class Hash {
public:
    void add(std::string_view bytes) {
        for (const char byte : bytes) hash_ = (hash_ ^ static_cast<unsigned char>(byte)) * 1099511628211u;
    }
    template <class Number>
    void add_number(Number number) {
        char bytes[sizeof number];
        std::memcpy(bytes, &number, sizeof number);
        add({bytes, sizeof number});
    }
    void add_text(std::string_view text) {
        constexpr size_t kLong = 4096;
        add_number(text.size());
        if (text.size() <= kLong) return add(text);
        add(text.substr(0, kLong / 2));
        add(text.substr(text.size() - kLong / 2));
    }
    uint64_t value() const { return hash_; }

private:
    uint64_t hash_ = 14695981039346656037u;
};

void add_tree(Hash& hash, json_t* tree) {
    if (tree == nullptr) return;
    hash.add_number(json_typeof(tree));
    hash.add_number(tree->refcount);
    switch (json_typeof(tree)) {
        case JSON_OBJECT:
            hash.add_number(json_object_size(tree));
            for (void* at = json_object_iter(tree); at != nullptr; at = json_object_iter_next(tree, at)) {
                hash.add_text({json_object_iter_key(at), json_object_iter_key_len(at)});
                add_tree(hash, json_object_iter_value(at));
            }
            break;
        case JSON_ARRAY:
            hash.add_number(json_array_size(tree));
            for (size_t i = 0; i < json_array_size(tree); ++i) add_tree(hash, json_array_get(tree, i));
            break;
        case JSON_STRING:
            hash.add_text({json_string_value(tree), json_string_length(tree)});
            break;
        case JSON_INTEGER:
            hash.add_number(json_integer_value(tree));
            break;
        case JSON_REAL:
            hash.add_number(json_real_value(tree));
            break;
        default:
            break;
    }
}

}  // namespace

uint64_t fingerprint(const json_t* tree) {
    Hash hash;
    add_tree(hash, const_cast<json_t*>(tree));
    return hash.value();
}

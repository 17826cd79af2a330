// Copies, extent and equality of trees.
#include "k_conf_tree.h"

#include <bit>

namespace kcnvrt::conf {

namespace {

constexpr size_t kTextPerUnit = 64;

Json copy_of_object(json_t* object) {
    Json copy{json_object()};
    for (const auto& [name, value] : Members{object}) {
        if (!store(copy.get(), name, share(value))) return {};
    }
    return copy;
}

Json copy_of_array(json_t* array) {
    Json copy{json_array()};
    return json_array_extend(copy.get(), array) == 0 ? std::move(copy) : Json{};
}

uint64_t cost_of(json_t* value) {
    return 1 + json_string_length(value) / kTextPerUnit;
}

bool spend(uint64_t cost, uint64_t* left) {
    if (*left < cost) return false;
    *left -= cost;
    return true;
}

Extent measure_members(json_t* object, size_t levels, uint64_t* left) {
    for (const auto& [name, value] : Members{object}) {
        if (!spend(name.size() / kTextPerUnit, left)) return Extent::kTooLarge;
        if (const Extent extent = measure(value, levels, left); extent != Extent::kFits) return extent;
    }
    return Extent::kFits;
}

Extent measure_elements(json_t* array, size_t levels, uint64_t* left) {
    for (size_t i = 0; i < json_array_size(array); ++i) {
        if (const Extent extent = measure(json_array_get(array, i), levels, left); extent != Extent::kFits)
            return extent;
    }
    return Extent::kFits;
}

bool equal_members(json_t* a, json_t* b, Numbers numbers) {
    if (json_object_size(a) != json_object_size(b)) return false;
    for (const auto& [name, value] : Members{a}) {
        if (!equal_trees(value, member(b, name), numbers)) return false;
    }
    return true;
}

bool equal_elements(json_t* a, json_t* b, Numbers numbers) {
    if (json_array_size(a) != json_array_size(b)) return false;
    for (size_t i = 0; i < json_array_size(a); ++i) {
        if (!equal_trees(json_array_get(a, i), json_array_get(b, i), numbers)) return false;
    }
    return true;
}

// Exact also where a double cannot hold the integer.
bool equal_values(json_int_t integer, double real) {
    constexpr double kBeyond = 9223372036854775808.0;
    return real >= -kBeyond && real < kBeyond && static_cast<json_int_t>(real) == integer &&
           static_cast<double>(static_cast<json_int_t>(real)) == real;
}

bool equal_reals(double a, double b, Numbers numbers) {
    return numbers == Numbers::kExact ? std::bit_cast<uint64_t>(a) == std::bit_cast<uint64_t>(b) : a == b;
}

bool equal_mixed(json_t* a, json_t* b) {
    const json_type types[] = {json_typeof(a), json_typeof(b)};
    if (types[0] == JSON_INTEGER && types[1] == JSON_REAL)
        return equal_values(json_integer_value(a), json_real_value(b));
    if (types[0] == JSON_REAL && types[1] == JSON_INTEGER)
        return equal_values(json_integer_value(b), json_real_value(a));
    return false;
}

}  // namespace

Json shallow_copy(json_t* value) {
    if (is_object(value)) return copy_of_object(value);
    if (is_array(value)) return copy_of_array(value);
    return Json{json_copy(value)};
}

Extent measure(json_t* value, size_t levels, uint64_t* left) {
    if (!spend(cost_of(value), left)) return Extent::kTooLarge;
    if (!is_container(value)) return Extent::kFits;
    if (levels == 0) return Extent::kTooDeep;
    return is_object(value) ? measure_members(value, levels - 1, left) : measure_elements(value, levels - 1, left);
}

bool equal_leaves(json_t* a, json_t* b, Numbers numbers) {
    if (json_typeof(a) != json_typeof(b)) return numbers == Numbers::kByValue && equal_mixed(a, b);
    if (json_typeof(a) == JSON_STRING) return view_of(a) == view_of(b);
    if (json_typeof(a) == JSON_INTEGER) return json_integer_value(a) == json_integer_value(b);
    // The value of true, false and null, as a real, is 0 for each.
    return equal_reals(json_real_value(a), json_real_value(b), numbers);
}

bool equal_trees(json_t* a, json_t* b, Numbers numbers) {
    if (a == b) return true;
    if (b == nullptr) return false;
    if (is_object(a) && is_object(b)) return equal_members(a, b, numbers);
    if (is_array(a) && is_array(b)) return equal_elements(a, b, numbers);
    return equal_leaves(a, b, numbers);
}

}  // namespace kcnvrt::conf

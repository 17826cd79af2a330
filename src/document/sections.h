// sections.h: the two section tables, name by name.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "frame/container.h"
#include "frame/json.h"
#include "k_cnvrt.h"

namespace kcnvrt {

// djb2, as k_str_get_hash computes it at run time.
constexpr uint32_t hash_of(std::string_view name) {
    uint32_t hash = 5381;
    for (const char character : name) hash = hash * 33 + static_cast<unsigned char>(character);
    return hash;
}

// A row of the table of old sections: the handler builds the old section from the corresponding new one.
struct OldSection {
    Name name = "";
    k_cnvrt_handler_t handler = nullptr;
    Container container = Container::kObject;
    uint32_t hash = 0;
};

// A row of the table of new sections: every new section is an object.
struct NewSection {
    Name name = "";
    k_cnvrt_handler_t handler = nullptr;
    uint32_t hash = 0;
};

constexpr OldSection section(Name name, k_cnvrt_handler_t handler, Container container) {
    return {name, handler, container, hash_of(name.view())};
}
constexpr NewSection section(Name name, k_cnvrt_handler_t handler) {
    return {name, handler, hash_of(name.view())};
}

// Both tables end with an empty name.
extern const OldSection* const old_config_handler_table;
extern const NewSection* const new_config_handler_table;

// A new array that the handler fills, or a new object where it refuses the array; null where it refuses both.
Json array_or_object(k_cnvrt_handler_t handler, json_t* source, k_err_t* err);

// What has to change in `base`, made of whatever converted: what failed is in the record. Its own messages are about
// what the caller never sees, and have no place.
json_t* difference_to(json_t* base, json_t* converted, uint8_t flags, k_err_t* err);

// Finds the first row of that name that has a handler, or null.
template <class Section>
const Section* find_section(const Section* table, const char* name);

// The self-check of one table: every stored hash is that of its name, and no two names share one.
// 0, or -1 and one line on standard output that names the table.
template <class Section>
int check_hashes(const Section* table, const char* table_name);

}  // namespace kcnvrt

// One section converted by its name, and the self-check of the section tables.
#include <cstdio>
#include <cstdlib>

#include "document/sections.h"
#include "frame/json.h"
#include "frame/report.h"
#include "k_conf.h"
#include "k_str.h"
#include "shortage.h"

namespace kcnvrt {

template <class Section>
const Section* find_section(const Section* table, const char* name) {
    const uint32_t hash = k_str_get_hash(name);
    for (; !table->name.is_empty(); ++table)
        if (table->hash == hash && table->name.view() == name && table->handler != nullptr) return table;
    return nullptr;
}

namespace {

// The hashes met so far, growing by one a row: the tables are short and checked once in a life.
class HashList {
public:
    bool contains(uint32_t hash) const {
        for (size_t i = 0; i < count_; ++i)
            if (hashes_.get()[i] == hash) return true;
        return false;
    }

    bool append(uint32_t hash) {
        void* grown = noted(std::realloc(hashes_.get(), (count_ + 1) * sizeof(uint32_t)));
        if (grown == nullptr) return false;
        static_cast<void>(hashes_.release());
        hashes_.reset(static_cast<uint32_t*>(grown));
        hashes_.get()[count_++] = hash;
        return true;
    }

private:
    Allocated<uint32_t> hashes_;
    size_t count_ = 0;
};

// The container that was given, or null when the handler counts a failure.
Json fill(k_cnvrt_handler_t handler, json_t* source, Json container, k_err_t* err) {
    if (handler(source, container.get(), err) != 0) container.reset();
    return container;
}

}  // namespace

Json array_or_object(k_cnvrt_handler_t handler, json_t* source, k_err_t* err) {
    const size_t first = k_err_count(err);
    if (Json filled = fill(handler, source, array(), err)) return filled;
    Json filled = fill(handler, source, object(), err);
    // What the array was refused for is no failure of the object.
    if (filled != nullptr) k_err_leave_out(err, first);
    return filled;
}

json_t* difference_to(json_t* base, json_t* converted, uint8_t flags, k_err_t* err) {
    const size_t first = k_err_count(err);
    json_t* const difference = k_conf_diff_set2(base, converted, 0, flags & K_CNVRT_MERGE_PATCH, err);
    k_err_locate(err, first, nullptr);
    return difference;
}

template <class Section>
int check_hashes(const Section* table, const char* table_name) {
    HashList met;
    for (; !table->name.is_empty(); ++table) {
        const uint32_t hash = k_str_get_hash(table->name.text());
        if (met.contains(hash)) {
            std::printf("Duplicate hash found! Key - %s\n", table->name.text());
            return -1;
        }
        if (!met.append(hash)) {
            std::puts("Error reallocate!");
            return -1;
        }
        if (table->hash != hash) {
            std::printf("%s, name \"%s\" hash miss! Hash in struct - %u, generated hash - %u\n", table_name,
                        table->name.text(), table->hash, hash);
            return -1;
        }
    }
    return 0;
}

template const OldSection* find_section(const OldSection*, const char*);
template const NewSection* find_section(const NewSection*, const char*);
template int check_hashes(const OldSection*, const char*);
template int check_hashes(const NewSection*, const char*);

}  // namespace kcnvrt

using namespace kcnvrt;

json_t* k_cnvrt_get_section_to_old(const char* section_name, json_t* new_section, k_err_t* err) {
    const Report report{"k_cnvrt_get_section_to_old", err};
    const size_t first = k_err_count(err);
    const char* name = section_name == nullptr ? "" : section_name;
    if (new_section == nullptr) {
        report.fail("In object %s is null!", name);
        return nullptr;
    }
    const OldSection* section = find_section(old_config_handler_table, name);
    if (section == nullptr) {
        report.fail("Section \"%s\" in old config not found", name);
        return nullptr;
    }
    Json result;
    if (section->container == Container::kEither) {
        result = array_or_object(section->handler, new_section, err);
        if (result == nullptr) report.fail("JSON is not array or object!");
    } else {
        Json container = section->container == Container::kArray ? array() : object();
        result = fill(section->handler, new_section, std::move(container), err);
    }
    k_err_locate(err, first, new_section);
    return result.release();
}

json_t* k_cnvrt_get_section_to_new(const char* section_name, json_t* old_section, json_t* base, uint8_t flags,
                                   k_err_t* err) {
    const Report report{"k_cnvrt_get_section_to_new", err};
    const size_t first = k_err_count(err);
    const char* name = section_name == nullptr ? "" : section_name;
    if (old_section == nullptr) {
        report.fail("In object is null!");
        return nullptr;
    }
    const NewSection* section = find_section(new_config_handler_table, name);
    if (section == nullptr) {
        report.fail("Section \"%s\" in new config not found", name);
        return nullptr;
    }
    Json converted = object();
    const int failures = section->handler(old_section, converted.get(), err);
    k_err_locate(err, first, old_section);
    if (base != nullptr) return difference_to(base, converted.get(), flags, err);
    return failures == 0 ? converted.release() : nullptr;
}

const char* k_cnvrt_section_name(k_cnvrt_table_t table, size_t index) {
    const auto name_at = [index](const auto* row) -> const char* {
        for (size_t i = 0; i < index && !row->name.is_empty(); ++i) ++row;
        return row->name.is_empty() ? nullptr : row->name.text();
    };
    return table == K_CNVRT_OLD_SECTIONS ? name_at(old_config_handler_table) : name_at(new_config_handler_table);
}

int k_cnvrt_check_valid_hashes(void) {
    if (check_hashes(old_config_handler_table, "old_config_handler_table") != 0) return -1;
    return check_hashes(new_config_handler_table, "new_config_handler_table");
}

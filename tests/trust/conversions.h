// conversions.h: every way to call the library on a configuration, with something to convert.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "k_err.h"
#include "tree.h"

struct Conversion {
    std::string name;
    Tree source;
    std::function<json_t*(json_t* source, k_err_t* err)> run;
    json_t* root = source.get();  // the configuration or section in the source
    bool has_base = false;
};

// Both whole-document conversions of the two documents, with each flag and with a base, and every section by its name.
std::vector<Conversion> conversions_of(const json_t* old_document, const json_t* new_document);

// The source of a section in the other layout's document; null when there is none.
json_t* source_of_old_section(const std::string& name, const json_t* new_document);
json_t* source_of_new_section(const std::string& name, const json_t* old_document);

// A member of members; null when there is none. The path's names are separated by "/".
json_t* member_at(const json_t* document, const std::string& path);

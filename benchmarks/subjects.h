// subjects.h: the conversions that are measured.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "frame/json.h"
#include "outer_lists.h"

namespace kcnvrt::bench {

// A whole configuration of the example home, grown; with the groups of a device with DSL VLANs in the old layout.
Json configuration(Layout layout, unsigned scale);

// One conversion: of a whole configuration, or of one section by name. Borrows its source.
struct Subject {
    std::string label;  // "whole to-new 10 flags 1", "Ifaces to-new 10"
    Layout from;
    unsigned scale;
    uint8_t flags;
    const char* section;  // null: the whole configuration
    json_t* source;

    // Ends the program when the conversion fails or has a message: such a figure would mean nothing.
    Json convert() const;
};

// The configurations of every scale, and every conversion of them: each direction, flags 0 and 1, and each section by
// name at one scale.
class Subjects {
public:
    explicit Subjects(unsigned largest_scale);

    std::vector<Subject>::const_iterator begin() const { return subjects_.begin(); }
    std::vector<Subject>::const_iterator end() const { return subjects_.end(); }

private:
    void add_configuration(Layout from, unsigned scale);
    void add_sections(Layout from, json_t* root, unsigned scale);

    std::vector<Json> roots_;
    std::vector<Subject> subjects_;
};

// How many values a tree holds.
size_t count_nodes(json_t* value);

}  // namespace kcnvrt::bench

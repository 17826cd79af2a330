// section_source.h: where in a whole configuration the sections are that can be converted alone.
#pragma once

#include <jansson.h>

#include "basis/buffer.h"

namespace kcnvrt::text {

// Whether a configuration of the layout that a direction reads could look like this, and hardly a section of it:
// towards old one with an object "Device", towards new one with at least two objects or arrays under the names of
// sections.
bool is_whole_configuration(uint32_t direction, const json_t* text);

// Whether a direction makes a section of that name.
bool is_section(uint32_t direction, std::string_view name);

// Where the source of a section stands.
struct SectionSource {
    json_t* value = nullptr;  // borrowed; null where the configuration does not have it
    bool is_all = false;      // the section is made of the configuration as a whole
};

// `place` gets the JSON Pointer of the source, or of where it would be. False when memory ends.
bool find_section_source(uint32_t direction, const char* section, json_t* configuration, Buffer& place,
                         SectionSource& source);

}  // namespace kcnvrt::text

// subject.h: what of a text is converted, and where it stands.
#pragma once

#include <jansson.h>

#include "result.h"

namespace kcnvrt::text {

// The library knows the tree only: its pointers begin there.
struct Subject {
    json_t* tree;
    const char* place = "";  // the tree's pointer in the text
};

// A pointer into the tree, which may be null, as one into the text. False when memory ends.
bool pointer_in_text(const Subject& subject, const char* pointer, KeptTexts& texts, const char*& in_text);

// The section that a request names, where the text is a whole configuration and the section can be taken out of it: a
// note says so. Whatever speaks against it ends the request; places are left to be found.
Subject take_out_section(const k_text_request_t& request, uint32_t direction, json_t* text, const json_t* base,
                         k_text_result_t& result);

}  // namespace kcnvrt::text

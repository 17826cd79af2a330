// layout.h: which layout a text is of, and what is refused for it.
#pragma once

#include <jansson.h>

#include "result.h"

namespace kcnvrt::text {

// Which way a whole configuration goes: K_TEXT_TO_NEW or K_TEXT_TO_OLD.
uint32_t direction_of(uint32_t flags, const json_t* configuration);

// The flags for an old configuration whose caller leaves it to us to see how the device ties its VLANs.
uint32_t with_dsl_flag(uint32_t flags, const json_t* configuration);

// What a whole configuration is asked for, and the base of the answer, which may be null.
struct Whole {
    uint32_t direction;
    uint32_t flags;
    const json_t* text;
    const json_t* base;
};

// Ends the request when a text is of another layout than the direction reads; their places are left to be found.
void refuse_wrong_layout(const Whole& whole, k_text_result_t& result);

}  // namespace kcnvrt::text

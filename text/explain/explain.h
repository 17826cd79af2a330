// explain.h: what becomes of a member, and what a place of the result is made of.
#pragma once

#include "source.h"

namespace kcnvrt::text {

// A request to explain a pointer.
struct ExplainQuestion {
    const Source& text;
    json_t* root;                     // the tree of the text
    const k_text_request_t& request;  // with its direction
};

// The answer as JSON. Null, with the reason in the result, when there is none.
Json explain(const ExplainQuestion& question, k_text_result_t& result);

}  // namespace kcnvrt::text

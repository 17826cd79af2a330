// loss_request.h: what a request asks about losses.
#pragma once

#include "source.h"

namespace kcnvrt::text {

bool asks_for_losses(const k_text_request_t& request);
bool has_output(uint32_t operation);

// A request that asks for losses.
struct LossQuestion {
    const Source& text;
    json_t* root;                     // the tree of the text
    uint32_t operation;               // as it was asked
    const k_text_request_t& request;  // with its direction
};

// Finds the losses of a text, whose problems are known, and settles the status: whether it can be answered, and whether
// what was found is to reject the text.
void tell_losses(const LossQuestion& question, k_text_result_t& result);

}  // namespace kcnvrt::text

// request.h: what a request may ask.
#pragma once

#include <k_cnvrt_text.h>

namespace kcnvrt::text {

// Whether an operation takes a member of a request.
enum class Takes : uint8_t { kNone, kMaybe, kNeeded };

struct Allowed {
    uint32_t flags;                // whatever else the request has
    uint32_t flags_with_other;     // only together with a second text
    uint32_t flags_without_other;  // only where there is none
    Takes section;
    Takes other;
    Takes pointer = Takes::kNone;
};

// Copies a request, whose own size says which members it has. Why it makes no sense, null when it does.
const char* copy_request(const k_text_request_t* given, k_text_request_t& request);

// Why a request of an operation makes no sense, null when it does.
const char* check_request(const k_text_request_t& request, const Allowed& allowed);

}  // namespace kcnvrt::text

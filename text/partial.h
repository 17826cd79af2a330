// partial.h: what can be converted of a document that is rejected.
#pragma once

#include "growing_array.h"
#include "origins.h"
#include "owned.h"
#include "result.h"
#include "subject.h"

namespace kcnvrt::text {

// Converts a tree, as often as it is asked to.
struct Conversion {
    json_t* (*convert)(const void* context, json_t* tree, k_err_t* record);
    const void* context;
};

// A member or an element that was taken out of a document.
struct TakenOut {
    const char* pointer;  // into the subject as it was
    const char* why;      // the message that asked for it, null where it is one of the document itself
};

// What came of it: a tree, or null when nothing was left to take out, or memory ended.
struct Part {
    Json converted;
    GrowingArray<TakenOut> taken_out;
    Origins origins;  // of what is left
    bool has_memory = true;
};

// Takes out of the subject what the counted messages of `record` point to, which tell why it was rejected, converts
// what is left, and goes on so until that passes. Texts are kept in `texts`.
void convert_part(const Conversion& conversion, const Subject& subject, const k_err_t* record, bool shows_secrets,
                  KeptTexts& texts, Part& part);

}  // namespace kcnvrt::text

// messages.h: the library's messages as problems.
#pragma once

#include "partial.h"
#include "source.h"
#include "subject.h"

namespace kcnvrt::text {

// A message as it is shown: without a line break at its end, and without a secret of the subject that it is about,
// unless those are shown. Null when memory ends.
const char* message_of(const k_err_t* record, size_t index, const Subject& subject, bool shows_secrets,
                       KeptTexts& texts);

// One problem for each line that the result's record kept, and one for each message, with its place in the source.
// `printer` is the pointer of what prints lines.
void add_messages(const Source& source, const Subject& subject, const char* printer, k_text_result_t& result);

// One note for each place that was taken out of the subject, or one that nothing is left.
void add_notes(const Source& source, const Subject& subject, const Part& part, k_text_result_t& result);

}  // namespace kcnvrt::text

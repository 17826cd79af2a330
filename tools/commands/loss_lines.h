// Losses in words.
#pragma once

#include "print/messages.h"

namespace kcnvrt {

// "dropped", ...
const char* loss_kind_name(uint32_t kind);

// Each loss of a result as a line of text, in the form of a warning.
void append_losses(std::string& lines, const k_text_result_t* result, std::string_view file, bool has_colors);

// Each as a JSON object.
void append_json_losses(std::string& lines, const k_text_result_t* result, std::string_view file);

// Each as a warning, beside a result.
void print_losses(const k_text_result_t* result, std::string_view file, const Messages& messages);

}  // namespace kcnvrt

// What a run came to, in the end.
#pragma once

#include <string>

#include "census/report.h"

namespace kcnvrt {

enum class SummaryFormat { kNone, kText, kJson };

// With the places of what was lost where `has_losses`.
std::string summary_of(const Report& report, SummaryFormat format, bool has_losses);

}  // namespace kcnvrt

// What a run came to, in the end.
#pragma once

#include <string>

#include "census/report.h"
#include "subject.h"

namespace kcnvrt {

enum class SummaryFormat { kNone, kText, kJson };

// With the places of what was lost where losses were looked for.
std::string summary_of(const Report& report, SummaryFormat format, const Subject& subject);

}  // namespace kcnvrt

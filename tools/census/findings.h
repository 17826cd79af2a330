// What of a result counts in a census.
#pragma once

#include <k_cnvrt_text.h>

#include <string>
#include <vector>

#include "census.h"

namespace kcnvrt {

// Adds each kind and place that the result tells of, once, with the id of the device.
void add_findings(const k_text_result_t* result, const std::string& id, std::vector<Finding>& findings);

}  // namespace kcnvrt

// joint_losses.h: losses that bring several places together, because the other layout keeps one value for them.
#pragma once

#include <string>

#include "rows.h"

// Changes the document as the row says, and returns how many values changed.
using JointLoss = size_t (*)(const Row& row, json_t* document);

// Null when the name is that of no such loss.
JointLoss joint_loss(const std::string& name);

// check.h: compares what a case expects with what its function does.
#pragma once

#include "case.h"

// Runs the case; every deviation is a GoogleTest failure at the case's place in its file.
void check(const Case& tested);

// print.h: what a case observes, as text that is the same on every machine.
#pragma once

#include "case.h"

// Calls the function of a case, and writes to standard output everything a caller can observe of it.
void print_outcome(const Case& tested);

// damages.h: what is put in the place of a value to see what is said of it.
#pragma once

#include <vector>

#include "tree.h"

// Values of every type, of which most places take some and report others.
std::vector<Tree> damages();

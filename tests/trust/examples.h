// examples.h: the example configurations as trees of their own.
#pragma once

#include "tree.h"

Tree old_example();
Tree new_example();

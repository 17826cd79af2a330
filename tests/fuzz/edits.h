// edits.h: small changes anywhere in a tree.
#pragma once

#include "bytes.h"
#include "tree.h"

// Members and elements come, go and change, as the bytes say.
void edit(Tree& tree, Bytes& bytes);

// growth.h: sources that grow from what the library asks for.
#pragma once

#include "bytes.h"
#include "lookups.h"

// Lets the source grow round by round: a trial tells which members are asked for, and the bytes say which of them come
// to be, or become something else, and as what. Ends with the bytes.
void grow(json_t* source, Bytes& bytes, const Trial& trial);

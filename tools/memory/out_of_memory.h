// The end of a run for which there is no memory. It asks for none.
#pragma once

#include "print/messages.h"

namespace kcnvrt {

void print_out_of_memory(ErrorFormat format);

// The C++ library gives up where it has not even memory for an exception: the process then ends with a message and the
// status of a file that cannot be used, and leaves nothing behind.
void end_well_without_exceptions();

}  // namespace kcnvrt

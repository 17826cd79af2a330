// The memory of this thread's trees, taken back as a whole.
#pragma once

namespace kcnvrt {

// For when there are no trees any more.
void give_back_trees();

// The same where they have taken much: the memory goes to the system, since the next large document may be another
// thread's.
void give_back_large_trees();

}  // namespace kcnvrt

/* What the environment wants done to calls, and the record of them. */
#ifndef SHIM_RULES_H
#define SHIM_RULES_H

#include <stdbool.h>
#include <stddef.h>

/* Carries out the rules that fit the call, which may end the process. True where the call is not to be made, with errno
 * set. `other` is the second path of a call that has two, or ""; `size` is cut where fewer bytes are to be moved, and
 * may be null. */
bool shim_refuses(const char* kind, const char* path, const char* other, size_t* size);

/* Adds the call to the record, where one is wanted. Gives back the result, and leaves errno as it is. */
long shim_record(long result, const char* format, ...) __attribute__((format(printf, 2, 3)));

#endif

// The dynamic linker is asked, which knows the functions of the executable, too.
#include "symbol.h"

#include <dlfcn.h>

void* address_of(const char* name) {
    return dlsym(RTLD_DEFAULT, name);
}

/* Where malloc gets its memory from. The C library's sbrk grows the module's memory by a page at a time, and with each
 * page a browser or Node looks again for what its own heap could release, which can take most of the time. This one
 * grows it by a quarter, so that it happens a few times in all. */
#include <errno.h>
#include <stddef.h>
#include <stdint.h>

enum { kPage = 65536 };

static size_t pages(void) {
    return __builtin_wasm_memory_size(0);
}

/* By so many pages; the memory is left as it is where it would exceed its limit. */
static int grow(size_t count) {
    return __builtin_wasm_memory_grow(0, count) != SIZE_MAX;
}

/* malloc asks for whole pages, and gives none back. */
void* sbrk(intptr_t increment) {
    static size_t used;
    if (used == 0) used = pages();
    const size_t first = used;
    const size_t wanted = first + (size_t)increment / kPage;
    if (wanted > pages() && !grow(wanted - pages() + pages() / 4) && !grow(wanted - pages())) {
        errno = ENOMEM;
        return (void*)-1;
    }
    used = wanted;
    return (void*)(first * kPage);
}

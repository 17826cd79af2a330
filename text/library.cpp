// What the library can tell without converting anything: of itself, and of a text.
#include <k_cnvrt.h>
#include <k_cnvrt_text.h>

#include "json/position.h"

const char* k_text_section(uint32_t list, size_t index) {
    if (list == K_TEXT_OLD_SECTIONS) return k_cnvrt_section_name(K_CNVRT_OLD_SECTIONS, index);
    if (list == K_TEXT_NEW_SECTIONS) return k_cnvrt_section_name(K_CNVRT_NEW_SECTIONS, index);
    return nullptr;
}

int k_text_find(const char* text, size_t length, const char* pointer, size_t* offset, size_t* value_length) {
    kcnvrt::text::Sought sought;
    sought.pointer = pointer;
    const bool has_memory = kcnvrt::text::find_values({text, length}, &sought, 1);
    *offset = sought.spot.offset;
    *value_length = sought.length;
    return has_memory ? sought.spot.line != 0 : -1;
}

const char* k_text_version() {
    return K_CNVRT_VERSION;
}

// What the library can tell about itself.
#include <k_cnvrt.h>
#include <k_cnvrt_text.h>

const char* k_text_section(uint32_t list, size_t index) {
    if (list == K_TEXT_OLD_SECTIONS) return k_cnvrt_section_name(K_CNVRT_OLD_SECTIONS, index);
    if (list == K_TEXT_NEW_SECTIONS) return k_cnvrt_section_name(K_CNVRT_NEW_SECTIONS, index);
    return nullptr;
}

const char* k_text_version() {
    return K_CNVRT_VERSION;
}

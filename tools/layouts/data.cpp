// text/layouts.json as it stands, in the pages of the program that nobody reads until they are asked for.
#include "data.h"

__asm__(
    ".section .rodata\n"
    ".global kcnvrt_layouts\n"
    ".global kcnvrt_layouts_end\n"
    "kcnvrt_layouts:\n"
    ".incbin \"" KCNVRT_LAYOUTS
    "\"\n"
    "kcnvrt_layouts_end:\n"
    ".byte 0\n"
    ".previous\n");

extern "C" const char kcnvrt_layouts[];
extern "C" const char kcnvrt_layouts_end[];

namespace kcnvrt {

std::string_view layouts_text() {
    return {kcnvrt_layouts, static_cast<std::size_t>(kcnvrt_layouts_end - kcnvrt_layouts)};
}

}  // namespace kcnvrt

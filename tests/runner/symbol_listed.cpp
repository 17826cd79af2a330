// Where nothing knows functions by their names any more, a list of the exported ones is compiled in.
#include "symbol.h"

#include <cstring>

#include "k_addr.h"
#include "k_cnvrt.h"
#include "k_conf.h"
#include "k_err.h"
#include "k_str.h"
#include "k_tr.h"

namespace {

struct Exported {
    const char* name;
    void* address;
};

#define EXPORTED(name) {#name, reinterpret_cast<void*>(&name)},
const Exported kExported[] = {
#include "exported.inc"
};
#undef EXPORTED

}  // namespace

void* address_of(const char* name) {
    for (const Exported& each : kExported)
        if (std::strcmp(each.name, name) == 0) return each.address;
    return nullptr;
}

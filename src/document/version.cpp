// The version of the library that runs.
#include "k_cnvrt.h"

const char* k_cnvrt_version() {
    return K_CNVRT_VERSION;
}

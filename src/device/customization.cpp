// The operator's customization block, carried as it stands.
#include "frame/json.h"
#include "k_cnvrt.h"

using namespace kcnvrt;

int k_cnvrt_get_customs_from_new(json_t* source, json_t* old_root, k_err_t*) {
    carry(old_root, "maplemekra", get(source, "maplemekra"));
    return 0;
}

int k_cnvrt_get_customs_from_old(json_t* old_root, json_t* destination, k_err_t*) {
    carry(destination, "maplemekra", get(old_root, "maplemekra"));
    return 0;
}

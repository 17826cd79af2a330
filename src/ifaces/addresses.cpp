// How a plain address becomes the first entry of a list.
#include "ifaces/addresses.h"

namespace kcnvrt::ways {

namespace {

json_t* make_list(json_t* destination, Key name) {
    ListBuilder list;
    list.add(object());
    set(destination, name, list.finish());
    return get(destination, name);
}

}  // namespace

int address_to_new(json_t* destination, Key list_name, Key member, json_t* value) {
    if (value == nullptr) return 0;
    json_t* list = get(destination, list_name);
    if (list == nullptr) list = make_list(destination, list_name);
    kcnvrt::carry(entry_at(list, 1), member, value);
    return 0;
}

}  // namespace kcnvrt::ways

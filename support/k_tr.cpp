// Keys of TR-069 instance objects.
#include "k_tr.h"

#include <cstring>

int k_tr_str_is_instance(const char* key) {
    if (key == nullptr || key[0] < '1' || key[0] > '9') return 0;
    return key[strspn(key, "0123456789")] == '\0';
}

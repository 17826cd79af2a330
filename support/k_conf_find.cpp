// A value by the dotted path of its names.
#include <cstring>

#include "k_conf.h"

// Every dot ends a name, and the last name may go without: that is all a trailing dot means.
json_t* k_conf_find_branch(json_t* root, const char* path, int) {
    if (path == nullptr) return nullptr;
    json_t* found = root;
    while (found != nullptr && *path != '\0') {
        const size_t length = strcspn(path, ".");
        found = json_object_getn(found, path, length);
        path += length;
        if (*path == '.') ++path;
    }
    return found;
}

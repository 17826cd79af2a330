// Paths are followed name by name.
#include "value_at.h"

#include <algorithm>
#include <cstdlib>

json_t* value_at(json_t* value, const std::string& path) {
    for (size_t at = 0; at < path.size();) {
        const size_t end = std::min(path.find('/', at), path.size());
        const std::string name = path.substr(at, end - at);
        value = json_is_array(value) ? json_array_get(value, std::strtoul(name.c_str(), nullptr, 10))
                                     : json_object_get(value, name.c_str());
        at = end + 1;
    }
    return value;
}

json_t* object_at(json_t* object, const std::string& path) {
    if (path.empty()) return object;
    const size_t end = std::min(path.find('/'), path.size());
    const std::string name = path.substr(0, end);
    if (json_object_get(object, name.c_str()) == nullptr) json_object_set_new(object, name.c_str(), json_object());
    json_t* inner = json_object_get(object, name.c_str());
    return end == path.size() ? inner : object_at(inner, path.substr(end + 1));
}

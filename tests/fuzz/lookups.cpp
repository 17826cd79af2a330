// The look-ups of the library, heard by way of the linker while a source is converted.
#include "lookups.h"

#include <cstring>
#include <string_view>
#include <unordered_set>

namespace {

// Hears the look-ups while it lives.
class Listener {
public:
    explicit Listener(json_t* source) {
        add_containers(source);
        current = this;
    }
    ~Listener() { current = nullptr; }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    static inline Listener* current = nullptr;
    Lookups lookups;

    void hear_member(const json_t* object, std::string_view name) {
        if (is_new(object, "." + std::string{name}))
            lookups.members.push_back({const_cast<json_t*>(object), std::string{name}});
    }

    void hear_walk(const json_t* container) {
        if (is_new(container, "")) lookups.walked.push_back(const_cast<json_t*>(container));
    }

private:
    // Of the source, that is; results are looked into as well.
    bool is_new(const json_t* container, const std::string& what) {
        if (!containers_.contains(container)) return false;
        std::string lookup(sizeof container, '\0');
        std::memcpy(lookup.data(), &container, sizeof container);
        return heard_.insert(lookup + what).second;
    }

    void add_containers(json_t* tree) {
        if (json_is_object(tree) || json_is_array(tree)) containers_.insert(tree);
        for (void* at = json_object_iter(tree); at != nullptr; at = json_object_iter_next(tree, at))
            add_containers(json_object_iter_value(at));
        for (size_t i = 0; i < json_array_size(tree); ++i) add_containers(json_array_get(tree, i));
    }

    std::unordered_set<const json_t*> containers_;
    std::unordered_set<std::string> heard_;
};

}  // namespace

Lookups lookups_of(json_t* source, const Trial& trial) {
    Listener listener{source};
    trial(source);
    return std::move(listener.lookups);
}

// Where the linker leads the look-ups to.
extern "C" {

json_t* __real_json_object_get(const json_t* object, const char* name);
json_t* __real_json_object_getn(const json_t* object, const char* name, size_t length);
void* __real_json_object_iter(json_t* object);
size_t __real_json_array_size(const json_t* array);

json_t* __wrap_json_object_get(const json_t* object, const char* name);
json_t* __wrap_json_object_getn(const json_t* object, const char* name, size_t length);
void* __wrap_json_object_iter(json_t* object);
size_t __wrap_json_array_size(const json_t* array);

json_t* __wrap_json_object_get(const json_t* object, const char* name) {
    if (Listener::current != nullptr && name != nullptr) Listener::current->hear_member(object, name);
    return __real_json_object_get(object, name);
}

json_t* __wrap_json_object_getn(const json_t* object, const char* name, size_t length) {
    if (Listener::current != nullptr && name != nullptr) Listener::current->hear_member(object, {name, length});
    return __real_json_object_getn(object, name, length);
}

void* __wrap_json_object_iter(json_t* object) {
    if (Listener::current != nullptr) Listener::current->hear_walk(object);
    return __real_json_object_iter(object);
}

size_t __wrap_json_array_size(const json_t* array) {
    if (Listener::current != nullptr) Listener::current->hear_walk(array);
    return __real_json_array_size(array);
}
}

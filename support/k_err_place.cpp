// Which place a message has, and the text of a JSON Pointer to it.
#include <cstring>

#include "k_conf_pointer.h"
#include "k_err_record.h"

using namespace kcnvrt;

namespace {

bool is_container(const json_t* value) {
    return json_is_object(value) || json_is_array(value);
}

// A pointer is a text, and ends where a name holds a NUL.
bool has_nul(const k_err_t* err, NameAt name) {
    return name.length > 0 && memchr(err->names.data() + name.start, '\0', name.length) != nullptr;
}

bool is_escaped(char character) {
    return character == '~' || character == '/';
}

size_t escaped_length(const k_err_t* err, NameAt name) {
    size_t length = name.length;
    for (size_t i = 0; i < name.length; ++i) length += is_escaped(err->names[name.start + i]);
    return length;
}

// Writes "/name" so that it ends at `end`; where it starts.
char* write_before(char* end, const k_err_t* err, NameAt name) {
    for (size_t i = name.length; i-- > 0;) {
        const char character = err->names[name.start + i];
        *--end = is_escaped(character) ? (character == '~' ? '0' : '1') : character;
        if (is_escaped(character)) *--end = '~';
    }
    *--end = '/';
    return end;
}

// The names of a pointer, from the last to the first.
class Steps {
public:
    Steps(const k_err_t* err, const Place& place) : err_{err}, name_{place.name}, node_{place.node} {
        if (name_.start == kNone) up();
    }

    bool at_root() const { return name_.start == kNone; }
    NameAt name() const { return name_; }
    // Not beyond the root, whose node is the one without a name.
    void up() {
        const Node& node = err_->nodes[node_];
        name_ = node.name;
        node_ = node.parent;
    }

private:
    const k_err_t* err_;
    NameAt name_;
    size_t node_;
};

// Of the part that a text can hold.
struct Extent {
    Steps last;
    size_t length;
};

Extent extent_of(const k_err_t* err, const Place& place) {
    Extent extent{{err, place}, 0};
    for (Steps steps = extent.last; !steps.at_root();) {
        const NameAt name = steps.name();
        steps.up();
        if (has_nul(err, name))
            extent = {steps, 0};
        else
            extent.length += 1 + escaped_length(err, name);
    }
    return extent;
}

char* pointer_to(const k_err_t* err, const Place& place) {
    const Extent extent = extent_of(err, place);
    auto* pointer = static_cast<char*>(noted(malloc(extent.length + 1)));
    if (pointer == nullptr) return nullptr;
    char* start = pointer + extent.length;
    *start = '\0';
    for (Steps steps = extent.last; !steps.at_root(); steps.up()) start = write_before(start, err, steps.name());
    return pointer;
}

}  // namespace

bool k_err::add_name(const char* name, size_t length, NameAt& added) {
    if (name == nullptr) {
        added = {};
        return true;
    }
    added = {names.size(), length};
    return names.add_all(name, length);
}

void k_err_place(k_err_t* err, const json_t* object, const char* name, size_t length) {
    if (err == nullptr || err->settled >= k_err_count(err) || !is_container(object)) return;
    // A member that is missing is told by the object that lacks it.
    if (name != nullptr && conf::child(const_cast<json_t*>(object), {name, length}) == nullptr) name = nullptr;
    Place place{object, {}, kNone};
    const bool is_added = err->add_name(name, length, place.name) && err->places.add(place);
    const size_t index = is_added ? err->places.size() - 1 : kNone;
    while (err->settled < k_err_count(err)) err->messages[err->settled++]->place = index;
}

void k_err_place_from(k_err_t* err, size_t first, const json_t* object, const char* name, size_t length) {
    if (err == nullptr || first >= k_err_count(err)) return;
    for (size_t i = first; i < err->settled; ++i) err->messages[i]->place = kNone;
    if (err->settled > first) err->settled = first;
    k_err_place(err, object, name, length);
}

const char* k_err_pointer(const k_err_t* err, size_t index) {
    if (index >= k_err_count(err)) return nullptr;
    Message* message = err->messages[index];
    if (message->pointer == nullptr && message->place != kNone) {
        const Place& place = err->places[message->place];
        if (place.node != kNone) message->pointer = pointer_to(err, place);
    }
    return message->pointer;
}

// A JSON Patch, carried out operation by operation.
#include "k_conf_patch.h"
#include "k_conf_pointer.h"

namespace kcnvrt::conf {

namespace {

// What "copy" and "move" may carry besides the values in the patch itself. Copies are shared, not made, so that a few
// operations could otherwise describe more than any memory holds.
constexpr uint64_t kMaxCarried = 1 << 20;

// The index that a name is known to be.
size_t index_of(std::string_view name) {
    size_t index = 0;
    read_index(name, &index);
    return index;
}

// A document that is changed in place. It shares with the base, and with the patch, whatever no operation goes through:
// a container that something else refers to as well is copied, one level deep, before it is changed.
class Document {
public:
    Document(json_t* base, uint64_t may_carry) : root_{shallow_copy(base)}, may_carry_{may_carry} {}

    json_t* find(const Pointer& at) const;
    Problem add(const Pointer& at, Json value);
    Problem replace(const Pointer& at, Json value);
    Problem remove(const Pointer& at);

    json_t* root() const { return root_.get(); }
    Json release() { return std::move(root_); }

private:
    Problem measure_at(const Pointer& at, json_t* value);
    Problem own_parent(const Pointer& at, json_t** parent);
    static json_t* own_child(json_t* parent, std::string_view name, json_t* value);
    static bool set(json_t* container, std::string_view name, Json value);
    static void erase(json_t* container, std::string_view name);

    Json root_;
    uint64_t may_carry_;
};

json_t* Document::find(const Pointer& at) const {
    json_t* found = root();
    for (size_t i = 0; found != nullptr && i < at.size(); ++i) found = child(found, at.name(i));
    return found;
}

// The document never nests deeper than the walks over it can go.
Problem Document::measure_at(const Pointer& at, json_t* value) {
    if (at.size() > kMaxLevels) return problem::kTooDeep;
    const Extent extent = measure(value, kMaxLevels - at.size(), &may_carry_);
    if (extent == Extent::kTooDeep) return problem::kTooDeep;
    return extent == Extent::kTooLarge ? problem::kTooLarge : nullptr;
}

// Replaces what a container has under a name that is there.
bool Document::set(json_t* container, std::string_view name, Json value) {
    if (is_object(container)) return store(container, name, std::move(value));
    return json_array_set_new(container, index_of(name), value.release()) == 0;
}

// Removes what a container has under a name that is there.
void Document::erase(json_t* container, std::string_view name) {
    if (is_object(container)) {
        json_object_deln(container, name.data(), name.size());
    } else {
        json_array_remove(container, index_of(name));
    }
}

json_t* Document::own_child(json_t* parent, std::string_view name, json_t* value) {
    if (!is_container(value) || value->refcount == 1) return value;
    Json copy = shallow_copy(value);
    json_t* owned = copy.get();
    return owned != nullptr && set(parent, name, std::move(copy)) ? owned : nullptr;
}

// The container that holds, or will hold, what `at` leads to, with nothing on the way to it shared.
Problem Document::own_parent(const Pointer& at, json_t** parent) {
    if (is_container(root()) && root()->refcount != 1) root_ = shallow_copy(root());
    json_t* owned = root();
    for (size_t i = 0; owned != nullptr && i + 1 < at.size(); ++i) {
        json_t* next = child(owned, at.name(i));
        if (next == nullptr) return problem::kNowhere;
        owned = own_child(owned, at.name(i), next);
    }
    *parent = owned;
    return owned == nullptr ? problem::kNoMemory : nullptr;
}

Problem Document::add(const Pointer& at, Json value) {
    if (Problem found = measure_at(at, value.get())) return found;
    if (at.size() == 0) {
        root_ = shallow_copy(value.get());
        return root_ == nullptr ? problem::kNoMemory : nullptr;
    }
    json_t* parent = nullptr;
    if (Problem found = own_parent(at, &parent)) return found;
    if (is_object(parent)) return store(parent, at.last(), std::move(value)) ? nullptr : problem::kNoMemory;

    size_t index = json_array_size(parent);
    const bool named = at.last() == "-" || read_index(at.last(), &index);
    if (!is_array(parent) || !named || index > json_array_size(parent)) return problem::kNowhere;
    return json_array_insert_new(parent, index, value.release()) == 0 ? nullptr : problem::kNoMemory;
}

Problem Document::replace(const Pointer& at, Json value) {
    if (at.size() == 0) return add(at, std::move(value));
    if (Problem found = measure_at(at, value.get())) return found;
    json_t* parent = nullptr;
    if (Problem found = own_parent(at, &parent)) return found;
    if (child(parent, at.last()) == nullptr) return problem::kNowhere;
    return set(parent, at.last(), std::move(value)) ? nullptr : problem::kNoMemory;
}

Problem Document::remove(const Pointer& at) {
    if (at.size() == 0) return problem::kNoDocument;
    json_t* parent = nullptr;
    if (Problem found = own_parent(at, &parent)) return found;
    if (child(parent, at.last()) == nullptr) return problem::kNowhere;
    erase(parent, at.last());
    return nullptr;
}

struct Operation {
    json_t* value = nullptr;
    Pointer path;
    Pointer from;
};

Problem run_add(Document& document, const Operation& operation) {
    return document.add(operation.path, share(operation.value));
}

Problem run_remove(Document& document, const Operation& operation) {
    return document.remove(operation.path);
}

Problem run_replace(Document& document, const Operation& operation) {
    return document.replace(operation.path, share(operation.value));
}

// The value is held while the document changes: where it is copied into itself, its own old state goes in.
Problem run_copy(Document& document, const Operation& operation) {
    Json value = share(document.find(operation.from));
    return value == nullptr ? problem::kNothingToTake : document.add(operation.path, std::move(value));
}

Problem run_move(Document& document, const Operation& operation) {
    if (operation.path.is_inside(operation.from)) return problem::kIntoItself;
    Json value = share(document.find(operation.from));
    if (value == nullptr) return problem::kNothingToTake;
    // Only the document itself can be moved from its own place, onto itself.
    if (operation.from.size() == 0) return nullptr;
    if (Problem found = document.remove(operation.from)) return found;
    return document.add(operation.path, std::move(value));
}

Problem run_test(Document& document, const Operation& operation) {
    json_t* tested = document.find(operation.path);
    if (tested == nullptr) return problem::kNowhere;
    return equal_trees(tested, operation.value, Numbers::kByValue) ? nullptr : problem::kTestFailed;
}

struct Verb {
    std::string_view name;
    bool has_value;
    bool has_from;
    Problem (*run)(Document&, const Operation&);
};

// clang-format off
constexpr Verb kVerbs[] = {
    // "op"      value  from   what it does
    {"add",      true,  false, run_add},
    {"remove",   false, false, run_remove},
    {"replace",  true,  false, run_replace},
    {"move",     false, true,  run_move},
    {"copy",     false, true,  run_copy},
    {"test",     true,  false, run_test},
};
// clang-format on

const Verb* find_verb(std::string_view name) {
    for (const Verb& verb : kVerbs) {
        if (verb.name == name) return &verb;
    }
    return nullptr;
}

Problem run(Document& document, json_t* written) {
    if (!is_object(written)) return problem::kNoOperation;
    const Verb* verb = find_verb(view_of(json_object_get(written, "op")));
    if (verb == nullptr) return problem::kUnknownOperation;

    Operation operation;
    json_t* path = json_object_get(written, "path");
    json_t* from = json_object_get(written, "from");
    operation.value = json_object_get(written, "value");
    if (!json_is_string(path)) return problem::kNoPath;
    if (verb->has_from && !json_is_string(from)) return problem::kNoFrom;
    if (verb->has_value && operation.value == nullptr) return problem::kNoValue;
    if (Problem found = operation.path.read(view_of(path))) return found;
    if (Problem found = verb->has_from ? operation.from.read(view_of(from)) : nullptr) return found;
    return verb->run(document, operation);
}

const char* path_of(json_t* written) {
    const char* path = json_string_value(json_object_get(written, "path"));
    return path == nullptr ? "" : path;
}

}  // namespace

Json apply_patch(json_t* base, json_t* patch, uint64_t cost, Misfit* misfit) {
    Document document{base, cost + kMaxCarried};
    if (document.root() == nullptr) return {};
    for (size_t i = 0; i < json_array_size(patch); ++i) {
        json_t* written = json_array_get(patch, i);
        if (Problem found = run(document, written)) {
            *misfit = {i + 1, path_of(written), found};
            return {};
        }
    }
    return document.release();
}

}  // namespace kcnvrt::conf

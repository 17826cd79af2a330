// Lists grow by copies of their entries. Names are made distinct, and follow where one entry names another.
#include "scaled_example.h"

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "deep_copy.h"
#include "frame/number.h"

namespace kcnvrt::bench {

namespace {

std::string text(json_t* string) {
    return std::string{view_of(string)};
}
Json new_string(const std::string& text) {
    return string(std::string_view{text});
}
Key key(const std::string& name) {
    return {name.data(), name.size()};
}

// The names of interfaces, services and tunnels, by which the entries of many lists refer to them.
class InterfaceNames {
public:
    InterfaceNames(json_t* root, Layout layout) {
        if (layout == Layout::kOld)
            collect_members(get(root, "ifaces"));
        else
            collect_values(get(get(root, "Device"), "Ifaces"));
    }

    bool contains(const std::string& name) const { return names_.contains(name); }

private:
    void collect_members(json_t* ifaces) {
        for (const auto [name, iface] : members(ifaces)) {
            names_.emplace(name.view());
            collect_members(get(iface, "services"));
            collect_members(get(iface, "tunnels"));
        }
    }

    void collect_values(json_t* value) {
        for (const auto [name, member] : members(value)) {
            if (name.view().starts_with("ifname_")) names_.insert(text(member));
            collect_values(member);
        }
    }

    std::set<std::string> names_;
};

// Copy number 1, 2, ... of an entry.
class Copier {
public:
    Copier(const InterfaceNames& names, unsigned copy) : names_{names}, suffix_{"_" + std::to_string(copy + 1)} {}

    std::string another(const std::string& name) const { return name + suffix_; }

    Json operator()(json_t* value) const {
        if (json_is_object(value)) return copied_object(value);
        if (json_is_array(value)) return copied_array(value);
        if (json_is_string(value)) return new_string(renamed(text(value)));
        return deep_copy(value);
    }

private:
    std::string renamed(const std::string& name) const { return names_.contains(name) ? another(name) : name; }

    Json copied_object(json_t* value) const {
        Json copy = object();
        for (const auto [name, member] : members(value)) {
            const std::string new_name = renamed(std::string{name.view()});
            set(copy.get(), key(new_name), (*this)(member));
        }
        return copy;
    }

    Json copied_array(json_t* value) const {
        Json copy = array();
        for (const auto [number, element] : elements(value)) append(copy.get(), (*this)(element));
        return copy;
    }

    const InterfaceNames& names_;
    std::string suffix_;
};

bool is_numbered(json_t* list) {
    return has(list, "max_instance");
}

struct Entry {
    std::string name;  // empty in an array
    Json value;
};

std::vector<Entry> entries_of(json_t* list) {
    std::vector<Entry> entries;
    for (const auto [number, element] : elements(list)) entries.push_back({"", share(element)});
    for (const auto [name, entry] : members(list))
        if (!is_numbered(list) || read_loosely(name.view()) > 0)
            entries.push_back({std::string{name.view()}, share(entry)});
    return entries;
}

// The lists that a path leads to.
void find_lists(json_t* value, std::string_view path, std::vector<json_t*>& found) {
    if (path.empty() && value != nullptr) found.push_back(value);
    if (path.empty()) return;
    const size_t end = std::min(path.find('/'), path.size());
    const std::string_view step = path.substr(0, end);
    const std::string_view rest = path.substr(std::min(end + 1, path.size()));
    for (const auto [name, member] : members(value))
        if (step == "*" || name.view() == step) find_lists(member, rest, found);
}

// The lists of one row, which share their numbering.
class GrowingLists {
public:
    GrowingLists(json_t* root, const OuterList& row) : distinct_{row.distinct} {
        find_lists(root, row.path, lists_);
        for (json_t* list : lists_)
            for (const Entry& entry : entries_of(list)) {
                numbers_ = std::max(numbers_, read_loosely(entry.name));
                largest_ = std::max(largest_, json_integer_value(member(entry.value.get())));
            }
    }

    void grow(const InterfaceNames& names, unsigned scale) {
        for (json_t* list : lists_) {
            const std::vector<Entry> entries = entries_of(list);
            for (unsigned copy = 1; copy < scale; ++copy)
                for (const Entry& entry : entries) add(list, entry, copy, Copier{names, copy});
            if (is_numbered(list)) set(list, "max_instance", integer(static_cast<json_int_t>(numbers_) * scale));
        }
    }

private:
    json_t* member(json_t* entry) const { return distinct_ == nullptr ? nullptr : json_object_get(entry, distinct_); }

    void add(json_t* list, const Entry& entry, unsigned copy, const Copier& copied) const {
        Json value = copied(entry.value.get());
        if (distinct_ != nullptr) make_distinct(value.get(), copy, copied);
        if (json_is_array(list))
            append(list, std::move(value));
        else
            set(list, key(is_numbered(list) ? numbered(entry, copy) : copied.another(entry.name)), std::move(value));
    }

    std::string numbered(const Entry& entry, unsigned copy) const {
        return std::to_string(read_loosely(entry.name) + numbers_ * static_cast<int>(copy));
    }

    void make_distinct(json_t* entry, unsigned copy, const Copier& copied) const {
        json_t* const value = member(entry);
        if (json_is_integer(value)) json_integer_set(value, json_integer_value(value) + (largest_ + 1) * copy);
        if (json_is_string(value))
            json_object_set_new(entry, distinct_, new_string(copied.another(text(value))).release());
    }

    const char* distinct_;
    std::vector<json_t*> lists_;
    int numbers_ = 0;  // a copy's number is this much above that of the one before
    json_int_t largest_ = 0;
};

}  // namespace

Json scaled_example(json_t* example, Layout layout, unsigned scale) {
    Json root = deep_copy(example);
    const InterfaceNames names{example, layout};
    for (const OuterList& row : outer_lists(layout)) GrowingLists{root.get(), row}.grow(names, scale);
    return root;
}

}  // namespace kcnvrt::bench

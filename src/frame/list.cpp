// Reading and building numbered lists.
#include "frame/list.h"

#include <algorithm>
#include <climits>
#include <cstdlib>

#include "frame/number.h"
#include "shortage.h"

namespace kcnvrt {

namespace {

// The number whose entry has this name: its decimal text, and nothing else. 0 for a name that belongs to no number.
int number_of(std::string_view name) {
    constexpr size_t kLongestName = 10;  // of INT_MAX
    if (name.empty() || name.size() > kLongestName || name[0] == '0') return 0;
    uint32_t number = 0;
    return read_strictly(name, number) && number <= INT_MAX ? static_cast<int>(number) : 0;
}

int by_number(const void* left, const void* right) {
    const int64_t difference = static_cast<const Instance*>(left)->number - static_cast<const Instance*>(right)->number;
    return difference < 0 ? -1 : difference > 0;
}

}  // namespace

json_t* entry_at(json_t* list, int64_t number) {
    return get(list, Decimal{number});
}

int max_number(json_t* list) {
    int highest = 0;
    for (const Member member : members(list)) highest = std::max(highest, read_loosely(member.name.view()));
    return highest < 1 ? -1 : highest;
}

void set_max_instance(json_t* list, uint32_t count) {
    set(list, "max_instance", integer(count));
}

bool has_instances(json_t* list) {
    return json_integer_value(get(list, "max_instance")) >= 1;
}

json_t* ListBuilder::list() {
    if (list_ == nullptr) list_ = object();
    return list_.get();
}

void ListBuilder::add(Json entry) {
    set(list(), Decimal{++count_}, std::move(entry));
}

Json ListBuilder::finish() {
    set_max_instance(list(), count_);
    return std::move(list_);
}

Instances::Instances(json_t* list) : instances_{json_object_size(list)} {
    if (instances_.failed()) return;  // Out of memory: nothing is visited, and so nothing is stored.
    bool is_ascending = true;
    for (const Member member : members(list)) {
        const int number = number_of(member.name.view());
        if (number == 0) {
            highest_ = std::max(highest_, read_loosely(member.name.view()));
            continue;
        }
        if (number < highest_) is_ascending = false;
        highest_ = std::max(highest_, number);
        instances_.add({number, member.value});
    }
    if (!is_ascending) std::qsort(instances_.begin(), instances_.size(), sizeof(Instance), by_number);
}

Instances::~Instances() = default;

int last_of_every_number(int highest, json_t* list, const Report& report, int& failures) {
    if (highest <= kMaxPlaceholderNumber) return highest;
    failures += report.fail("Instance number %d is above %d", highest, kMaxPlaceholderNumber);
    report.place(list);
    return 0;
}

EveryNumber::EveryNumber(json_t* list, const Report& report)
    : present_{list}, last_{last_of_every_number(present_.highest(), list, report, failures_)} {}

Json list_of_elements(json_t* array) {
    ListBuilder list;
    for (const auto [number, element] : elements(array)) list.add(share(element));
    return list.finish();
}

Json elements_of_list(json_t* list, const Report& report, int& failures) {
    Json array = kcnvrt::array();
    const EveryNumber numbers{list, report};
    for (const auto [number, entry] : numbers) append(array.get(), entry == nullptr ? object() : share(entry));
    failures += numbers.failures();
    return array;
}

Json list_of_pieces(std::string_view text, char separator) {
    ListBuilder pieces;
    while (!text.empty()) {
        const size_t length = std::min(text.find(separator), text.size());
        if (length > 0) pieces.add(string(std::string_view{text.data(), length}));
        text.remove_prefix(std::min(length + 1, text.size()));
    }
    return pieces.finish();
}

Json names_to_list(json_t* array) {
    ListBuilder list;
    for (const auto [number, name] : elements(array)) {
        Json entry = object();
        carry(entry.get(), "name", name);
        list.add(std::move(entry));
    }
    return list.finish();
}

Json list_to_names(json_t* list, const Report& report, int& failures) {
    Json names = array();
    const EveryNumber numbers{list, report};
    for (const auto [number, entry] : numbers) {
        if (entry == nullptr)
            append(names.get(), string(""));
        else
            append_shared(names.get(), get(entry, "name"));
    }
    failures += numbers.failures();
    return names;
}

namespace ways {

int names_to_new(json_t* destination, Key key, json_t* value, const Report&) {
    if (value != nullptr) set(destination, key, names_to_list(value));
    return 0;
}

int names_to_old(json_t* destination, Key key, json_t* value, const Report& report) {
    int failures = 0;
    if (value != nullptr) set(destination, key, list_to_names(value, report, failures));
    return failures;
}

int elements_to_new(json_t* destination, Key key, json_t* value, const Report&) {
    if (value != nullptr) set(destination, key, list_of_elements(value));
    return 0;
}

int elements_to_old(json_t* destination, Key key, json_t* value, const Report& report) {
    int failures = 0;
    if (value != nullptr) set(destination, key, elements_of_list(value, report, failures));
    return failures;
}

}  // namespace ways

}  // namespace kcnvrt

// Numbered entries under flat names, from the old layout and into it.
#include "wifi/flat_entries.h"

#include "frame/list.h"

namespace kcnvrt {

void set_filled(json_t* object, Key key, Json value) {
    if (!is_empty(value.get())) set(object, key, std::move(value));
}

void count_entries(json_t* list) {
    set_max_instance(list, static_cast<uint32_t>(size_of(list)));
}

int entries_to_new(PlacedFields entry, const OldRadio& old, json_t* list, const Report& report) {
    int failures = 0;
    for (int number = 1; number <= kFlatEntries; ++number) {
        Json new_entry = object();
        failures += to_new(entry, old.with_number(number), new_entry.get(), report);
        set_filled(list, Decimal{number}, std::move(new_entry));
    }
    return failures;
}

int complete_entries_to_new(PlacedFields entry, const OldRadio& old, json_t* object, Key key, const Report& report) {
    Json list = kcnvrt::object();
    const int failures = entries_to_new(entry, old, list.get(), report);
    if (size_of(list.get()) != kFlatEntries) return failures;
    count_entries(list.get());
    set(object, key, std::move(list));
    return failures;
}

int entries_to_old(PlacedFields entry, json_t* list, const OldRadio& old, const Report& report) {
    int failures = 0;
    int64_t number = 0;
    for (const Member member : members(list))
        if (json_is_object(member.value)) failures += to_old(entry, member.value, old.with_number(++number), report);
    return failures;
}

}  // namespace kcnvrt

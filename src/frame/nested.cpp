// Tables run over lists and instances.
#include "frame/nested.h"

namespace kcnvrt {

int list_to_new(Fields fields, json_t* array, json_t* list, const Report& report) {
    int failures = 0;
    ListBuilder entries{list};
    for (const auto [number, element] : elements(array)) {
        Json entry = object();
        failures +=
            report.placed_entry(to_new(fields, element, entry.get(), report), array, static_cast<int64_t>(number));
        entries.add(std::move(entry));
    }
    entries.finish();
    return failures;
}

int list_to_old(Fields fields, json_t* list, json_t* array, const Report& report) {
    return append_every_number(list, array, report, [fields, &report](int64_t, json_t* entry, json_t* old_entry) {
        return to_old(fields, entry, old_entry, report);
    });
}

namespace {

int walk_instances(Walk walk, Fields fields, json_t* source, json_t* destination, const Report& report) {
    int failures = 0;
    for (const auto [name, value] : members(source)) {
        if (!json_is_object(value)) continue;
        Json instance = object();
        failures += walk(fields, value, instance.get(), report);
        set(destination, name, std::move(instance));
    }
    carry_max_instance(destination, source);
    return failures;
}

}  // namespace

int instances_to_new(Fields fields, json_t* old_instances, json_t* new_instances, const Report& report) {
    return walk_instances(to_new, fields, old_instances, new_instances, report);
}

int instances_to_old(Fields fields, json_t* new_instances, json_t* old_instances, const Report& report) {
    return walk_instances(to_old, fields, new_instances, old_instances, report);
}

int walk_member(Walk walk, Fields fields, json_t* destination, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    Json container = walk == list_to_old ? array() : object();
    const int failures = walk(fields, value, container.get(), report);
    set(destination, key, std::move(container));
    return failures;
}

}  // namespace kcnvrt

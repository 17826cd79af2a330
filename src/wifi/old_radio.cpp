// The names of the flat old object, and how a table whose fields are placed is run.
#include "wifi/old_radio.h"

#include <cstring>

namespace kcnvrt {

namespace {

char* add(char* end, std::string_view text) {
    std::memcpy(end, text.data(), text.size());
    return end + text.size();
}

char* add_numbered(char* end, std::string_view form, int64_t number) {
    if (number == 0) return add(end, form);
    const size_t at = form.find("%d");
    if (at == form.npos) return add(end, form);
    end = add(end, {form.data(), at});
    end = add(end, Decimal{number}.view());
    form.remove_prefix(at + 2);
    return add(end, form);
}

}  // namespace

OldName::OldName(Key form, bool is_prefixed, int64_t number) : text_{form.text()}, length_{form.length()} {
    if (!is_prefixed && number == 0) return;
    char* end = buffer_;
    if (is_prefixed) end = add(end, "5G_");
    end = add_numbered(end, form.view(), number);
    *end = '\0';
    text_ = buffer_;
    length_ = static_cast<size_t>(end - buffer_);
}

int to_new(PlacedFields table, const OldRadio& old, json_t* new_object, const Report& report) {
    int failures = 0;
    const OldPlace* place = table.places;
    for (const Field field : table.fields) {
        if (field.to_new != nullptr)
            failures += old.placed(field.to_new(new_object, field.new_name, old.read(*place, field.old_name), report),
                                   *place, field.old_name, report);
        ++place;
    }
    return failures;
}

int to_old(PlacedFields table, json_t* new_object, const OldRadio& old, const Report& report) {
    // A field that stands once for each radio reports under the name of the section, also where an SSID brought it.
    const Report of_section = report.under("k_cnvrt_get_wifi_from_new");
    int failures = 0;
    const OldPlace* place = table.places;
    for (const Field field : table.fields) {
        if (field.to_old != nullptr)
            failures += cross(field.to_old, new_object, field.new_name, old.container(*place),
                              old.name_to_write(*place, field.old_name),
                              OldRadio::is_written_per_radio(*place) ? of_section : report);
        ++place;
    }
    return failures;
}

}  // namespace kcnvrt

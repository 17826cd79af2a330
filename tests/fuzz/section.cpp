// One section by its name in either direction, or one exported converter by its own. The bytes: a line of a direction
// or a container and a name ("old wifi", "new WiFi", "{} parse_old_dlna", "[] parse_new_ddns"), the flags, a JSON text,
// NUL, growth.
#include <algorithm>
#include <cstring>
#include <vector>

#include "document/sections.h"
#include "growth.h"
#include "k_cnvrt.h"
#include "properties.h"

namespace {

struct Converter {
    const char* name;
    k_cnvrt_handler_t handler;
};

const std::vector<Converter> kConverters = {
#include "converters.inc"
};

std::string_view view(std::string_view name) {
    return name;
}
std::string_view view(const kcnvrt::Name& name) {
    return name.view();
}

// The row of that name; a name that no row has still leads to one, always the same.
template <class Row>
const Row& row_of(const std::vector<Row>& rows, std::string_view name) {
    const auto found = std::ranges::find_if(rows, [name](const Row& row) { return name == view(row.name); });
    return found != rows.end() ? *found : rows[kcnvrt::hash_of(name) % rows.size()];
}

template <class Row>
std::vector<Row> rows_of(const Row* table) {
    std::vector<Row> rows;
    for (; !table->name.is_empty(); ++table) rows.push_back(*table);
    return rows;
}

Returned converted(k_cnvrt_handler_t handler, bool is_array, json_t* source, k_err_t* err) {
    Tree container{is_array ? json_array() : json_object()};
    const int failures = handler(source, container.get(), err);
    return {std::move(container), failures};
}

// What the section must be, from its handler.
Returned old_section(const kcnvrt::OldSection& row, json_t* source) {
    Returned returned = converted(row.handler, row.container != kcnvrt::Container::kObject, source, nullptr);
    if (returned.failures != 0 && row.container == kcnvrt::Container::kEither)
        returned = converted(row.handler, false, source, nullptr);
    return returned;
}

// The section as the library gives it, and the failures that its handler counts.
Returned compared(Tree section, const Returned& made, json_t* source) {
    require(section == nullptr || picture_of(section.get()) == picture_of(made.tree.get()),
            "a section by its name is what its handler makes", source);
    return {std::move(section), made.failures};
}

struct Subject {
    Call call;
    OnFailure on_failure;
};

Subject to_old(std::string_view name) {
    static const auto rows = rows_of(kcnvrt::old_config_handler_table);
    const auto& row = row_of(rows, name);
    const auto call = [&row](json_t* source, k_err_t* err) {
        return compared(Tree{k_cnvrt_get_section_to_old(row.name.text(), source, err)}, old_section(row, source),
                        source);
    };
    return {call, OnFailure::kNothing};
}

Subject to_new(std::string_view name, uint8_t flags) {
    static const auto rows = rows_of(kcnvrt::new_config_handler_table);
    const auto& row = row_of(rows, name);
    const auto call = [&row, flags](json_t* source, k_err_t* err) {
        return compared(Tree{k_cnvrt_get_section_to_new(row.name.text(), source, nullptr, flags, err)},
                        converted(row.handler, false, source, nullptr), source);
    };
    return {call, OnFailure::kNothing};
}

Subject to_container(std::string_view name, bool is_array) {
    const auto& row = row_of(kConverters, name);
    const auto call = [&row, is_array](json_t* source, k_err_t* err) {
        return converted(row.handler, is_array, source, err);
    };
    // Users are one of two containers, and the other one fails without a message.
    const bool in_silence = row.handler == k_cnvrt_get_users_from_new;
    return {call, in_silence ? OnFailure::kTheRestInSilence : OnFailure::kTheRest};
}

Subject subject_of(std::string_view line, uint8_t flags) {
    Bytes words{line};
    const std::string_view first = words.take_until(' ');
    const std::string_view name = words.take(line.size());
    if (first == "old") return to_old(name);
    if (first == "new") return to_new(name, flags);
    return to_container(name, first == "[]");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Bytes bytes{{reinterpret_cast<const char*>(data), size}};
    const std::string_view line = bytes.take_until('\n');
    const Subject subject = subject_of(line, bytes.next());
    Tree source = read_tree(bytes.take_until('\0'));
    grow(source.get(), bytes, [&subject](json_t* section) { subject.call(section, nullptr); });
    check(subject.call, std::move(source), subject.on_failure);
    return 0;
}

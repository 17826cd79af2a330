// old_radio.h: the flat old "wifi" object, as one radio or one SSID of it sees it.
//
// The old object keeps both radios side by side. Each field of a table therefore also says where it stands:
//
//     constexpr auto kSecurity = placed_fields(
//         //                       old             new
//         of_element(boolean_field("PreAuth")),
//         of_element(integer_field("DefaultKeyID", "DefaultKeyId")),
//         shared    (integer_field("session_timeout_interval")));
//
//     failures += to_new(kSecurity, old_radio, new_security, report);
//
// Old names in tables are plain: the "5G_" of the 5 GHz radio and the digit of a numbered name ("Key%dStr") are put in
// here and nowhere else.
#pragma once

#include "frame/field.h"

namespace kcnvrt {

enum class OldPlace : uint8_t {
    kElement,  // in the SSID's own element of the array
    kRadio,    // once for each radio: prefixed for the 5 GHz one
    kShared,   // once for both radios
    // Read as kShared, so that both radios get the same, but written as kRadio: stored configurations depend on both.
    kReadShared,
};

// The longest old name that a table gives, and what "5G_" and a number of 64 bits can add to it.
inline constexpr size_t kLongestForm = 32;
inline constexpr size_t kLongestAddition = 3 + 20;

// The member name that a table's form stands for, made on the stack; the form itself where nothing is put in.
class OldName {
public:
    // `number` replaces the "%d" of the form; 0 where the form has none.
    OldName(Key form, bool is_prefixed, int64_t number = 0);
    OldName(const OldName&) = delete;
    OldName& operator=(const OldName&) = delete;

    operator Key() const { return {text_, length_}; }

private:
    char buffer_[kLongestForm + kLongestAddition + 1];
    const char* text_;
    size_t length_;
};

struct OldRadio {
    json_t* wifi;
    bool is_5ghz;
    json_t* element = nullptr;  // of the SSID at hand
    int64_t number = 0;         // of the numbered names at hand

    OldRadio with_element(json_t* ssid) const { return {wifi, is_5ghz, ssid, number}; }
    OldRadio with_number(int64_t entry) const { return {wifi, is_5ghz, element, entry}; }

    json_t* container(OldPlace place) const { return place == OldPlace::kElement ? element : wifi; }
    OldName name_to_read(OldPlace place, Key form) const {
        return {form, is_5ghz && place == OldPlace::kRadio, number};
    }
    OldName name_to_write(OldPlace place, Key form) const {
        return {form, is_5ghz && is_written_per_radio(place), number};
    }

    // Notes where in the old object the messages of a field belong.
    int placed(int failures, OldPlace place, Key form, const Report& report) const {
        if (failures != 0) [[unlikely]]
            report.place(container(place), name_to_read(place, form));
        return failures;
    }

    json_t* read(OldPlace place, Key form) const { return get(container(place), name_to_read(place, form)); }
    void write(OldPlace place, Key form, Json value) const {
        set(container(place), name_to_write(place, form), std::move(value));
    }

    static constexpr bool is_written_per_radio(OldPlace place) {
        return place == OldPlace::kRadio || place == OldPlace::kReadShared;
    }
};

// The new layout's name of a band; any other name is that of the 2.4 GHz one.
constexpr Key band_name(bool is_5ghz) {
    return is_5ghz ? Key{"5GHz"} : Key{"2.4GHz"};
}

// A table whose fields are placed, as the engine sees it.
struct PlacedFields {
    Fields fields;
    const OldPlace* places;
};

template <size_t Rows, class Table>
struct PlacedTable {
    OldPlace places[Rows];
    Table table;

    constexpr operator PlacedFields() const { return {table, places}; }
};

template <class Row>
struct PlacedRow {
    OldPlace place;
    Row row;
};

template <size_t OldN, size_t NewN, Way ToNew, Way ToOld>
constexpr auto placed_row(OldPlace place, const FieldRow<OldN, NewN, ToNew, ToOld>& row) {
    static_assert(OldN <= kLongestForm + 1);
    return PlacedRow<FieldRow<OldN, NewN, ToNew, ToOld>>{place, row};
}

template <class Row>
constexpr auto of_element(const Row& row) {
    return placed_row(OldPlace::kElement, row);
}
template <class Row>
constexpr auto of_radio(const Row& row) {
    return placed_row(OldPlace::kRadio, row);
}
template <class Row>
constexpr auto shared(const Row& row) {
    return placed_row(OldPlace::kShared, row);
}
template <class Row>
constexpr auto read_shared(const Row& row) {
    return placed_row(OldPlace::kReadShared, row);
}

template <class... Row>
constexpr auto placed_fields(const PlacedRow<Row>&... placed) {
    return PlacedTable<sizeof...(Row), decltype(fields(placed.row...))>{{placed.place...}, fields(placed.row...)};
}

// Tables whose fields all stand in the same place.
template <class... Row>
constexpr auto element_fields(const Row&... row) {
    return placed_fields(of_element(row)...);
}
template <class... Row>
constexpr auto radio_fields(const Row&... row) {
    return placed_fields(of_radio(row)...);
}
template <class... Row>
constexpr auto shared_fields(const Row&... row) {
    return placed_fields(shared(row)...);
}

// The engine: every field of the table, in the table's order. Returns the count of failed fields.
int to_new(PlacedFields table, const OldRadio& old, json_t* new_object, const Report& report);
int to_old(PlacedFields table, json_t* new_object, const OldRadio& old, const Report& report);

}  // namespace kcnvrt

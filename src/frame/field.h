// field.h: a section is a table of fields, and a field is two names and the way across in each direction.
//
//     constexpr auto kPppService = fields(
//         //            old                  new
//         integer_field("auth"),
//         password     ("password"),
//         carried      ("iface",             "phy_iface"),
//         status       ("connection_status"));
//
//     int failures = to_new(kPppService, old_service, new_service, report);
//
// Every way has one signature: it stores one value, which may be absent, under one name. It returns the count of failed
// fields, 0 or 1 for a single value, and has reported each. One table serves both directions; where a direction visits
// the fields in another order, that order is the order of its messages, and the direction has a table of its own.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <type_traits>
#include <utility>

#include "json.h"
#include "report.h"

namespace kcnvrt {

using Way = int (*)(json_t* destination, Key key, json_t* value, const Report& report);

// A field as the engine reads it from a table.
struct Field {
    Key old_name;
    Key new_name;
    Way to_new;  // null: not written in this direction
    Way to_old;
};

namespace ways {

// Either direction.
int carry(json_t* destination, Key key, json_t* value, const Report& report);

// Towards the new layout.
int integer_to_new(json_t* destination, Key key, json_t* value, const Report& report);
int boolean_to_new(json_t* destination, Key key, json_t* value, const Report& report);
int string_to_new(json_t* destination, Key key, json_t* value, const Report& report);
int password_to_new(json_t* destination, Key key, json_t* value, const Report& report);
// "" becomes the default text; an absent value stores nothing.
int string_or_default(json_t* destination, Key key, json_t* value, std::string_view default_text, const Report& report);
// An absent value becomes false.
int carry_or_false(json_t* destination, Key key, json_t* value, const Report& report);
// A connection status: an absent one and "" become "Disconnected".
int status_to_new(json_t* destination, Key key, json_t* value, const Report& report);

// Towards the old layout.
int integer_to_old(json_t* destination, Key key, json_t* value, const Report& report);
int boolean_to_old(json_t* destination, Key key, json_t* value, const Report& report);
int string_to_old(json_t* destination, Key key, json_t* value, const Report& report);
int password_to_old(json_t* destination, Key key, json_t* value, const Report& report);

// A text as a template argument.
template <size_t N>
struct Text {
    char characters[N];
    constexpr Text(const char (&literal)[N]) {
        for (size_t i = 0; i < N; ++i) characters[i] = literal[i];
    }
    constexpr std::string_view view() const { return {characters, N - 1}; }
};

template <Text Default>
int string_or(json_t* destination, Key key, json_t* value, const Report& report) {
    return string_or_default(destination, key, value, Default.view(), report);
}

}  // namespace ways

// Rows, as tables write them: one name, or the old and the new one.

template <size_t OldN, size_t NewN, Way ToNew, Way ToOld>
struct FieldRow {
    char old_name[OldN];
    char new_name[NewN];  // "" where it is the old one
};

template <Way ToNew, Way ToOld, size_t OldN, size_t NewN>
constexpr auto field(const char (&old_name)[OldN], const char (&new_name)[NewN]) {
    FieldRow<OldN, NewN, ToNew, ToOld> row{};
    for (size_t i = 0; i < OldN; ++i) row.old_name[i] = old_name[i];
    for (size_t i = 0; i < NewN; ++i) row.new_name[i] = new_name[i];
    return row;
}
template <Way ToNew, Way ToOld, size_t N>
constexpr auto field(const char (&name)[N]) {
    return field<ToNew, ToOld>(name, "");
}

// A word for tables: `word("name")` or `word("old name", "new name")`. A null way writes nothing in that direction.
#define KCNVRT_FIELD_WORD(word, to_new, to_old)                                     \
    template <size_t N>                                                             \
    constexpr auto word(const char(&name)[N]) {                                     \
        return field<to_new, to_old>(name);                                         \
    }                                                                               \
    template <size_t OldN, size_t NewN>                                             \
    constexpr auto word(const char(&old_name)[OldN], const char(&new_name)[NewN]) { \
        return field<to_new, to_old>(old_name, new_name);                           \
    }

KCNVRT_FIELD_WORD(carried, ways::carry, ways::carry)
KCNVRT_FIELD_WORD(carried_or_false, ways::carry_or_false, ways::carry)
KCNVRT_FIELD_WORD(integer_field, ways::integer_to_new, ways::integer_to_old)
KCNVRT_FIELD_WORD(boolean_field, ways::boolean_to_new, ways::boolean_to_old)
KCNVRT_FIELD_WORD(string_field, ways::string_to_new, ways::string_to_old)
KCNVRT_FIELD_WORD(password, ways::password_to_new, ways::password_to_old)
KCNVRT_FIELD_WORD(status, ways::status_to_new, ways::carry)

// What some old sections keep typed, although the old layout has texts as a rule. Typed: texts become so in either
// direction. Retyped: carried to new, and texts become so on the way back. Given back: a text or a number in the old
// layout, which gets back what the new one says.
KCNVRT_FIELD_WORD(typed_boolean, ways::boolean_to_new, ways::boolean_to_new)
KCNVRT_FIELD_WORD(retyped_boolean, ways::carry, ways::boolean_to_new)
KCNVRT_FIELD_WORD(retyped_integer, ways::carry, ways::integer_to_new)
KCNVRT_FIELD_WORD(given_back_integer, ways::integer_to_new, ways::carry)

// A table keeps its names in one pool and its ways in a list, so that a row is a few numbers: without pointers it needs no
// relocation and stays in read-only pages that every process shares. The ways that many tables have are in one list for
// all of them, which their own lists continue.

struct PackedField {
    uint16_t old_at;
    uint16_t new_at;
    uint8_t old_length;
    uint8_t new_length;
    uint8_t to_new;
    uint8_t to_old;
};

inline constexpr Way kCommonWays[] = {
    nullptr,
    ways::carry,
    ways::integer_to_new,
    ways::integer_to_old,
    ways::boolean_to_new,
    ways::boolean_to_old,
    ways::string_to_new,
    ways::string_to_old,
    ways::password_to_new,
    ways::password_to_old,
    ways::status_to_new,
};

// A way as a type. Ways are told apart by it, because comparing the addresses of functions is no constant expression
// under the undefined-behaviour sanitizer.
template <Way>
struct WayType {};

// The different ones among all ways of a table, after the common ones.
template <Way... All>
class WayList {
    // Where a way stands first.
    template <Way Wanted>
    static constexpr size_t first() {
        constexpr bool kSame[] = {std::is_same_v<WayType<Wanted>, WayType<All>>...};
        size_t at = 0;
        while (!kSame[at]) ++at;
        return at;
    }

    static constexpr std::array<size_t, sizeof...(All)> firsts() { return {first<All>()...}; }

    // How many different ones stand before.
    static constexpr size_t distinct_before(size_t end) {
        const auto first = firsts();
        size_t distinct = 0;
        for (size_t at = 0; at < end; ++at) distinct += first[at] == at;
        return distinct;
    }

    template <size_t Count>
    static constexpr std::array<Way, Count> own() {
        constexpr Way kAll[] = {All...};
        std::array<Way, Count> ways{};
        for (size_t at = std::size(kCommonWays); at < sizeof...(All); ++at)
            if (firsts()[at] == at) ways[distinct_before(at) - std::size(kCommonWays)] = kAll[at];
        return ways;
    }

public:
    // A template, so that it is only evaluated once the class is complete.
    template <class Self = WayList>
    static constexpr auto kOwn = Self::template own<Self::distinct_before(sizeof...(All)) - std::size(kCommonWays)>();

    template <Way Wanted>
    static constexpr uint8_t index_of() {
        return static_cast<uint8_t>(distinct_before(first<Wanted>()));
    }
};

template <class Common, Way... Rest>
struct WaysOfTable;
template <size_t... Common, Way... Rest>
struct WaysOfTable<std::index_sequence<Common...>, Rest...> {
    using List = WayList<kCommonWays[Common]..., Rest...>;
};

// How a table begins. Its rows follow, and then its names.
struct TableHead {
    uint16_t rows;
};

// What the engine and every other reader sees of a table: two words, which are passed in registers.
class Fields {
public:
    // The whole table, without its type: it is read from its first byte to its last.
    constexpr Fields(const void* table, const Way* own_ways) : table_{table}, own_ways_{own_ways} {}

    class Iterator {
    public:
        Iterator(const PackedField* at, const char* names, const Way* own_ways)
            : at_{at}, names_{names}, own_ways_{own_ways} {}
        Field operator*() const {
            return {{names_ + at_->old_at, at_->old_length},
                    {names_ + at_->new_at, at_->new_length},
                    way(at_->to_new),
                    way(at_->to_old)};
        }
        Iterator& operator++() {
            ++at_;
            return *this;
        }
        bool operator!=(const Iterator& other) const { return at_ != other.at_; }

    private:
        Way way(size_t index) const {
            constexpr size_t kCommon = std::size(kCommonWays);
            return index < kCommon ? kCommonWays[index] : own_ways_[index - kCommon];
        }

        const PackedField* at_;
        const char* names_;
        const Way* own_ways_;
    };

    Iterator begin() const { return iterator(rows()); }
    Iterator end() const { return iterator(rows() + size()); }
    size_t size() const { return head()->rows; }

private:
    const TableHead* head() const { return static_cast<const TableHead*>(table_); }
    const PackedField* rows() const { return reinterpret_cast<const PackedField*>(head() + 1); }
    const char* names() const { return reinterpret_cast<const char*>(rows() + size()); }
    Iterator iterator(const PackedField* at) const { return {at, names(), own_ways_}; }

    const void* table_;
    const Way* own_ways_;
};

template <size_t Rows, size_t Pool, class Ways>
class FieldTable {
public:
    template <class... Row>
    constexpr explicit FieldTable(const Row&... row) {
        Filler filler{*this};
        (filler.add(row), ...);
    }

    constexpr operator Fields() const { return {this, Ways::template kOwn<>.data()}; }

private:
    struct Filler {
        FieldTable& table;
        size_t rows = 0;
        size_t used = 0;

        template <size_t OldN, size_t NewN, Way ToNew, Way ToOld>
        constexpr void add(const FieldRow<OldN, NewN, ToNew, ToOld>& row) {
            static_assert(OldN <= 256 && NewN <= 256, "the length of a name is kept in a byte");
            PackedField& packed = table.rows_[rows++];
            packed.old_at = add_name(row.old_name);
            packed.old_length = OldN - 1;
            packed.new_at = NewN == 1 ? packed.old_at : add_name(row.new_name);
            packed.new_length = NewN == 1 ? OldN - 1 : NewN - 1;
            packed.to_new = Ways::template index_of<ToNew>();
            packed.to_old = Ways::template index_of<ToOld>();
        }

        template <size_t N>
        constexpr uint16_t add_name(const char (&name)[N]) {
            const size_t at = used;
            for (const char character : name) table.names_[used++] = character;
            return static_cast<uint16_t>(at);
        }
    };

    static_assert(Rows <= UINT16_MAX && Pool <= UINT16_MAX, "rows are counted, and names placed, in 16 bits");

    TableHead head_{Rows};
    PackedField rows_[Rows]{};
    char names_[Pool]{};
};

template <size_t... OldN, size_t... NewN, Way... ToNew, Way... ToOld>
constexpr auto fields(const FieldRow<OldN, NewN, ToNew, ToOld>&... row) {
    constexpr size_t kPool = (0 + ... + (OldN + (NewN == 1 ? 0 : NewN)));
    using Ways = typename WaysOfTable<std::make_index_sequence<std::size(kCommonWays)>, ToNew..., ToOld...>::List;
    return FieldTable<sizeof...(row), kPool, Ways>{row...};
}

// The engine: every field of the table, in the table's order, from one object into another.
// Returns the count of failed fields.
int to_new(Fields fields, json_t* old_object, json_t* new_object, const Report& report);
int to_old(Fields fields, json_t* new_object, json_t* old_object, const Report& report);

}  // namespace kcnvrt

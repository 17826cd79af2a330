// field_table.h: how a table of fields is kept, so that it stays in read-only pages which every process shares.
//
// A row is a few numbers: its names are offsets into one pool of characters, and its ways are indexes. Without a
// pointer a table needs no relocation. Only the lists of ways have pointers: one list for the ways that many tables
// have, and one that continues it for the other ways of a table, which tables with the same other ways share.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "ways.h"

namespace kcnvrt {

// A row as a table is written with it.
template <size_t OldN, size_t NewN, Way ToNew, Way ToOld>
struct FieldRow {
    char old_name[OldN];
    char new_name[NewN];  // "" where it is the old one
};

// A row as the engine reads it.
struct Field {
    Key old_name;
    Key new_name;
    Way to_new;  // null: not written in this direction
    Way to_old;
};

// Different ways, as a type: the addresses of two functions cannot be compared at compile time under the
// undefined-behaviour sanitizer, but types can.
template <Way... Listed>
struct WayList {
    static constexpr std::array<Way, sizeof...(Listed)> kWays{Listed...};

    // Where a way stands; behind the last one when it is not listed.
    template <Way Wanted>
    static constexpr size_t index_of() {
        size_t index = 0;
        static_cast<void>(((std::is_same_v<WayList<Wanted>, WayList<Listed>> || (++index, false)) || ...));
        return index;
    }

    template <Way Wanted>
    static constexpr bool kHas = index_of<Wanted>() < sizeof...(Listed);
};

// The ways that many tables have.
using CommonWays = WayList<nullptr, ways::carry, ways::integer_to_new, ways::integer_to_old, ways::boolean_to_new,
                           ways::boolean_to_old, ways::string_to_new, ways::string_to_old, ways::password_to_new,
                           ways::password_to_old, ways::status_to_new>;

// A list with one way more, unless it has that way or every table has.
template <Way... Own, Way Next>
constexpr auto operator+(WayList<Own...>, WayList<Next>) {
    if constexpr (CommonWays::kHas<Next> || WayList<Own...>::template kHas<Next>)
        return WayList<Own...>{};
    else
        return WayList<Own..., Next>{};
}

// Those among a table's ways that are not common.
template <Way... All>
constexpr auto own_ways() {
    return (WayList<>{} + ... + WayList<All>{});
}

// How a table begins. Its rows follow, and then its names.
struct TableHead {
    uint16_t rows;
};

struct PackedField {
    uint16_t old_at;
    uint16_t new_at;
    uint8_t old_length;
    uint8_t new_length;
    uint8_t to_new;
    uint8_t to_old;
};

// What the engine and every other reader sees of a table: two words, which are passed in registers.
class Fields {
public:
    // A table of any size, without its type.
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
            constexpr size_t kCommon = CommonWays::kWays.size();
            return index < kCommon ? CommonWays::kWays[index] : own_ways_[index - kCommon];
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

template <size_t Rows, size_t Pool, class Own>
class FieldTable {
public:
    template <class... Row>
    constexpr explicit FieldTable(const Row&... row) {
        Filler filler{*this};
        (filler.add(row), ...);
    }

    constexpr operator Fields() const { return {this, Own::kWays.data()}; }

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
            packed.to_new = index_of<ToNew>();
            packed.to_old = index_of<ToOld>();
        }

        template <size_t N>
        constexpr uint16_t add_name(const char (&name)[N]) {
            const size_t at = used;
            for (const char character : name) table.names_[used++] = character;
            return static_cast<uint16_t>(at);
        }
    };

    template <Way Wanted>
    static constexpr uint8_t index_of() {
        if constexpr (CommonWays::kHas<Wanted>) return CommonWays::index_of<Wanted>();
        return CommonWays::kWays.size() + Own::template index_of<Wanted>();
    }

    static_assert(Rows <= UINT16_MAX && Pool <= UINT16_MAX, "rows are counted, and names placed, in 16 bits");
    static_assert(CommonWays::kWays.size() + Own::kWays.size() <= UINT8_MAX, "the index of a way is kept in a byte");

    TableHead head_{Rows};
    PackedField rows_[Rows]{};
    char names_[Pool]{};
};

template <size_t... OldN, size_t... NewN, Way... ToNew, Way... ToOld>
constexpr auto fields(const FieldRow<OldN, NewN, ToNew, ToOld>&... row) {
    constexpr size_t kPool = (0 + ... + (OldN + (NewN == 1 ? 0 : NewN)));
    return FieldTable<sizeof...(row), kPool, decltype(own_ways<ToNew..., ToOld...>())>{row...};
}

}  // namespace kcnvrt

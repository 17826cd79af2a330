// list.h: numbered lists, the new layout's list shape.
//
// A numbered list is an object whose members "1", "2", ... hold the entries, and "max_instance" an integer. Entries are
// found by number, whatever "max_instance" says; a few converters first ask it whether there are any (has_instances).
#pragma once

#include "field.h"
#include "json.h"
#include "report.h"

namespace kcnvrt {

// The bound on numbers in a walk that writes something for every missing number.
inline constexpr int kMaxPlaceholderNumber = 65535;

// An entry by its number; null when there is none.
json_t* entry_at(json_t* list, int64_t number);

// The highest number among an object's member names, read as `atoi` reads them and saturating at INT_MAX; -1 when there
// is none of 1 or more. Names such as "03" and "3x" count here although no entry is found under their number.
int max_number(json_t* list);

// "max_instance", and how many it says there are. The new-to-old group converters skip a list that says none.
void set_max_instance(json_t* list, uint32_t count);
bool has_instances(json_t* list);  // "max_instance" is an integer of at least 1

// "max_instance" as the source list has it, where it has one.
inline void carry_max_instance(json_t* list, json_t* source) {
    carry(list, "max_instance", get(source, "max_instance"));
}

// Builds a numbered list, counting from 1: a new one, which is made when it is needed, or one in an object that is
// there already.
class ListBuilder {
public:
    ListBuilder() = default;
    explicit ListBuilder(json_t* list) : list_{share(list)} {}

    uint32_t count() const { return count_; }

    // Under the next number.
    void add(Json entry);
    // Leaves the next number out; it counts all the same.
    void skip() { ++count_; }
    // Sets "max_instance" to the count and hands the list over.
    Json finish();

private:
    json_t* list();

    Json list_;
    uint32_t count_ = 0;
};

// The entries that are there, in ascending order of their numbers. Costs what is present, whatever the numbers are.
struct Instance {
    int64_t number;
    json_t* entry;
};

class Instances {
public:
    explicit Instances(json_t* list);
    ~Instances();

    const Instance* begin() const { return instances_.begin(); }
    const Instance* end() const { return instances_.end(); }
    size_t count() const { return instances_.size(); }
    // The highest number as `max_number` finds it, 0 when there is none.
    int highest() const { return highest_; }

private:
    SmallArray<Instance> instances_;
    int highest_ = 0;
};

// Where a walk over every number from 1 ends: at the highest number. One above kMaxPlaceholderNumber is reported and
// counted, and the walk ends before it begins: 0.
int last_of_every_number(int highest, json_t* list, const Report& report, int& failures);

// Every number from 1 to the highest, with its entry, or null for a missing one. Bounded like last_of_every_number;
// failures() is added to the converter's result.
//
//     EveryNumber numbers{list, report};
//     for (const auto [number, entry] : numbers) ...
//     return failures + numbers.failures();
class EveryNumber {
public:
    EveryNumber(json_t* list, const Report& report);

    int failures() const { return failures_; }

    class Iterator {
    public:
        Iterator(const Instance* next, const Instance* last, int64_t number)
            : next_{next}, last_{last}, number_{number} {}
        Instance operator*() const { return {number_, is_present() ? next_->entry : nullptr}; }
        Iterator& operator++() {
            if (is_present()) ++next_;
            ++number_;
            return *this;
        }
        bool operator!=(const Iterator& other) const { return number_ != other.number_; }

    private:
        bool is_present() const { return next_ != last_ && next_->number == number_; }

        const Instance* next_;
        const Instance* last_;
        int64_t number_;
    };

    Iterator begin() const { return {present_.begin(), present_.end(), 1}; }
    Iterator end() const { return {present_.end(), present_.end(), last_ + int64_t{1}}; }

private:
    Instances present_;
    int failures_ = 0;
    int last_;
};

// An array as a numbered list, its elements carried ("max_instance" the count; {"max_instance": 0} for anything but an
// array), and back: entries carried, {} for a missing number.
Json list_of_elements(json_t* array);
Json elements_of_list(json_t* list, const Report& report, int& failures);

// A text cut at every separator, as a numbered list of the pieces. Nothing between two separators is no piece.
Json list_of_pieces(std::string_view text, char separator);

// A name list: an array of names against a numbered list of {"name": ...}. On the way back an entry without "name"
// appends nothing and a missing number "".
Json names_to_list(json_t* array);
Json list_to_names(json_t* list, const Report& report, int& failures);

namespace ways {
// Members that are lists as a whole; an absent one stores nothing.
int names_to_new(json_t* destination, Key key, json_t* value, const Report& report);
int names_to_old(json_t* destination, Key key, json_t* value, const Report& report);
int elements_to_new(json_t* destination, Key key, json_t* value, const Report& report);
int elements_to_old(json_t* destination, Key key, json_t* value, const Report& report);
}  // namespace ways

// To new: an array of names becomes a list of {"name": ...}. To old: back.
inline constexpr Word<ways::names_to_new, ways::names_to_old> name_list;
inline constexpr Word<ways::names_to_new, nullptr> name_list_to_new;
inline constexpr Word<nullptr, ways::names_to_old> name_list_to_old;
// To new: an array becomes a list of the same entries. To old: back.
inline constexpr Word<ways::elements_to_new, ways::elements_to_old> element_list;

}  // namespace kcnvrt

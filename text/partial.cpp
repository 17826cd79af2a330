#include "partial.h"

#include <algorithm>
#include <cstdio>

#include "messages.h"
#include "pointer.h"

namespace kcnvrt::text {

namespace {

// A converter may find the next problem only when the one before it is gone. After so many rounds the object or list
// around a problem goes with it, after as many more the one around that, so that the rounds are few in any document.
constexpr size_t kPatience = 16;

// A place that a message wants to be rid of.
struct Wish {
    std::string_view pointer;
    size_t message;
};

bool is_before(const Wish& left, const Wish& right) {
    const int order = compare_pointers(left.pointer, right.pointer);
    return order < 0 || (order == 0 && left.message < right.message);
}

// The places of the counted messages, less so many tokens, in order and none inside another. False when memory ends.
bool collect(const k_err_t* record, size_t levels, GrowingArray<Wish>& wishes) {
    for (size_t i = 0; i < k_err_count(record); ++i) {
        const char* const pointer = k_err_is_counted(record, i) != 0 ? k_err_pointer(record, i) : nullptr;
        if (pointer == nullptr) continue;
        std::string_view place = pointer;
        for (size_t level = 0; level < levels; ++level) place = parent_of(place);
        if (!place.empty() && !wishes.add({place, i})) return false;
    }
    std::sort(wishes.begin(), wishes.end(), is_before);
    size_t kept = 0;
    for (const Wish& wish : wishes)
        if (kept == 0 || !is_inside(wish.pointer, wishes[kept - 1].pointer)) wishes[kept++] = wish;
    wishes.cut(kept);
    return true;
}

// Where the elements were at first that arrays still have: a list of indexes for each array that has lost one.
class Origins {
public:
    Origins() : lists_{json_object()} {}

    bool take_out(json_t* array, size_t index) {
        json_t* const list = list_of(array);
        return list != nullptr && json_array_remove(list, index) == 0 && json_array_remove(array, index) == 0;
    }

    // The pointer that a value had at first, which is now at `pointer`; null when memory ends.
    const char* first_pointer(json_t* root, std::string_view pointer, KeptTexts& texts) const {
        Buffer original;
        json_t* value = root;
        bool has_memory = true;
        while (has_memory && !pointer.empty()) {
            const std::string_view token = take_token(pointer);
            has_memory = original.append("/") && append_origin(value, token, original);
            value = child_of(value, token);
        }
        return has_memory ? texts.keep(original.view()) : nullptr;
    }

private:
    struct Key {
        char text[2 * sizeof(void*) + 8];

        explicit Key(const json_t* array) { std::snprintf(text, sizeof text, "%p", static_cast<const void*>(array)); }
    };

    json_t* list_of(const json_t* array) {
        const Key key(array);
        json_t* const known = json_object_get(lists_.get(), key.text);
        if (known != nullptr) return known;
        Json list(json_array());
        for (size_t i = 0; i < json_array_size(array); ++i)
            if (json_array_append_new(list.get(), json_integer(static_cast<json_int_t>(i))) != 0) return nullptr;
        return json_object_set_new(lists_.get(), key.text, list.release()) == 0
                   ? json_object_get(lists_.get(), key.text)
                   : nullptr;
    }

    bool append_origin(const json_t* value, std::string_view token, Buffer& original) const {
        const json_t* const list = json_is_array(value) ? json_object_get(lists_.get(), Key(value).text) : nullptr;
        if (list == nullptr) return original.append(token);
        char digits[24];
        const json_int_t first = json_integer_value(json_array_get(list, index_of(token)));
        const int length = std::snprintf(digits, sizeof digits, "%" JSON_INTEGER_FORMAT, first);
        return original.append({digits, static_cast<size_t>(length)});
    }

    Json lists_;
};

class Taker {
public:
    Taker(const Subject& subject, bool shows_secrets, KeptTexts& texts, Part& part)
        : subject_{subject}, shows_secrets_{shows_secrets}, texts_{texts}, part_{part} {}

    // False when there is nothing to take out, or memory ends.
    bool take_out(const k_err_t* record, size_t round) {
        GrowingArray<Wish> wishes;
        size_t taken = part_.taken_out.size();
        if (!collect(record, round / kPatience, wishes)) return run_out_of_memory();
        for (const Wish& wish : wishes)
            if (!note(record, wish, round != 0)) return run_out_of_memory();
        // A pointer is made when it is asked for.
        if (k_err_is_complete(record) == 0) return run_out_of_memory();
        // From behind, so that the elements in front of one keep their indexes.
        for (size_t i = wishes.size(); i-- != 0;)
            if (!remove(wishes[i].pointer)) return run_out_of_memory();
        return part_.taken_out.size() != taken;
    }

    bool run_out_of_memory() {
        part_.has_memory = false;
        return false;
    }

private:
    // A member that is not there cannot be taken out.
    bool note(const k_err_t* record, const Wish& wish, bool is_new) {
        if (value_at(subject_.tree, wish.pointer) == nullptr) return true;
        const char* const pointer = origins_.first_pointer(subject_.tree, wish.pointer, texts_);
        const char* const why = is_new ? kept_message(record, wish.message) : nullptr;
        return pointer != nullptr && (why != nullptr || !is_new) && part_.taken_out.add({pointer, why});
    }

    // Beyond the life of the record.
    const char* kept_message(const k_err_t* record, size_t index) {
        const char* const message = message_of(record, index, subject_, shows_secrets_, texts_);
        return message == nullptr ? nullptr : texts_.keep(message);
    }

    bool remove(std::string_view pointer) {
        json_t* const container = value_at(subject_.tree, parent_of(pointer));
        const std::string_view token = last_token_of(pointer);
        if (child_of(container, token) == nullptr) return true;
        if (json_is_array(container)) return origins_.take_out(container, index_of(token));
        return remove_member(container, token);
    }

    Subject subject_;
    bool shows_secrets_;
    KeptTexts& texts_;
    Part& part_;
    Origins origins_;
};

}  // namespace

void convert_part(const Conversion& conversion, const Subject& subject, const k_err_t* record, bool shows_secrets,
                  KeptTexts& texts, Part& part) {
    Taker taker(subject, shows_secrets, texts, part);
    Record latest;
    for (size_t round = 0; taker.take_out(latest ? latest.get() : record, round); ++round) {
        Record next(k_err_new());
        k_err_keep_printed(next.get());
        if (next) part.converted.reset(conversion.convert(conversion.context, subject.tree, next.get()));
        if (k_err_is_complete(next.get()) == 0) {
            part.converted.reset();
            taker.run_out_of_memory();
            return;
        }
        if (part.converted) return;
        latest = std::move(next);
    }
}

}  // namespace kcnvrt::text

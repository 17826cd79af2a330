#include "partial.h"

#include <algorithm>

#include "basis/sort.h"
#include "json/pointer.h"
#include "messages.h"

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
    sort(wishes.begin(), wishes.end(), is_before);
    size_t kept = 0;
    for (const Wish& wish : wishes)
        if (kept == 0 || !is_inside(wish.pointer, wishes[kept - 1].pointer)) wishes[kept++] = wish;
    wishes.cut(kept);
    return true;
}

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
        Buffer original;
        const bool has_pointer = part_.origins.append_first_pointer(subject_.tree, wish.pointer, original);
        const char* const pointer = has_pointer ? texts_.keep(original.view()) : nullptr;
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
        if (json_is_array(container)) return part_.origins.take_out(container, index_of(token));
        return remove_member(container, token);
    }

    Subject subject_;
    bool shows_secrets_;
    KeptTexts& texts_;
    Part& part_;
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

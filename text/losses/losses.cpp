// There and back, and a comparison: what does not come back may still be in the other layout, which one direction knows
// and the other does not, so that what the conversion does not use is found by converting changed copies.
#include "losses/losses.h"

#include <algorithm>
#include <charconv>

#include "basis/sort.h"
#include "json/pointer.h"
#include "losses/comparison.h"
#include "losses/unused.h"
#include "messages.h"
#include "partial.h"
#include "shown_value.h"

namespace kcnvrt::text {

namespace {

// A conversion as a partial one asks for it.
struct Again {
    CounterCheck& check;
    Way way;
};

json_t* convert_again(const void* context, json_t* tree, k_err_t* record) {
    const Again& again = *static_cast<const Again*>(context);
    return again.check.convert(again.way, tree, record);
}

bool is_before(const Piece& left, const Piece& right) {
    return left.pointer < right.pointer;
}

bool has(const GrowingArray<Piece>& sorted, std::string_view pointer) {
    const Piece* const found =
        std::partition_point(sorted.begin(), sorted.end(), [=](const Piece& piece) { return piece.pointer < pointer; });
    return found != sorted.end() && found->pointer == pointer;
}

// A number or a text as text, in `digits` where it needs room; empty of anything else.
std::string_view characters_of(const json_t* value, char (&digits)[24]) {
    if (json_is_string(value)) return {json_string_value(value), json_string_length(value)};
    if (!json_is_integer(value)) return {};
    const char* const end = std::to_chars(digits, digits + sizeof digits, json_integer_value(value)).ptr;
    return {digits, static_cast<size_t>(end - digits)};
}

// Whether only the beginning of a text or a number came back.
bool is_cut(const json_t* before, const json_t* after) {
    char digits[24];
    char digits_after[24];
    const std::string_view whole = characters_of(before, digits);
    const std::string_view rest = characters_of(after, digits_after);
    return !rest.empty() && rest.size() < whole.size() && whole.starts_with(rest);
}

class Search {
public:
    Search(json_t* root, CounterCheck& check, k_text_result_t& result)
        : check_{check}, result_{result}, source_{root} {}

    // What is converted, at first the whole text. False when nothing is, or memory ends.
    bool convert_there(const Source& text, bool notes_part) {
        if (!check_.convert(source_, there_)) return run_out_of_memory();
        if (there_.tree) return true;
        reduced_ = deep_copy(source_);
        if (!reduced_ || !take_part(check_.way(), reduced_.get(), there_, part_)) return run_out_of_memory();
        if (notes_part) add_notes(text, {reduced_.get()}, part_, result_);
        if (!part_.converted) return false;
        source_ = reduced_.get();
        return check_.convert(source_, there_) || run_out_of_memory();
    }

    bool find() {
        GrowingArray<Piece> pieces;
        const bool has_memory = convert_back() && compare() && collect(pieces) && find_unused(pieces) &&
                                add_differences() && add_unused(pieces);
        return has_memory || run_out_of_memory();
    }

private:
    bool run_out_of_memory() {
        result_.run_out_of_memory();
        return false;
    }

    bool take_part(const Way& way, json_t* tree, const Outcome& rejected, Part& part) {
        const Again again = {check_, way};
        KeptTexts& texts = result_.texts;
        convert_part({convert_again, &again}, {tree}, rejected.record.get(), result_.shows_secrets, texts, part);
        return part.has_memory;
    }

    // What is rejected on the way back does not come back.
    bool convert_back() {
        Outcome back;
        if (!check_.convert(check_.way().back(), there_.tree.get(), back)) return false;
        back_ = std::move(back.tree);
        if (back_) return true;
        Part part;
        const Json copy = deep_copy(there_.tree.get());
        if (!copy || !take_part(check_.way().back(), copy.get(), back, part)) return false;
        back_ = part.converted ? std::move(part.converted) : Json(json_object());
        return back_ != nullptr;
    }

    bool compare() {
        bool is_doubted = false;
        return comparison_.run(source_, back_.get()) && doubt_moves(is_doubted) &&
               (!is_doubted || comparison_.run(source_, back_.get()));
    }

    // A list makes a difference to what comes back of it. What looks like its entries may have come from elsewhere.
    bool doubt_moves(bool& is_doubted) {
        GrowingArray<Piece> lists;
        for (const Difference& each : comparison_.differences()) {
            const std::string_view list = parent_of(each.pointer);
            const bool is_known = !lists.is_empty() && is_inside(list, lists.last().pointer);
            if (each.kind != K_TEXT_RENUMBERED || is_known) continue;
            if (!lists.add({list, value_at(source_, list)})) return false;
        }
        if (lists.is_empty()) return true;
        Outcome before;
        check_.go_there_and_back(true);
        UnusedPieces unused(check_, source_, before);
        const bool has_memory = check_.convert(source_, before) && (!before.tree || unused.find_whole(lists));
        check_.go_there_and_back(false);
        for (const Piece& list : unused.found()) {
            is_doubted = true;
            if (!comparison_.keep_order(list.pointer)) return false;
        }
        return has_memory;
    }

    // The places that hold something of which nothing comes back.
    bool collect(GrowingArray<Piece>& pieces) const {
        for (const Difference& each : comparison_.differences()) {
            const bool is_gone = each.kind == K_TEXT_DROPPED || (each.kind == K_TEXT_CHANGED && !is_leaf(each.before));
            if (is_gone && !pieces.add({each.pointer, each.before})) return false;
        }
        return true;
    }

    bool find_unused(const GrowingArray<Piece>& pieces) {
        UnusedPieces unused(check_, source_, there_);
        if (!unused.find(pieces)) return false;
        for (const Piece& piece : unused.found()) {
            const char* const pointer = result_.texts.keep(piece.pointer);
            if (pointer == nullptr || !unused_.add({{pointer, piece.pointer.size()}, piece.value})) return false;
        }
        sort(unused_.begin(), unused_.end(), is_before);
        return true;
    }

    bool add_differences() {
        for (const Difference& each : comparison_.differences())
            if (!add(kind_of(each), each.pointer, each.before, each.after)) return false;
        return true;
    }

    uint32_t kind_of(const Difference& difference) const {
        if (difference.kind == K_TEXT_DROPPED && !has(unused_, difference.pointer)) return K_TEXT_CHANGED;
        if (difference.kind == K_TEXT_CHANGED && is_cut(difference.before, difference.after)) return K_TEXT_CUT;
        return difference.kind;
    }

    // What is not used inside something that is.
    bool add_unused(GrowingArray<Piece>& pieces) {
        sort(pieces.begin(), pieces.end(), is_before);
        for (const Piece& piece : unused_) {
            if (!has(pieces, piece.pointer) && !add(K_TEXT_DROPPED, piece.pointer, piece.value, nullptr)) return false;
        }
        return true;
    }

    bool add(uint32_t kind, std::string_view pointer, const json_t* before, const json_t* after) {
        Buffer original;
        Loss loss = {};
        loss.kind = kind;
        if (!part_.origins.append_first_pointer(source_, pointer, original)) return false;
        loss.pointer = result_.texts.keep(original.view());
        if (before != nullptr) loss.before = shown(before, pointer);
        if (after != nullptr) loss.after = shown(after, pointer);
        const bool is_shown =
            (before == nullptr || loss.before != nullptr) && (after == nullptr || loss.after != nullptr);
        return loss.pointer != nullptr && is_shown && result_.losses.add(loss);
    }

    const char* shown(const json_t* value, std::string_view pointer) {
        return shown_value(value, pointer, result_.shows_secrets, result_.texts);
    }

    CounterCheck& check_;
    k_text_result_t& result_;
    json_t* source_;
    Json reduced_;
    Part part_;
    Outcome there_;
    Json back_;
    Comparison comparison_;
    GrowingArray<Piece> unused_;
};

// False when memory ends.
bool place(const Source& text, GrowingArray<Loss>& losses) {
    GrowingArray<Sought> sought;
    for (const Loss& loss : losses) {
        Sought wanted;
        wanted.pointer = loss.pointer;
        if (!sought.add(wanted)) return false;
    }
    if (sought.is_empty()) return true;
    if (!find_values(text.text, sought.data(), sought.size())) return false;
    for (size_t i = 0; i < losses.size(); ++i) {
        losses[i].spot = sought[i].spot;
        losses[i].length = sought[i].length;
    }
    sort(losses.begin(), losses.end(), [](const Loss& left, const Loss& right) {
        return left.spot.offset != right.spot.offset ? left.spot.offset < right.spot.offset : left.kind < right.kind;
    });
    return true;
}

}  // namespace

bool find_losses(const Source& text, json_t* root, CounterCheck& check, bool notes_part, k_text_result_t& result) {
    {
        const ForAWhile for_a_while(check.memory());
        Search search(root, check, result);
        if (!search.convert_there(text, notes_part) || !search.find()) return false;
    }
    if (!place(text, result.losses)) result.run_out_of_memory();
    return result.status != K_TEXT_OUT_OF_MEMORY;
}

}  // namespace kcnvrt::text

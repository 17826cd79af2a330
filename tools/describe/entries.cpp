// How a numbered list reads the names of its entries: one of them is put there under other names.
#include <algorithm>
#include <cstdlib>

#include "asker.h"
#include "changes.h"
#include "numbered_list.h"

namespace describe {

namespace {

const char* const kNoNumber = "of no number";
const char* const kHigh = "70000";

const Message* first_message(const Answer& answer) {
    return answer.messages.empty() ? nullptr : &answer.messages.front();
}

std::string replaced(std::string text, const std::string& what, const std::string& with) {
    const size_t found = text.find(what);
    return found == std::string::npos ? text : text.replace(found, what.size(), with);
}

json_int_t last_number_in(const std::string& text) {
    const size_t end = text.find_last_of("0123456789");
    if (end == std::string::npos) return 0;
    const size_t before = text.find_last_not_of("0123456789", end);
    return std::strtoll(text.c_str() + (before == std::string::npos ? 0 : before + 1), nullptr, 10);
}

}  // namespace

class Asker::Entries {
public:
    Entries(Asker& asker, const Subject& subject, const Names& list) : asker_{asker}, subject_{subject}, list_{list} {
        const char* name;
        json_t* member;
        json_object_foreach(at(subject.document, list), name, member) {
            if (!is_number(name)) continue;
            // The largest has most in it that could be converted.
            if (entry_ == nullptr || text_of(member).size() > text_of(entry_.get()).size())
                entry_.reset(json_incref(member));
            last_ = std::max(last_, static_cast<json_int_t>(std::strtoll(name, nullptr, 10)));
        }
        if (entry_ == nullptr) entry_.reset(json_object());
    }

    // Null where they are numbered from 1, and nothing more is to be said.
    Tree told() {
        if (!with(std::to_string(last_ + 1)).is_silent()) return nullptr;
        none_ = with_only(nullptr);
        Tree told{json_object()};
        tell_of_names(told.get());
        if (json_object_size(told.get()) == 0 && is_converted("0"))
            json_object_set_new(told.get(), "from", json_integer(0));
        tell_of_bound(told.get());
        if (are_numbered_anew()) json_object_set_new(told.get(), "numbered", json_string("anew"));
        return json_object_size(told.get()) == 0 ? nullptr : std::move(told);
    }

private:
    Answer with(const std::string& name) {
        Names names = list_;
        names.push_back(name);
        return asker_.answer_with(subject_, names, entry_.get());
    }

    // With no entry but this one.
    Answer with_only(const char* name) {
        const Tree list{json_copy(at(subject_.document, list_))};
        const char* other;
        void* next;
        json_t* member;
        json_object_foreach_safe(list.get(), next, other, member) if (is_number(other))
            json_object_del(list.get(), other);
        if (name != nullptr) json_object_set(list.get(), name, entry_.get());
        return asker_.answer_with(subject_, list_, list.get());
    }

    // Whether the entry is read under that name, and does not only come with its list.
    bool is_converted(const char* name) {
        const Answer given = with_only(name);
        if (!none_.is_silent() || !given.is_silent()) return false;
        const std::set<Names> places = changes(none_.result.get(), given.result.get());
        return std::any_of(places.begin(), places.end(), [&](const Names& place) {
            return json_equal(at(given.result.get(), place), entry_.get()) == 0;
        });
    }

    // What the message says is tried.
    void tell_of_bound(json_t* told) {
        const Answer given = with(kHigh);
        const Message* const message = first_message(given);
        if (message == nullptr) return;
        const json_int_t most = last_number_in(message->text);
        if (!with(std::to_string(most)).is_silent() || with(std::to_string(most + 1)).is_silent()) return;
        json_object_set_new(told, "to", json_integer(most));
        add_message(told, replaced(message->text, kHigh, "N"));
    }

    void tell_of_names(json_t* told) {
        const Answer given = with(kNoNumber);
        if (is_converted(kNoNumber)) json_object_set_new(told, "names", json_string("any"));
        if (given.is_silent() || first_message(given) == nullptr) return;
        json_object_set_new(told, "names", json_string("numbers"));
        add_message(told, replaced(first_message(given)->text, kNoNumber, "TEXT"));
    }

    static void add_message(json_t* told, const std::string& text) {
        if (json_object_get(told, "says") == nullptr) json_object_set_new(told, "says", json_array());
        json_array_append_new(json_object_get(told, "says"), string(text).release());
    }

    bool are_numbered_anew() {
        const Answer first = with_only("1");
        const Answer third = with_only("3");
        return none_.is_silent() && first.is_silent() && third.is_silent() &&
               json_equal(first.result.get(), third.result.get()) != 0 &&
               json_equal(first.result.get(), none_.result.get()) == 0;
    }

    Asker& asker_;
    const Subject& subject_;
    const Names& list_;
    Tree entry_;
    Answer none_;  // without entries
    json_int_t last_ = 0;
};

Tree Asker::entries_of(const Subject& subject, const Names& list) {
    return Entries{*this, subject, list}.told();
}

}  // namespace describe

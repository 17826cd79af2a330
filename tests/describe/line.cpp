// What a document is asked: to the other layout, and back.
#include "line.h"

#include <cstdio>

#include "changes.h"
#include "sections.h"

namespace describe {

namespace {

std::string escaped(const Names& names) {
    std::string pointer;
    for (const std::string& name : names) {
        pointer += '/';
        for (const char character : name)
            pointer += character == '~' ? "~0" : character == '/' ? "~1" : std::string{character};
    }
    return pointer;
}

Tree pointers_to(const std::set<Names>& places) {
    Tree list{json_array()};
    for (const Names& place : places) json_array_append_new(list.get(), json_string(escaped(place).c_str()));
    return list;
}

bool is_same(json_t* one, json_t* other) {
    return one == nullptr ? other == nullptr : json_equal(one, other) != 0;
}

// What was put there and came back is the whole of what is asked of a damaged document.
Tree lost(const Document& document, const Answer& there) {
    if (there.is_silent() && document.is_kept) return Tree{json_array()};
    const Tree full = with_users(document.side, Tree{json_copy(document.root.get())});
    const Answer forth = convert(document.side, full.get(), document.flags);
    if (!there.is_silent() || !forth.is_silent()) return Tree{json_null()};
    const Answer back = convert(other(document.side), forth.result.get(), document.flags);
    if (!back.is_silent()) return Tree{json_null()};
    const bool is_damage_kept = !document.damaged.empty() && is_same(at(document.root.get(), document.damaged),
                                                                     at(back.result.get(), document.damaged));
    if (is_damage_kept) return Tree{json_array()};
    return pointers_to(changes(document.root.get(), back.result.get()));
}

}  // namespace

void print_line(const Document& document) {
    const Answer answer = convert(document.side, document.root.get(), document.flags);
    Tree messages{json_array()};
    for (const Message& message : answer.messages)
        json_array_append_new(messages.get(), json_pack("[s, s]", message.pointer.c_str(), message.text.c_str()));
    Tree line{json_pack("{s:s, s:O, s:o, s:o, s:b}", "layout", name_of(document.side), "document", document.root.get(),
                        "messages", messages.release(), "lost", lost(document, answer).release(), "broken",
                        document.is_broken)};
    if (!document.damaged.empty())
        json_object_set_new(line.get(), "at", json_string(escaped(document.damaged).c_str()));
    std::printf("%s\n", text_of(line.get()).c_str());
}

}  // namespace describe

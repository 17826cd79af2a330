// losses_in_lines.h: losses of a text in one line each.
#pragma once

#include <string>
#include <vector>

#include "ask.h"

using Lines = std::vector<std::string>;

inline const char* name_of_kind(uint32_t kind) {
    constexpr const char* kNames[] = {"?", "dropped", "cut", "changed", "defaulted", "renumbered"};
    return kind < std::size(kNames) ? kNames[kind] : "?";
}

// "dropped /a/b: 1", "changed /a/b: "1" -> 1", "defaulted /a: -> {"b": 2}".
inline Lines losses_of(const Result& result) {
    Lines lines;
    k_text_loss_t loss = {};
    loss.size = sizeof loss;
    for (size_t i = 0; k_text_loss(result.get(), i, &loss) == 0; ++i) {
        std::string line = std::string(name_of_kind(loss.kind)) + " " + loss.pointer + ":";
        if (loss.before != nullptr) line += std::string(" ") + loss.before;
        if (loss.after != nullptr) line += std::string(" -> ") + loss.after;
        lines.push_back(line);
    }
    return lines;
}

inline Result ask_for_losses(uint32_t flags, std::string_view text, uint32_t operation = K_TEXT_LOSSES) {
    k_text_request_t request = request_for(operation, text);
    request.flags = flags;
    return ask(request);
}

inline Lines losses_to_new(std::string_view text) {
    return losses_of(ask_for_losses(K_TEXT_TOWARDS_NEW, text));
}

inline Lines losses_to_old(std::string_view text) {
    return losses_of(ask_for_losses(K_TEXT_TOWARDS_OLD, text));
}

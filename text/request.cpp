#include "request.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "json/pointer.h"

namespace kcnvrt::text {

namespace {

bool is_zero(const char* bytes, size_t count) {
    return std::all_of(bytes, bytes + count, [](char byte) { return byte == 0; });
}

const char* check_text(const k_text_request_t& request) {
    if (request.text == nullptr) return "the request has no text";
    if (request.other == nullptr && request.other_length != 0) return "there is a length and no second text";
    return nullptr;
}

const char* check_section(const k_text_request_t& request, Takes takes) {
    if (takes == Takes::kNeeded && request.section == nullptr) return "the operation needs the name of a section";
    if (takes == Takes::kNone && request.section != nullptr) return "the operation takes no name of a section";
    return nullptr;
}

const char* check_other(const k_text_request_t& request, Takes takes) {
    if (takes == Takes::kNeeded && request.other == nullptr) return "the operation needs a second text";
    if (takes == Takes::kNone && request.other != nullptr) return "the operation takes no second text";
    return nullptr;
}

const char* check_pointer(const k_text_request_t& request, Takes takes) {
    if (takes == Takes::kNone) return request.pointer == nullptr ? nullptr : "the operation takes no pointer";
    if (request.pointer == nullptr) return "the operation needs a pointer";
    return is_json_pointer(request.pointer) ? nullptr
                                            : "the pointer is no JSON Pointer, which is empty or begins with /";
}

const char* check_flags(const k_text_request_t& request, const Allowed& allowed) {
    const uint32_t flags = K_TEXT_SHOW_SECRETS | allowed.flags |
                           (request.other != nullptr ? allowed.flags_with_other : allowed.flags_without_other);
    return (request.flags & ~flags) != 0 ? "the operation does not take these flags" : nullptr;
}

const char* check_together(const k_text_request_t& request) {
    constexpr uint32_t kBothWays = K_TEXT_TOWARDS_NEW | K_TEXT_TOWARDS_OLD;
    constexpr uint32_t kStrictPart = K_TEXT_STRICT | K_TEXT_PARTIAL;
    if ((request.flags & kBothWays) == kBothWays) return "the request has two directions";
    if ((request.flags & kStrictPart) == kStrictPart) return "a strict request takes no part of a text";
    return nullptr;
}

const char* check_indent(const k_text_request_t& request) {
    const bool fits = request.indent >= K_TEXT_COMPACT && request.indent <= K_TEXT_DEEPEST_INDENT;
    return fits ? nullptr : "the indent is neither -1 nor from 0 to 31";
}

}  // namespace

const char* copy_request(const k_text_request_t* given, k_text_request_t& request) {
    if (given == nullptr) return "there is no request";
    if (given->size < sizeof request) return "the size of the request is too small";
    // A caller of a later version may have more members, and must not use them.
    if (!is_zero(reinterpret_cast<const char*>(given) + sizeof request, given->size - sizeof request))
        return "the request has members that this version does not know";
    request = *given;
    return nullptr;
}

const char* check_request(const k_text_request_t& request, const Allowed& allowed) {
    const char* const reasons[] = {
        check_text(request),
        check_section(request, allowed.section),
        check_other(request, allowed.other),
        check_pointer(request, allowed.pointer),
        check_flags(request, allowed),
        check_together(request),
        check_indent(request),
    };
    const auto found = std::find_if(std::begin(reasons), std::end(reasons), [](const char* why) { return why; });
    return found == std::end(reasons) ? nullptr : *found;
}

}  // namespace kcnvrt::text

#include "frame/json.h"

#include <charconv>
#include <cstdlib>
#include <new>

namespace kcnvrt {

Decimal::Decimal(int64_t number) {
    char* end = std::to_chars(text_, text_ + sizeof text_ - 1, number).ptr;
    *end = '\0';
    length_ = static_cast<uint8_t>(end - text_);
}

namespace {

// The order of strcmp: by unsigned bytes. For qsort, which is in libc: std::sort is a kilobyte of code for each type.
int in_byte_order(const void* left, const void* right) {
    return static_cast<const Member*>(left)->name.view().compare(static_cast<const Member*>(right)->name.view());
}

}  // namespace

SortedMembers::SortedMembers(json_t* object) : members_{reinterpret_cast<Member*>(inline_)} {
    const size_t size = json_object_size(object);
    if (size > kInline) {
        void* memory = size > SIZE_MAX / sizeof(Member) ? nullptr : std::malloc(size * sizeof(Member));
        if (memory == nullptr) {
            failed_ = true;
            return;
        }
        members_ = static_cast<Member*>(memory);
    }
    for (const Member member : members(object)) new (members_ + count_++) Member{member};
    std::qsort(members_, count_, sizeof(Member), in_byte_order);
}

SortedMembers::~SortedMembers() {
    if (members_ != reinterpret_cast<Member*>(inline_)) std::free(members_);
}

}  // namespace kcnvrt

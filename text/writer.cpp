#include "writer.h"

namespace kcnvrt::text {

namespace {

int append(const char* bytes, size_t count, void* buffer) {
    return static_cast<Buffer*>(buffer)->append({bytes, count}) ? 0 : -1;
}

}  // namespace

bool write(const json_t* value, Layout layout, Buffer& buffer) {
    const size_t flags = layout.compact ? JSON_COMPACT : JSON_INDENT(layout.indent);
    const size_t start = buffer.size();
    const bool written = json_dump_callback(value, append, &buffer, flags | JSON_ENCODE_ANY) == 0;
    if (!written) buffer.cut(start);
    return written;
}

}  // namespace kcnvrt::text

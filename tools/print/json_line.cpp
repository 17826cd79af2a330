#include "print/json_line.h"

#include "print/printable.h"

namespace kcnvrt {

JsonLine& JsonLine::json(const char* name, std::string_view value) {
    line_.append(line_.empty() ? "{\"" : ", \"").append(name).append("\": ").append(value);
    return *this;
}

JsonLine& JsonLine::text(const char* name, std::string_view text) {
    json(name, "");
    append_json_string(line_, text);
    return *this;
}

JsonLine& JsonLine::text_or_null(const char* name, const char* value) {
    return value == nullptr ? json(name, "null") : text(name, value);
}

JsonLine& JsonLine::number(const char* name, std::size_t number) {
    return json(name, std::to_string(number));
}

JsonLine& JsonLine::place(const char* name, std::size_t place) {
    return place == 0 ? json(name, "null") : number(name, place);
}

void JsonLine::append_to(std::string& lines) const {
    lines.append(line_).append("}\n");
}

}  // namespace kcnvrt

// The port list of a layer-2 interface: "Ports:1,2,3.1;WiFi:1" against a numbered list of "Port1", "Port2", "Port3.1",
// "WiFi1". A single interface name, without a colon, is itself in both layouts.
//
// Numbers are read with the formats of scanf. What a format does not match is dropped, and is no failure unless it is
// the only name. Stored configurations depend on every detail of it, so the formats stay as they are.
#include "ifaces/port_list.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <utility>

#include "frame/growing_text.h"
#include "frame/list.h"
#include "frame/number.h"

namespace kcnvrt::ways {

namespace {

// A kind of port.
struct Kind {
    char prefix[5];  // of its names
    char label[7];   // of its part of the compact text
    char part[11];   // the format of what follows the label: numbers and commas
    char single[9];  // the format of the number of a name that is alone in its list
};

// clang-format off
//                               prefix  label     part          single
constexpr Kind kPorts         = {"Port", "Ports:", "%63[0-9.,]", "%7[0-9.]"};
constexpr Kind kRadios        = {"WiFi", "WiFi:",  "%63[0-9,]",  "%7[0-9]"};
// The other spelling of radios. Both exist on devices, and neither is made into the other.
constexpr Kind kCapitalRadios = {"WIFI", "WIFI:",  "%63[0-9,]",  "%7[0-9]"};
// clang-format on

// The format of the number of a name that is one of several: whatever follows the prefix.
constexpr char kListed[] = "%7s";

constexpr size_t kLongestPart = 63;
constexpr size_t kLongestNumber = 7;

// How many characters a format takes at most.
constexpr size_t width_of(const char* format) {
    size_t width = 0;
    while (is_digit(*++format)) width = width * 10 + static_cast<size_t>(*format - '0');
    return width;
}

constexpr bool has_known_widths(const Kind& kind) {
    return width_of(kind.part) == kLongestPart && width_of(kind.single) == kLongestNumber;
}
static_assert(has_known_widths(kPorts) && has_known_widths(kRadios) && has_known_widths(kCapitalRadios));
static_assert(width_of(kListed) == kLongestNumber);

// Towards the new layout.

constexpr size_t kLongestName = 63;

Json entry_of(Json name) {
    Json entry = object();
    set(entry.get(), "name", std::move(name));
    return entry;
}

// Splits in place; empty pieces are no names.
void add_names(ListBuilder& list, const char* prefix, char* numbers) {
    char* rest = nullptr;
    for (char* number = strtok_r(numbers, ",", &rest); number != nullptr; number = strtok_r(nullptr, ",", &rest)) {
        char name[sizeof "Port" + kLongestPart];
        const int length = std::snprintf(name, sizeof name, "%s%s", prefix, number);
        list.add(entry_of(string(std::string_view{name, std::min(static_cast<size_t>(length), kLongestName)})));
    }
}

// True when the part is there, even if it names nothing.
bool add_part(ListBuilder& list, const Kind& kind, const char* text) {
    const char* const start = std::strstr(text, kind.label);
    char numbers[kLongestPart + 1];
    if (start == nullptr || std::sscanf(start + std::strlen(kind.label), kind.part, numbers) != 1) return false;
    add_names(list, kind.prefix, numbers);
    return true;
}

Json names_of(json_t* ports) {
    const char* const text = text_of(ports);
    ListBuilder names;
    if (std::strchr(text, ':') == nullptr) {
        names.add(entry_of(share(ports)));
        return names.finish();
    }
    add_part(names, kPorts, text);
    if (!add_part(names, kRadios, text)) add_part(names, kCapitalRadios, text);
    return names.finish();
}

// Towards the old layout.

// A name that is alone in its list is compared with the kinds in another order than one of several.
constexpr const Kind* kSingleOrder[] = {&kPorts, &kRadios, &kCapitalRadios};
constexpr const Kind* kListedOrder[] = {&kPorts, &kCapitalRadios, &kRadios};

// The first kind whose prefix the name contains, wherever it is.
const Kind* kind_of(const char* name, const Kind* const (&order)[3]) {
    for (const Kind* const kind : order)
        if (std::strstr(name, kind->prefix) != nullptr) return kind;
    return nullptr;
}

// The number behind the prefix, which must begin the name: "xPort1" is a port without a number.
bool read_number(const char* name, const Kind& kind, const char* format, char (&number)[kLongestNumber + 1]) {
    const size_t prefix = std::strlen(kind.prefix);
    return std::strncmp(name, kind.prefix, prefix) == 0 && std::sscanf(name + prefix, format, number) == 1;
}

// A radio that is the client of another access point is an interface of its own. Only a name that is alone is looked at
// so: in a longer list "WiFiClient" is a radio with the number "Client".
bool is_client(const Kind& kind, const char* name) {
    constexpr std::string_view kClient = "WiFiClient";
    return &kind != &kPorts && std::strncmp(name, kClient.data(), kClient.size()) == 0;
}

int single_to_old(json_t* destination, Key key, json_t* entry, const Report& report) {
    json_t* const value = get(entry, "name");
    const char* const name = text_of(value);
    if (name == nullptr) return 0;
    const Kind* const kind = kind_of(name, kSingleOrder);
    if (kind == nullptr || is_client(*kind, name)) {
        kcnvrt::carry(destination, key, value);
        return 0;
    }
    char number[kLongestNumber + 1];
    if (!read_number(name, *kind, kind->single, number))
        return report.fail_at(entry, "name", "Error parsing port number! Port name is %s", name);
    char part[sizeof kind->label + kLongestNumber];
    std::snprintf(part, sizeof part, "%s%s", kind->label, number);
    set(destination, key, string(part));
    return 0;
}

// A part of the compact list as it grows. Its label is that of its first number, whatever the others are.
class GrowingPart {
public:
    bool is_empty() const { return text_ == nullptr; }

    void add(const char* label, const char* number) {
        if (text_ == nullptr) {
            text_.reset(string_init_chars(label));
            keep(text_ != nullptr);
        } else {
            keep(string_add(text_.get(), ",") == 0);
        }
        keep(string_add(text_.get(), number) == 0);
    }

    // This part, then the other, which is emptied; a separator only between two.
    void join(GrowingPart& other) {
        if (!is_empty() && !other.is_empty()) keep(string_add(text_.get(), ";") == 0);
        if (is_empty())
            std::swap(text_, other.text_);
        else
            keep(string_add_string_new(text_.get(), other.text_.release()) == 0);
        keep(other.complete_);
    }

    // Null when nothing was added, or when memory ran out: half a list would be a wrong one.
    const char* text() const { return is_empty() || !complete_ ? nullptr : text_->text; }

private:
    void keep(bool added) { complete_ = complete_ && added; }

    GrowingText text_;
    bool complete_ = true;
};

int list_to_old(json_t* destination, Key key, json_t* list) {
    GrowingPart ports;
    GrowingPart radios;
    const Instances instances{list};
    for (const auto [number, entry] : instances) {
        const char* const name = text_of(entry, "name");
        const Kind* const kind = name == nullptr ? nullptr : kind_of(name, kListedOrder);
        char read[kLongestNumber + 1];
        if (kind == nullptr || !read_number(name, *kind, kListed, read)) continue;
        (kind == &kPorts ? ports : radios).add(kind->label, read);
    }
    ports.join(radios);
    set(destination, key, checked_string(ports.text()));
    return 0;
}

}  // namespace

int ports_to_new(json_t* destination, Key key, json_t* value, const Report&) {
    if (json_is_string(value)) set(destination, key, names_of(value));
    return 0;
}

int ports_to_old(json_t* destination, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    // Two members are taken as one entry and "max_instance".
    if (json_object_size(value) == 2) return single_to_old(destination, key, entry_at(value, 1), report);
    return list_to_old(destination, key, value);
}

}  // namespace kcnvrt::ways

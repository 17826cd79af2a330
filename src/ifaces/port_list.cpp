// The port list of a layer-2 interface: "Ports:1,2,3.1;WiFi:1" against a numbered list of "Port1", "Port2", "Port3.1",
// "WiFi1". A single interface name, without a colon, is itself in both layouts.
//
// The scan formats decide what is understood, in both directions; a list of one name has others than a longer one.
#include "ifaces/port_list.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <utility>

#include "frame/growing_text.h"
#include "frame/list.h"

namespace kcnvrt::ways {

namespace {

// Towards the new layout: a part of the compact list.

constexpr size_t kLongestPart = 63;  // the width in the formats
constexpr size_t kLongestName = 63;

struct Part {
    const char* label;
    const char* scan;
    const char* prefix;  // of each name
};

constexpr Part kPorts = {"Ports:", "Ports:%63[0-9.,]", "Port"};
constexpr Part kRadios = {"WiFi:", "WiFi:%63[0-9,]", "WiFi"};
// The other spelling of radios. Both exist on devices, and neither is made into the other.
constexpr Part kCapitalRadios = {"WIFI:", "WIFI:%63[0-9,]", "WIFI"};

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
bool add_part(ListBuilder& list, const Part& part, const char* text) {
    const char* const start = std::strstr(text, part.label);
    char numbers[kLongestPart + 1];
    if (start == nullptr || std::sscanf(start, part.scan, numbers) != 1) return false;
    add_names(list, part.prefix, numbers);
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

// Towards the old layout: a name read back.

constexpr size_t kLongestNumber = 7;  // the width in the formats

struct NameForm {
    const char* prefix;
    const char* scan;
    const char* label;  // of the part that the number goes to
};

constexpr const char* kPortLabel = "Ports:";

// In the order in which a name is looked at, which differs as the formats do.
constexpr NameForm kSingleNames[] = {
    {"Port", "Port%7[0-9.]", kPortLabel},
    {"WiFi", "WiFi%7[0-9]", "WiFi:"},
    {"WIFI", "WIFI%7[0-9]", "WIFI:"},
};
constexpr NameForm kListedNames[] = {
    {"Port", "Port%7s", kPortLabel},
    {"WIFI", "WIFI%7s", "WIFI:"},
    {"WiFi", "WiFi%7s", "WiFi:"},
};

bool is_port(const NameForm& name) {
    return name.label == kPortLabel;
}

// The first that the text contains. It is scanned from the start all the same: "xPort1" is a port without a number.
const NameForm* kind_of(const NameForm (&names)[3], const char* text) {
    for (const NameForm& name : names)
        if (std::strstr(text, name.prefix) != nullptr) return &name;
    return nullptr;
}

// A client of someone else's radio is an interface of its own. Only a single name is looked at so: in a longer list
// "WiFiClient" is a radio numbered "Client".
bool is_client(const NameForm& name, const char* text) {
    constexpr std::string_view kClient = "WiFiClient";
    return !is_port(name) && std::strncmp(text, kClient.data(), kClient.size()) == 0;
}

int single_to_old(json_t* destination, Key key, json_t* name, const Report& report) {
    const char* const text = text_of(name);
    if (text == nullptr) return 0;
    const NameForm* const kind = kind_of(kSingleNames, text);
    if (kind == nullptr || is_client(*kind, text)) {
        kcnvrt::carry(destination, key, name);
        return 0;
    }
    char number[kLongestNumber + 1];
    if (std::sscanf(text, kind->scan, number) != 1)
        return report.fail("Error parsing port number! Port name is %s", text);
    char part[sizeof "Ports:" + kLongestNumber];
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
        const char* const text = text_of(entry, "name");
        const NameForm* const kind = text == nullptr ? nullptr : kind_of(kListedNames, text);
        char digits[kLongestNumber + 1];
        if (kind == nullptr || std::sscanf(text, kind->scan, digits) != 1) continue;
        (is_port(*kind) ? ports : radios).add(kind->label, digits);
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
    if (json_object_size(value) == 2) return single_to_old(destination, key, get(entry_at(value, 1), "name"), report);
    return list_to_old(destination, key, value);
}

}  // namespace kcnvrt::ways

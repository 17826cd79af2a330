// The interface list: one old object of interfaces that say their type, against one group of entries for each type.
#include <iterator>

#include "frame/list.h"
#include "ifaces/layer2.h"
#include "k_cnvrt.h"
#include "k_cnvrt/ifaces.h"

using namespace kcnvrt;

namespace {

enum class Layer2 : uint8_t { kBridge, kEthernet, k3g, kLte, kAtm, kAuto };

struct Layer2Type {
    Key type;  // the old "type", and the name of the new group
    Layer2ToNew to_new;
    Layer2ToOld to_old;
};

// Indexed by Layer2; groups are written in this order.
// clang-format off
constinit const Layer2Type kTypes[] = {
    // type        old to new        new to old
    {"bridge",   bridge_to_new,    bridge_to_old},
    {"ethernet", ethernet_to_new,  ethernet_to_old},
    {"3g",       modem_3g_to_new,  modem_3g_to_old},
    {"lte",      lte_to_new,       lte_to_old},
    {"atm",      atm_to_new,       atm_to_old},
    {"auto",     auto_to_new,      auto_to_old},
};
// clang-format on

constexpr size_t kTypeCount = std::size(kTypes);

// The order in which groups are read: of two interfaces with the same name the later one stays.
using enum Layer2;
constexpr Layer2 kOrderToOld[kTypeCount] = {kBridge, kEthernet, kAuto, k3g, kLte, kAtm};

// A type's row, or kTypeCount for a type that there is not.
size_t row_of(json_t* type) {
    size_t row = 0;
    while (row < kTypeCount && !is_text(type, kTypes[row].type.view())) ++row;
    return row;
}

struct Group {
    Json entries;
    uint32_t count = 0;

    json_t* get() {
        if (entries == nullptr) entries = object();
        return entries.get();
    }
};

}  // namespace

int k_cnvrt_get_sections_ifaces_from_old(json_t* source, json_t* destination, k_err_t* err) {
    int failures = 0;
    Group groups[kTypeCount];
    for (const auto [name, old_iface] : SortedMembers{source}) {
        const size_t row = row_of(get(old_iface, "type"));
        if (row == kTypeCount) continue;
        Group& group = groups[row];
        failures += kTypes[row].to_new(name, ++group.count, old_iface, group.get(), err);
    }
    for (size_t row = 0; row < kTypeCount; ++row) {
        Group& group = groups[row];
        if (group.count == 0) continue;
        set_max_instance(group.get(), group.count);
        set(destination, kTypes[row].type, std::move(group.entries));
    }
    return failures;
}

int k_cnvrt_get_sections_ifaces_from_new(json_t* source, json_t* destination, k_err_t* err) {
    int failures = 0;
    for (const Layer2 layer2 : kOrderToOld) {
        const Layer2Type& type = kTypes[static_cast<size_t>(layer2)];
        failures += type.to_old(get(source, type.type), destination, err);
    }
    return failures;
}

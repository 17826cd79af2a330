// The interface list: one old object of interfaces that say their type, against one group of entries for each type.
#include <iterator>

#include "frame/list.h"
#include "ifaces/layer2.h"
#include "ifaces/named_entries.h"
#include "ifaces/type_table.h"
#include "k_cnvrt.h"
#include "k_cnvrt/ifaces.h"

using namespace kcnvrt;

namespace {

enum class Layer2 : uint8_t { kBridge, kEthernet, k3g, kLte, kAtm, kAuto };

struct Layer2Type {
    Layer2 row;
    Key type;  // the old "type", and the name of the new group
    Layer2ToNew to_new;
    Layer2ToOld to_old;
};

using enum Layer2;

// Groups are written in this order.
// clang-format off
constexpr Layer2Type kTypes[] = {
    // row         type         old to new        new to old
    {kBridge,    "bridge",    bridge_to_new,    bridge_to_old},
    {kEthernet,  "ethernet",  ethernet_to_new,  ethernet_to_old},
    {k3g,        "3g",        modem_3g_to_new,  modem_3g_to_old},
    {kLte,       "lte",       lte_to_new,       lte_to_old},
    {kAtm,       "atm",       atm_to_new,       atm_to_old},
    {kAuto,      "auto",      auto_to_new,      auto_to_old},
};
// clang-format on
static_assert(has_each_type_once(kTypes));

constexpr size_t kTypeCount = std::size(kTypes);

// The order in which groups are read: of two interfaces with the same name the later one stays.
constexpr Layer2 kOrderToOld[kTypeCount] = {kBridge, kEthernet, kAuto, k3g, kLte, kAtm};
static_assert(takes_each_row_once(kOrderToOld));

// The row of a type, or kTypeCount for an unknown one.
size_t row_of(json_t* type) {
    size_t row = 0;
    while (row < kTypeCount && !is_text(type, kTypes[row].type.view())) ++row;
    return row;
}

// A group that says it has no entries is skipped.
int group_to_old(const Layer2Type& type, json_t* group, json_t* old_ifaces, k_err_t* err) {
    if (!has_instances(group)) return 0;
    return entries_to_old(group, "ifname_l2", type.type, old_ifaces,
                          [&](json_t* entry, json_t* old_iface) { return type.to_old(entry, old_iface, err); });
}

}  // namespace

int k_cnvrt_get_sections_ifaces_from_old(json_t* source, json_t* destination, k_err_t* err) {
    int failures = 0;
    ListBuilder groups[kTypeCount];
    for (const auto [name, old_iface] : SortedMembers{source}) {
        const size_t row = row_of(get(old_iface, "type"));
        if (row == kTypeCount) continue;
        Json entry = named_entry("ifname_l2", name);
        failures += kTypes[row].to_new(old_iface, entry.get(), err);
        groups[row].add(std::move(entry));
    }
    for (size_t row = 0; row < kTypeCount; ++row)
        if (groups[row].count() > 0) set(destination, kTypes[row].type, groups[row].finish());
    return failures;
}

int k_cnvrt_get_sections_ifaces_from_new(json_t* source, json_t* destination, k_err_t* err) {
    int failures = 0;
    for (const Layer2 layer2 : kOrderToOld) {
        const Layer2Type& type = kTypes[static_cast<size_t>(layer2)];
        failures += group_to_old(type, get(source, type.type), destination, err);
    }
    return failures;
}

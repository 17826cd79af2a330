// The protocol of a traffic rule: a name in the old layout, an IP protocol number in the new.
#include "frame/named_number.h"
#include "qos/qos.h"

namespace kcnvrt {

namespace {

// clang-format off
constexpr NamedNumber<5> kProtocols[] = {
    // name  number
    {"icmp",  1},
    {"igmp",  2},
    {"tcp",   6},
    {"udp",  17},
};
// clang-format on
static_assert(is_one_to_one(kProtocols));

}  // namespace

int protocol_to_new(json_t* filter, json_t* new_class, const Report& report) {
    const auto* const protocol = by_name(kProtocols, view_of(get(filter, "protocol")));
    // An unknown protocol is a failure and is written all the same.
    set(new_class, "Protocol", integer(protocol == nullptr ? 0 : protocol->number));
    return protocol == nullptr ? report.fail_at(filter, "protocol", "Error protocol version!") : 0;
}

int protocol_to_old(json_t* new_class, json_t* filter, const Report& report) {
    const json_int_t number = json_integer_value(get(new_class, "Protocol"));
    const auto* const protocol = by_number(kProtocols, number);
    if (protocol == nullptr)
        return report.under("set_protocol")
            .fail_at(new_class, "Protocol", "Error number protocol! (%lld)", static_cast<long long>(number));
    set(filter, "protocol", string(protocol->name));
    return 0;
}

}  // namespace kcnvrt

// Roaming: the service, its multicast channel, and the thresholds of each band.
//
// Both directions read and build with Jansson's formats: reading stops at the first field that does not fit, and the
// fields read before it are kept.
#include <arpa/inet.h>

#include "frame/json.h"
#include "frame/report.h"
#include "k_cnvrt.h"
#include "k_cnvrt/wifi.h"
#include "shortage.h"
#include "wifi/roaming_band.h"
#include "wifi/unpack.h"

using namespace kcnvrt;

namespace {

constexpr int kNoTtl = -1;
constexpr int kDefaultTtl = 32;

constexpr Name kPort = "portno";
constexpr Name kTtl = "mc_ttl";
constexpr Name kGroupAddress = "mc_groupaddr";

// In the order in which they are read.
constexpr Unpacked kOldMembers[] = {
    {"enable", 'b'}, {kPort, 'i'}, {"mc_switch", 'b'}, {kTtl, 'i', true}, {kGroupAddress, 's', true},
};

struct OldRoaming {
    int is_enabled = 0;
    int port = 0;
    int is_multicast = 0;
    int ttl = kNoTtl;
    const char* address = nullptr;
};

int read_old(json_t* source, OldRoaming& old, const Report& report) {
    json_error_t error;
    const int result = unpack(source, error, "{s: b, s: i, s: b, s? i, s? s}",  //
                              "enable", &old.is_enabled,                        //
                              kPort.text(), &old.port,                          //
                              "mc_switch", &old.is_multicast,                   //
                              kTtl.text(), &old.ttl,                            //
                              kGroupAddress.text(), &old.address);
    if (result == 0) return 0;
    report.fail("Invalid field 'enable'|'portno'|'mc_switch'|'mc_ttl'|'mc_groupaddr'");
    place_misfit(source, kOldMembers, report);
    return 1;
}

int check_port(json_t* source, const OldRoaming& old, const Report& report) {
    // This message has always been misspelt.
    return old.port >= 65536 ? report.fail_at(source, kPort, "Roaming port ange error") : 0;
}

// Addresses are compared as numbers in host order, so that every machine draws the same borders.
bool is_group_address(const char* address) {
    const uint32_t number = ntohl(inet_addr(address));
    return number >= 0xEFFF0000 /* 239.255.0.0 */ && number <= 0xEFFFFFFF /* 239.255.255.255 */;
}

int check_multicast(json_t* source, const OldRoaming& old, const Report& report) {
    int failures = 0;
    if (old.ttl == kNoTtl || old.address == nullptr)
        failures += report.fail_at(source, old.ttl == kNoTtl ? kTtl : kGroupAddress,
                                   "Roaming multicast is enabled, but TTL|Groupaddr is missing");
    if (old.ttl < 0 || old.ttl > 255) failures += report.fail_at(source, kTtl, "Roaming multicast TTL range error");
    if (old.address != nullptr && !is_group_address(old.address))
        failures += report.fail_at(source, kGroupAddress, "Roaming multicast group address range error");
    return failures;
}

void use_defaults(OldRoaming& old) {
    if (old.ttl == kNoTtl) old.ttl = kDefaultTtl;
    if (old.address == nullptr) old.address = "";
}

}  // namespace

int k_cnvrt_get_roaming_from_old(json_t* source, json_t* destination, k_err_t* err) {
    const Report report{__func__, err};
    OldRoaming old;
    int failures = read_old(source, old, report);
    failures += check_port(source, old, report);
    if (old.is_multicast != 0)
        failures += check_multicast(source, old, report);
    else
        use_defaults(old);
    // Without an address, which has been reported by now, no settings are written.
    Json multicast{old.address == nullptr
                       ? nullptr
                       : noted(json_pack("{s: i, s: s}", "TTL", old.ttl, "GroupAddress", old.address))};
    Json bands = object();
    failures += bands_to_new(source, bands.get(), err);
    set(destination, "Enable", boolean(old.is_enabled != 0));
    set(destination, "Port", integer(old.port));
    set(destination, "MulticastEnable", boolean(old.is_multicast != 0));
    set(destination, "MulticastSettings", std::move(multicast));
    set(destination, "BandSettings", std::move(bands));
    return failures;
}

int k_cnvrt_get_roaming_from_new(json_t* source, json_t* destination, k_err_t* err) {
    int is_enabled = 0;
    int port = 0;
    int is_multicast = 0;
    json_t* bands = nullptr;
    int ttl = 0;
    const char* address = nullptr;
    json_error_t error{};
    unpack(source, error, "{s: b, s: i, s: b, s: o, s: {s: i, s: s}}",  //
           "Enable", &is_enabled,                                       //
           "Port", &port,                                               //
           "MulticastEnable", &is_multicast,                            //
           "BandSettings", &bands,                                      //
           "MulticastSettings", "TTL", &ttl, "GroupAddress", &address);
    // Callers read this line, also the empty one of a success; a failure is told nowhere else.
    k_err_print(err, error.text);
    bands_to_old(bands, destination);
    set(destination, "enable", boolean(is_enabled != 0));
    set(destination, "portno", integer(port));
    set(destination, "mc_switch", boolean(is_multicast != 0));
    set(destination, "mc_ttl", integer(ttl));
    if (address != nullptr) set(destination, "mc_groupaddr", string(address));
    return 0;
}

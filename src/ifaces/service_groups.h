// service_groups.h: the services of an Ethernet or ATM interface: one old object of services that say their type,
// against one group of new services for each type.
#pragma once

#include <array>

#include "frame/json.h"
#include "k_err.h"

namespace kcnvrt {

enum class ServiceType : uint8_t { kBridge, kIpv6, kIp, kPpp, kPppv6, kPppdual };

inline constexpr size_t kServiceTypes = 6;

// The order in which an interface type writes its groups.
using GroupOrder = std::array<ServiceType, kServiceTypes>;

// "services" of an old interface as groups of a new one, where the old one has it. Services without a type, or of an
// unknown one, are skipped. Returns the count of failed fields.
int services_to_new(json_t* old_iface, json_t* new_iface, const GroupOrder& order, k_err_t* err);

// "services" of a new interface as those of an old one, which gets the member in every case. Returns the count of
// failed fields.
int services_to_old(json_t* new_iface, json_t* old_iface, k_err_t* err);

}  // namespace kcnvrt

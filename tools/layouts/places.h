// places.h: places as the description writes them.
//
//     /ifaces/[ethernet|atm]/services/[ppp]/mtu     entries whose "type" is one of these
//     /wifi/Channel|5G_Channel                      either name
//     /vlan/vlans/*/name                            any number, position or name
//     /dmz/**                                       a value that is carried whole, with everything below
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kcnvrt {

using Steps = std::vector<std::string>;

// The steps between the slashes, as they are written.
Steps steps_of(std::string_view place);
std::string place_of(const Steps& steps);

// A JSON Pointer's names. False when it is none.
bool read_pointer(std::string_view pointer, Steps& names);

// The same place once for each of its names; types remain.
std::vector<std::string> each_name(const std::string& place);
// Likewise, with "*" for types, each once.
std::vector<std::string> plain_places(const std::vector<std::string>& places);
// The types that a step names; none for another step.
std::vector<std::string> types_of(const std::string& step);

enum class Match { kNone, kAbove, kExact, kBelow };

// How the names of a pointer, in which "*" is any entry, stand to a place: above it, there, or below one that is
// carried whole.
Match match(const Steps& names, const std::string& place);

// The names of the section that a place is in: of "/Device/Services/dns/..." "dns".
std::vector<std::string> sections_of(const std::string& place);

}  // namespace kcnvrt

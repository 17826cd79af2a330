// lines.h: what is known of both layouts, put together: one line for the places that become each other.
#pragma once

#include "asker.h"

namespace describe {

struct Line {
    std::vector<std::string> old_places;
    std::vector<std::string> new_places;
    std::string kind;
    json_t* to_new = nullptr;  // behaviours, of the old places and of the new ones; null where they are not known here
    json_t* to_old = nullptr;
};

// The same places with "a|b" and "[a|b]" for names and types of which each stands there.
std::vector<std::string> compressed(const std::vector<std::string>& places);

std::vector<Line> lines_of(const std::vector<Finding>& old_findings, const std::vector<Finding>& new_findings);

}  // namespace describe

#include "reading_order.h"

#include <algorithm>

namespace describe {

void ReadingOrder::see(const RowRun& run) {
    auto& names = order_[run.object];
    const std::string name{run.name.view()};
    if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
}

std::vector<std::string> members(const ReadingOrder::Order& order, json_t* object) {
    std::vector<std::string> names;
    const auto known = order.find(object);
    if (known != order.end())
        for (const std::string& name : known->second)
            if (json_object_get(object, name.c_str()) != nullptr) names.push_back(name);
    const char* name;
    json_t* member;
    json_object_foreach(object, name, member) if (std::find(names.begin(), names.end(), name) == names.end())
        names.emplace_back(name);
    for (size_t position = 0; position < json_array_size(object); ++position) names.push_back(std::to_string(position));
    return names;
}

}  // namespace describe

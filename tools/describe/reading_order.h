// reading_order.h: the members of each object in the order in which tables read them.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "engine.h"
#include "names.h"

namespace describe {

class ReadingOrder : public Watcher {
public:
    using Order = std::map<json_t*, std::vector<std::string>>;

    void see(const RowRun& run) override;
    Order take() { return std::move(order_); }

private:
    Order order_;
};

// Those that tables read, then the others; positions of an array.
std::vector<std::string> members(const ReadingOrder::Order& order, json_t* object);

// Every member and element from the root on; `visit(names, value)` says whether to go on inside it.
template <class Visit>
void walk_in_order(const ReadingOrder::Order& order, json_t* value, Names& names, const Visit& visit) {
    for (const std::string& name : members(order, value)) {
        names.push_back(name);
        json_t* const member = at(value, {name});
        if (visit(names, member)) walk_in_order(order, member, names, visit);
        names.pop_back();
    }
}

}  // namespace describe

// table_visits.h: which rows of the library's tables of fields have been run with a value.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "engine.h"

class TableVisits : public Watcher {
public:
    // Of the tables that have been run at all. Each direction counts as a table.
    size_t tables() const { return tables_.size(); }
    size_t fields() const;
    std::vector<std::string> unvisited() const;

    void see(const RowRun& run) override;

private:
    struct Field {
        std::string names;
        bool is_visited;
    };

    std::map<std::pair<const char*, Side>, std::vector<Field>> tables_;
};

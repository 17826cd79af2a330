// Rows are known by the table that holds them and their number in it.
#include "table_visits.h"

void TableVisits::see(const RowRun& run) {
    std::vector<Field>& fields = tables_[{run.table, run.from}];
    if (run.number == fields.size()) {
        const std::string names = std::string{run.row.old_name.view()} + " / " + std::string{run.row.new_name.view()};
        fields.push_back({names + (run.from == Side::kOld ? ", to new" : ", to old"), run.way() == nullptr});
    }
    Field& field = fields[run.number];
    field.is_visited = field.is_visited || run.has_value();
}

size_t TableVisits::fields() const {
    size_t count = 0;
    for (const auto& [table, fields] : tables_) count += fields.size();
    return count;
}

std::vector<std::string> TableVisits::unvisited() const {
    std::vector<std::string> names;
    for (const auto& [table, fields] : tables_)
        for (const Field& field : fields)
            if (!field.is_visited) names.push_back(field.names);
    return names;
}

#include "table_visits.h"

#include <map>
#include <utility>

#include "frame/field.h"
#include "wifi/old_radio.h"

using namespace kcnvrt;

// The engine's functions under their linkage names, as the linker's --wrap leads calls to them here.
extern "C" {
#define REAL(name) __real_##name
#define WRAP(name) __wrap_##name
int REAL(_ZN6kcnvrt6to_newENS_6FieldsEP6json_tS2_RKNS_6ReportE)(Fields, json_t*, json_t*, const Report&);
int REAL(_ZN6kcnvrt6to_oldENS_6FieldsEP6json_tS2_RKNS_6ReportE)(Fields, json_t*, json_t*, const Report&);
int REAL(_ZN6kcnvrt6to_newENS_12PlacedFieldsERKNS_8OldRadioEP6json_tRKNS_6ReportE)(PlacedFields, const OldRadio&,
                                                                                   json_t*, const Report&);
int REAL(_ZN6kcnvrt6to_oldENS_12PlacedFieldsEP6json_tRKNS_8OldRadioERKNS_6ReportE)(PlacedFields, json_t*,
                                                                                   const OldRadio&, const Report&);
}

namespace {

// A table is known by the names that it keeps, one that runs in a template as often as it is instantiated.
struct Visited {
    std::vector<std::string> fields;
    std::vector<bool> with_value;
};

std::map<std::pair<const void*, const char*>, Visited> tables;

template <class HasValue>
void visit(const Fields& table, const char* direction, const HasValue& has_value) {
    if (table.size() == 0) return;
    Visited& visited = tables[{(*table.begin()).old_name.text(), direction}];
    size_t row = 0;
    for (const Field field : table) {
        const bool is_new_direction = direction[0] == 'n';
        const Way way = is_new_direction ? field.to_new : field.to_old;
        if (row == visited.fields.size()) {
            visited.fields.emplace_back(std::string{field.old_name.view()} + " / " +
                                        std::string{field.new_name.view()} + ", to " + direction);
            visited.with_value.push_back(way == nullptr);
        }
        if (!visited.with_value[row] && has_value(row, field)) visited.with_value[row] = true;
        ++row;
    }
}

}  // namespace

extern "C" {

int WRAP(_ZN6kcnvrt6to_newENS_6FieldsEP6json_tS2_RKNS_6ReportE)(Fields table, json_t* from, json_t* to,
                                                                const Report& report) {
    visit(table, "new", [from](size_t, const Field& field) { return has(from, field.old_name); });
    return REAL(_ZN6kcnvrt6to_newENS_6FieldsEP6json_tS2_RKNS_6ReportE)(table, from, to, report);
}

int WRAP(_ZN6kcnvrt6to_oldENS_6FieldsEP6json_tS2_RKNS_6ReportE)(Fields table, json_t* from, json_t* to,
                                                                const Report& report) {
    visit(table, "old", [from](size_t, const Field& field) { return has(from, field.new_name); });
    return REAL(_ZN6kcnvrt6to_oldENS_6FieldsEP6json_tS2_RKNS_6ReportE)(table, from, to, report);
}

int WRAP(_ZN6kcnvrt6to_newENS_12PlacedFieldsERKNS_8OldRadioEP6json_tRKNS_6ReportE)(PlacedFields table,
                                                                                   const OldRadio& from, json_t* to,
                                                                                   const Report& report) {
    visit(table.fields, "new",
          [&](size_t row, const Field& field) { return from.read(table.places[row], field.old_name) != nullptr; });
    return REAL(_ZN6kcnvrt6to_newENS_12PlacedFieldsERKNS_8OldRadioEP6json_tRKNS_6ReportE)(table, from, to, report);
}

int WRAP(_ZN6kcnvrt6to_oldENS_12PlacedFieldsEP6json_tRKNS_8OldRadioERKNS_6ReportE)(PlacedFields table, json_t* from,
                                                                                   const OldRadio& to,
                                                                                   const Report& report) {
    visit(table.fields, "old", [from](size_t, const Field& field) { return has(from, field.new_name); });
    return REAL(_ZN6kcnvrt6to_oldENS_12PlacedFieldsEP6json_tRKNS_8OldRadioERKNS_6ReportE)(table, from, to, report);
}
}

TableVisits table_visits() {
    TableVisits result;
    for (const auto& [table, visited] : tables) {
        ++result.tables;
        result.fields += visited.fields.size();
        for (size_t row = 0; row < visited.fields.size(); ++row)
            if (!visited.with_value[row]) result.unvisited.push_back(visited.fields[row]);
    }
    return result;
}

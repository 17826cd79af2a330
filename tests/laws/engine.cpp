// The engine's functions under their linkage names: watchers see each row, and then the engine runs it.
#include "engine.h"

#include <algorithm>
#include <vector>

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

std::vector<Watcher*>& watchers() {
    static std::vector<Watcher*> all;
    return all;
}

void tell(const RowRun& run) {
    for (Watcher* watcher : watchers()) watcher->see(run);
}

// A table is known by the names that it keeps, one that runs in a template as often as it is instantiated.
const char* identity_of(const Fields& table) {
    return (*table.begin()).old_name.text();
}

void tell_all(const Fields& table, Side from, json_t* object) {
    size_t number = 0;
    for (const Field row : table)
        tell({identity_of(table), number++, row, from, object, from == Side::kOld ? row.old_name : row.new_name});
}

void tell_all(const PlacedFields& table, const OldRadio& radio) {
    size_t number = 0;
    for (const Field row : table.fields) {
        const OldPlace place = table.places[number];
        const OldName name = radio.name_to_read(place, row.old_name);
        tell({identity_of(table.fields), number++, row, Side::kOld, radio.container(place), name});
    }
}

}  // namespace

Watcher::Watcher() {
    watchers().push_back(this);
}

Watcher::~Watcher() {
    auto& all = watchers();
    all.erase(std::find(all.begin(), all.end(), this));
}

extern "C" {

int WRAP(_ZN6kcnvrt6to_newENS_6FieldsEP6json_tS2_RKNS_6ReportE)(Fields table, json_t* from, json_t* to,
                                                                const Report& report) {
    tell_all(table, Side::kOld, from);
    return REAL(_ZN6kcnvrt6to_newENS_6FieldsEP6json_tS2_RKNS_6ReportE)(table, from, to, report);
}

int WRAP(_ZN6kcnvrt6to_oldENS_6FieldsEP6json_tS2_RKNS_6ReportE)(Fields table, json_t* from, json_t* to,
                                                                const Report& report) {
    tell_all(table, Side::kNew, from);
    return REAL(_ZN6kcnvrt6to_oldENS_6FieldsEP6json_tS2_RKNS_6ReportE)(table, from, to, report);
}

int WRAP(_ZN6kcnvrt6to_newENS_12PlacedFieldsERKNS_8OldRadioEP6json_tRKNS_6ReportE)(PlacedFields table,
                                                                                   const OldRadio& from, json_t* to,
                                                                                   const Report& report) {
    tell_all(table, from);
    return REAL(_ZN6kcnvrt6to_newENS_12PlacedFieldsERKNS_8OldRadioEP6json_tRKNS_6ReportE)(table, from, to, report);
}

int WRAP(_ZN6kcnvrt6to_oldENS_12PlacedFieldsEP6json_tRKNS_8OldRadioERKNS_6ReportE)(PlacedFields table, json_t* from,
                                                                                   const OldRadio& to,
                                                                                   const Report& report) {
    tell_all(table.fields, Side::kNew, from);
    return REAL(_ZN6kcnvrt6to_oldENS_12PlacedFieldsEP6json_tRKNS_8OldRadioERKNS_6ReportE)(table, from, to, report);
}
}

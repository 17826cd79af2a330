// engine.h: what the library's engine does while it converts. The linker leads the engine's calls to engine.cpp.
#pragma once

#include "frame/field.h"
#include "side.h"

// One row of a table of fields, as the engine runs it on one object.
struct RowRun {
    const char* table;  // tells tables apart
    size_t number;      // of the row in its table
    const kcnvrt::Field& row;
    Side from;
    json_t* object;    // that the row reads from, null when it is absent
    kcnvrt::Key name;  // of the member that the row reads there

    kcnvrt::Way way() const { return from == Side::kOld ? row.to_new : row.to_old; }
    bool has_value() const { return kcnvrt::has(object, name); }
};

// Is told of every run for as long as it exists.
class Watcher {
public:
    Watcher();
    virtual ~Watcher();
    Watcher(const Watcher&) = delete;
    Watcher& operator=(const Watcher&) = delete;

    virtual void see(const RowRun& run) = 0;
};

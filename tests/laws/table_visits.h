// table_visits.h: which rows of the library's tables of fields have been run with a value.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

struct TableVisits {
    size_t tables = 0;
    size_t fields = 0;  // directions count apiece
    std::vector<std::string> unvisited;
};

// Of the tables that have been run at all.
TableVisits table_visits();

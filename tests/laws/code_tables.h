// code_tables.h: the tables of names and numbers in the sources (src/frame/named_number.h), read as text.
#pragma once

#include <string>
#include <vector>

struct Code {
    std::string name;
    std::string number;  // as it is written: 47, true
    std::string table;   // "kProtocols in src/qos/protocols.cpp"
    std::string room;    // "qos"
};

// Those of every table below src/ of the repository.
std::vector<Code> codes_of_tables();

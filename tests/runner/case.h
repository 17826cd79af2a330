// case.h: one case, as data.
#pragma once

#include <string>
#include <vector>

#include "tree.h"

struct Case {
    std::string file;
    int line = 0;
    std::string sentence;
    std::string suite;  // folder_file
    std::string test;   // the sentence as a test name
    Tree data;          // the whole case; null for a file that holds no cases

    // What is wrong with the way the file is written; a case with a defect fails and is not run.
    std::vector<std::string> defects;
};

// The cases of a file. A file that cannot be read as an array of cases yields one case with a defect.
std::vector<Case> load_cases(const std::string& file);

// Every *.json at or below a path, in byte order.
std::vector<std::string> case_files(const std::string& path);

// case_defects.h: whether a case is written as cases are.
#pragma once

#include <jansson.h>

#include <string>
#include <vector>

// Members that are unknown, missing, of the wrong type, or do not belong to the function that the case calls; a
// function that does not exist.
std::vector<std::string> defects_of(const json_t* data);

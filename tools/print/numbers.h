// Numbers for people.
#pragma once

#include <cstddef>
#include <string>

namespace kcnvrt {

// 1234567 as 1,234,567.
std::string grouped(std::size_t number);

// "1 record", "1,000 records".
std::string counted(std::size_t number, const char* one, const char* many);

std::string with_digits(double number, int digits);

// "12.3 %"; what is little is not shown as nothing, and what is much not as all.
std::string percent(std::size_t part, std::size_t whole);

}  // namespace kcnvrt

// capture.h: what the C library's standard output gets while something runs.
#pragma once

#include <functional>
#include <string>

std::string printed_by(const std::function<void()>& work);

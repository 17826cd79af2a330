// symbol.h: functions by their names.
#pragma once

// The address of an exported function of either library; null when there is none.
void* address_of(const char* name);

template <class Function>
Function symbol(const char* name) {
    return reinterpret_cast<Function>(address_of(name));
}

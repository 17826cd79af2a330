// value_at.h: values by their paths, names and positions with "/" between them: "Device/Ifaces/bridge/1".
#pragma once

#include <jansson.h>

#include <string>

// Null when there is none; the value itself at "".
json_t* value_at(json_t* value, const std::string& path);

// The object there, which is made where it is missing.
json_t* object_at(json_t* object, const std::string& path);

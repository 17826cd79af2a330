// How a handler is called for a section: it fills a new container, which is stored whatever the handler returned.
#include <cstring>

#include "frame/json.h"
#include "k_cnvrt.h"

using namespace kcnvrt;

int json_section_copy(json_t* source, json_t* destination, k_err_t*) {
    carry_members(destination, source);
    return 0;
}

int json_section_parser(json_t* source, const char* name, json_t* destination, k_err_t* err, int is_array,
                        k_cnvrt_handler_t handler) {
    if (source == nullptr || name == nullptr) return 0;
    if (std::strcmp(name, "-") == 0) return handler(source, destination, err);
    Json container = is_array != 0 ? array() : object();
    const int failures = handler(source, container.get(), err);
    set(destination, {name, std::strlen(name)}, std::move(container));
    return failures;
}

int json_services_parser(json_t* source, const char* name, json_t* destination, k_cnvrt_handler_t handler, int kind,
                         k_err_t* err) {
    if (source == nullptr) return 0;
    Json container = kind == 1 ? array() : object();
    const int failures = handler(source, container.get(), err);
    set_checked(destination, name, std::move(container));
    return failures;
}

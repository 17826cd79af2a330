// The routing section as a whole: static routes and RIP.
#include "frame/report.h"
#include "k_cnvrt.h"

using namespace kcnvrt;

// The static routes' own results do not count here: a bad route is reported, and never rejects a configuration.

int k_cnvrt_get_routing_from_new(json_t* routing, json_t* old_root, k_err_t* err) {
    Json routes = array();
    uncounted(err, [&] { k_cnvrt_get_route_from_new(routing, routes.get(), err); });
    set(old_root, "route", std::move(routes));
    return json_section_parser(get(routing, "RIP"), "rip", old_root, err, 0, k_cnvrt_get_rip_from_new);
}

int k_cnvrt_get_routing_from_old(json_t* old_root, json_t* routing, k_err_t* err) {
    uncounted(err,
              [&] { json_section_parser(get(old_root, "route"), "-", routing, err, 0, k_cnvrt_get_route_from_old); });
    return json_section_parser(get(old_root, "rip"), "RIP", routing, err, 0, k_cnvrt_get_rip_from_old);
}

// The shaped interfaces of the legacy generation: "links" in the old layout, "Queue" in the new.
#include "frame/nested.h"
#include "qos/qos.h"

namespace kcnvrt {

namespace {

// The rate of a link is an upload rate on the WAN side and a download rate on the LAN side.
template <size_t N>
constexpr auto link_fields(const char (&rate)[N]) {
    // clang-format off
    return fields(
        //             old          new
        integer_field ("ceil",      "ShapingCeil"),
        integer_field ("rate",      rate),
        carried       ("iface",     "QueueInterface"),
        carried_to_new("scheduler", "SchedulerAlgorithm"));
    // clang-format on
}

constexpr auto kWanLink = link_fields("ShapingRateUpload");
constexpr auto kLanLink = link_fields("ShapingRateDownload");

int link_to_new(json_t* link, json_t* queue, const Report& report) {
    const bool is_wan = json_is_true(get(link, "is_wan"));
    return to_new(is_wan ? Fields{kWanLink} : Fields{kLanLink}, link, queue, report);
}

int link_to_old(json_t* queue, json_t* link, const Report& report) {
    const bool is_wan = json_integer_value(get(queue, "ShapingRateUpload")) > 0;
    set(link, "is_wan", boolean(is_wan));
    const int failures = to_old(is_wan ? Fields{kWanLink} : Fields{kLanLink}, queue, link, report);
    set(link, "scheduler", string(kScheduler));
    return failures;
}

}  // namespace

int links_to_new(json_t* old_qos, json_t* new_qos, k_err_t* err) {
    const Report report{"convert_links", err};
    Json queues = object();
    const int failures =
        fill_every_instance(get(old_qos, "links"), queues.get(), report,
                            [&](int64_t, json_t* link, json_t* queue) { return link_to_new(link, queue, report); });
    set(new_qos, "Queue", std::move(queues));
    return failures;
}

int links_to_old(json_t* new_qos, json_t* old_qos, k_err_t* err) {
    const Report report{"convert_old_qos", err};
    Json links = object();
    const int failures =
        fill_every_instance(get(new_qos, "Queue"), links.get(), report,
                            [&](int64_t, json_t* queue, json_t* link) { return link_to_old(queue, link, report); });
    set(old_qos, "links", std::move(links));
    return failures;
}

}  // namespace kcnvrt

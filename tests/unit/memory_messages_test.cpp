// What converters report when memory runs out under them. That nothing crashes or leaks is tests/trust's to say; here
// it is the message, its author and the count.
#include <string>

#include "frame_memory.h"
#include "frame_tree.h"
#include "k_cnvrt.h"

namespace kcnvrt {
namespace {

// More names than are sorted without memory.
Json many_named(const char* value) {
    Json named = object();
    for (int i = 0; i < 33; ++i) json_object_set_new(named.get(), std::to_string(i).c_str(), tree(value).release());
    return named;
}

struct Converted {
    int failures;
    std::string result;
    Messages::List messages;
    std::vector<std::string> places;
    bool is_complete;
};

// The allocation of the library's own of that number (from 0) fails alone.
Converted convert_without(size_t allocation, k_cnvrt_handler_t convert, const Json& source) {
    const Messages messages;
    const Json destination = object();
    int failures = 0;
    {
        const OneFailure failure{allocation};
        failures = convert(source.get(), destination.get(), messages);
    }
    const bool is_complete = k_err_is_complete(messages) != 0;
    return {failures, text(destination), messages.list(), messages.places_in(source), is_complete};
}

TEST(MemoryMessages, OfNamesThatCannotBeSorted) {
    const Json users = object();
    set(users.get(), "list", many_named("{'pass': 'x'}"));
    const Json ports = many_named("{'mode': 'auto'}");
    const Json rip = many_named("{'version': '2'}");
    const struct {
        const char* function;
        k_cnvrt_handler_t convert;
        const Json& source;
        const char* result;
        const char* place;
    } rows[] = {
        {"k_cnvrt_get_users_from_old", k_cnvrt_get_users_from_old, users, "{'version':1}", "/list"},
        {"k_cnvrt_get_port_settings_from_old", k_cnvrt_get_port_settings_from_old, ports, "{}", ""},
        {"k_cnvrt_get_port_bandwidth_from_old", k_cnvrt_get_port_bandwidth_from_old, ports, "{}", ""},
        {"k_cnvrt_get_rip_from_old", k_cnvrt_get_rip_from_old, rip, "{}", ""},
    };
    for (const auto& row : rows) {
        const Converted converted = convert_without(0, row.convert, row.source);
        EXPECT_EQ(converted.failures, 1) << row.function;
        EXPECT_EQ(converted.result, row.result) << row.function;
        EXPECT_EQ(converted.messages, (Messages::List{{row.function, "Error allocated memory!\n"}}));
        EXPECT_EQ(converted.places, std::vector<std::string>{row.place});
        EXPECT_FALSE(converted.is_complete);
    }
}

constexpr char kNoRoutes[] = "{'ipv4':{'Routes':{'max_instance':0}},'ipv6':{'Routes':{'max_instance':0}}}";

// The address is copied (a string and its text), and outgrows its first text when a length is added.
TEST(MemoryMessages, OfAnAddressThatCannotBeCopied) {
    const Json routes = tree("[{'ip': '2001:db8:1111:2222:3333:4444::5'}]");
    const char* const messages[] = {"strdup error:\n", "strdup error:\n", "realloc error:\n"};
    for (size_t allocation = 0; allocation < std::size(messages); ++allocation) {
        const Converted converted = convert_without(allocation, k_cnvrt_get_route_from_old, routes);
        EXPECT_EQ(converted.failures, 1) << allocation;
        EXPECT_EQ(converted.result, kNoRoutes) << allocation;
        EXPECT_EQ(converted.messages, (Messages::List{{"k_cnvrt_get_route_from_old", messages[allocation]}}));
        EXPECT_EQ(converted.places, std::vector<std::string>{"/0/ip"});
        EXPECT_FALSE(converted.is_complete);
    }
    const Converted converted = convert_without(std::size(messages), k_cnvrt_get_route_from_old, routes);
    EXPECT_EQ(converted.failures, 0);
    EXPECT_EQ(converted.messages, Messages::List{});
    EXPECT_TRUE(converted.is_complete);
}

// Jansson's allocations, of which one fails.
size_t succeeding = 0;
void* jansson_malloc(size_t size) {
    return succeeding-- == 0 ? nullptr : malloc(size);
}

TEST(MemoryMessages, OfARouteThatCannotBeMade) {
    const Json routes = tree("[{'ip': '10.0.0.0', 'netmask': '255.0.0.0'}]");
    size_t reports = 0;
    for (size_t allocation = 0; allocation < 100; ++allocation) {
        const Messages messages;
        const Json destination = object();
        succeeding = allocation;
        json_set_alloc_funcs(jansson_malloc, free);
        const int failures = k_cnvrt_get_route_from_old(routes.get(), destination.get(), messages);
        json_set_alloc_funcs(malloc, free);
        if (failures == 0) continue;
        ++reports;
        EXPECT_EQ(failures, 1);
        EXPECT_EQ(text(destination), kNoRoutes);
        EXPECT_EQ(messages.list(), (Messages::List{{"k_cnvrt_get_route_from_old", "Error json_pack!\n"}}));
        EXPECT_EQ(k_err_is_complete(messages), 0);
        EXPECT_EQ(messages.places_in(routes), std::vector<std::string>{"/0"});
    }
    EXPECT_GT(reports, 0u) << "the route itself was always made";
}

}  // namespace
}  // namespace kcnvrt

// How handlers are called: with one that fails, and tells what it was given.
#include "frame_tree.h"
#include "k_cnvrt.h"

namespace kcnvrt {
namespace {

json_t* seen_source;
json_t* seen_destination;

int take_part_and_fail(json_t* source, json_t* destination, k_err_t* err) {
    seen_source = source;
    seen_destination = destination;
    if (json_is_array(destination)) append(destination, string("part"));
    if (json_is_object(destination)) set(destination, "part", integer(1));
    k_err_set(err, "take_part_and_fail", 0, "failed");
    return 3;
}

class Handlers : public testing::Test {
protected:
    const Json source_ = tree("{'a': 1}");
    const Json destination_ = tree("{'z': 1}");
    const Messages messages_;

    int run_section(const char* name, int is_array) {
        return json_section_parser(source_.get(), name, destination_.get(), messages_, is_array, take_part_and_fail);
    }
    int run_service(const char* name, int kind) {
        return json_services_parser(source_.get(), name, destination_.get(), take_part_and_fail, kind, messages_);
    }
};

TEST_F(Handlers, ASectionThatFailsIsStoredAndItsResultReturned) {
    EXPECT_EQ(run_section("vlan", 0), 3);
    EXPECT_EQ(text(destination_), "{'z':1,'vlan':{'part':1}}");
    EXPECT_EQ(seen_source, source_.get());
    EXPECT_EQ(seen_destination, get(destination_.get(), "vlan"));
    EXPECT_EQ(messages_.list(), (Messages::List{{"take_part_and_fail", "failed"}}));
}

TEST_F(Handlers, ASectionMayBeAnArray) {
    EXPECT_EQ(run_section("vlan", 1), 3);
    EXPECT_EQ(text(destination_), "{'z':1,'vlan':['part']}");
}

TEST_F(Handlers, AMergedSectionWritesIntoTheDestinationAndItsResultIsReturned) {
    EXPECT_EQ(run_section("-", 1), 3);
    EXPECT_EQ(text(destination_), "{'z':1,'part':1}");
    EXPECT_EQ(seen_destination, destination_.get());
}

TEST_F(Handlers, ASectionWithoutASourceOrANameIsNotRun) {
    seen_source = nullptr;
    EXPECT_EQ(json_section_parser(nullptr, "vlan", destination_.get(), messages_, 0, take_part_and_fail), 0);
    EXPECT_EQ(json_section_parser(nullptr, "-", destination_.get(), messages_, 0, take_part_and_fail), 0);
    EXPECT_EQ(run_section(nullptr, 0), 0);
    EXPECT_EQ(seen_source, nullptr);
    EXPECT_EQ(text(destination_), "{'z':1}");
}

TEST_F(Handlers, ASectionIsStoredUnderANameThatIsNotUtf8) {
    EXPECT_EQ(run_section("\xff", 0), 3);
    EXPECT_EQ(text(get(destination_.get(), "\xff")), "{'part':1}");
}

TEST_F(Handlers, AServiceThatFailsIsStoredAndItsResultReturned) {
    EXPECT_EQ(run_service("ddns", 0), 3);
    EXPECT_EQ(text(destination_), "{'z':1,'ddns':{'part':1}}");
    EXPECT_EQ(seen_source, source_.get());
    EXPECT_EQ(messages_.list(), (Messages::List{{"take_part_and_fail", "failed"}}));
}

TEST_F(Handlers, OnlyKindOneMakesAServiceAnArray) {
    for (const int kind : {0, 2, -1, 3}) {
        run_service("ddns", kind);
        EXPECT_EQ(text(get(destination_.get(), "ddns")), "{'part':1}") << kind;
    }
    run_service("ddns", 1);
    EXPECT_EQ(text(get(destination_.get(), "ddns")), "['part']");
}

TEST_F(Handlers, AServiceNamedMinusIsNotMerged) {
    EXPECT_EQ(run_service("-", 0), 3);
    EXPECT_EQ(text(destination_), "{'z':1,'-':{'part':1}}");
}

TEST_F(Handlers, AServiceIsNotStoredUnderANameThatIsNotUtf8ButItsResultIsReturned) {
    EXPECT_EQ(run_service("\xff", 0), 3);
    EXPECT_EQ(text(destination_), "{'z':1}");
}

TEST_F(Handlers, AServiceWithoutASourceIsNotRun) {
    seen_source = nullptr;
    EXPECT_EQ(json_services_parser(nullptr, "ddns", destination_.get(), take_part_and_fail, 0, messages_), 0);
    EXPECT_EQ(seen_source, nullptr);
    EXPECT_EQ(text(destination_), "{'z':1}");
}

TEST_F(Handlers, ACopyShares) {
    const Json source = tree("{'a': {'b': 1}}");
    EXPECT_EQ(json_section_copy(source.get(), destination_.get(), messages_), 0);
    EXPECT_EQ(get(destination_.get(), "a"), get(source.get(), "a"));
}

}  // namespace
}  // namespace kcnvrt

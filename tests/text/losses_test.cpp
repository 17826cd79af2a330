// What of a text the other layout will not hold: each kind of loss, its place, and what is shown of it.
#include "losses_in_lines.h"

#include <gtest/gtest.h>

namespace {

// An old configuration that loses nothing.
std::string old_with(const std::string& service, const std::string& iface = "", const std::string& root = "") {
    return R"({"passwd": [], "route": [], "ifaces": {"eth4": {"type": "ethernet", )" + iface +
           R"("services": {"ppp0": {"type": "ppp", "connection_status": "Disconnected", "l2_iface": "eth4")" + service +
           "}}}}" + root + "}";
}

// A new one.
std::string new_with(const std::string& ethernet) {
    return R"({"Device": {"Services": {"tr069": {}}, "Customization": {},
               "Routing": {"ipv4": {"Routes": {"max_instance": 0}}, "ipv6": {"Routes": {"max_instance": 0}}},
               "Users": {"list": {"max_instance": 0}, "version": 0}, "Ifaces": {"ethernet": )" +
           ethernet + "}}}";
}

const Lines kNone;

TEST(Losses, AreNoneWhereEverythingComesBack) {
    EXPECT_EQ(losses_to_new(old_with("")), kNone);
    EXPECT_EQ(losses_to_old(new_with(R"({"1": {"ifname_l2": "eth4", "services": {}}, "max_instance": 1})")), kNone);
}

TEST(Losses, OfMembersThatNobodyKnows) {
    EXPECT_EQ(losses_to_new(old_with(R"(, "a": {"b": [1, null]})", R"("c": "d", )", R"(, "e~/f": 1.5)")),
              (Lines{R"(dropped /ifaces/eth4/c: "d")", R"(dropped /ifaces/eth4/services/ppp0/a: {"b": [1, null]})",
                     "dropped /e~0~1f: 1.5"}));
}

TEST(Losses, OfWhatIsInsideAnUnknownKind) {
    EXPECT_EQ(losses_to_new(R"({"passwd": [], "route": [], "ifaces": {"eth4": {"type": "ethernett", "mac": "x"}}})"),
              (Lines{R"(dropped /ifaces/eth4: {"type": "ethernett", "mac": "x"})"}));
}

TEST(Losses, OfWhatIsNoObject) {
    EXPECT_EQ(
        losses_to_new(R"({"passwd": [], "route": [], "ifaces": {"eth4": {"type": "ethernet", "services": "x"}}})"),
        (Lines{R"(changed /ifaces/eth4/services: "x" -> {})"}));
}

TEST(Losses, OfListsWhoseCountIsNoNumber) {
    EXPECT_EQ(losses_to_old(new_with(R"({"1": {"ifname_l2": "eth4"}, "max_instance": "1"})")),
              (Lines{R"(dropped /Device/Ifaces/ethernet: {"1": {"ifname_l2": "eth4"}, "max_instance": "1"})"}));
}

TEST(Losses, OfNumbersThatAreTooLong) {
    EXPECT_EQ(losses_to_new(old_with(R"(, "auth": "12345678")")),
              (Lines{R"(cut /ifaces/eth4/services/ppp0/auth: "12345678" -> "1234567")"}));
    EXPECT_EQ(losses_to_new(old_with(R"(, "auth": "1234567")")), kNone);
}

TEST(Losses, OfValuesThatComeBackOtherwise) {
    EXPECT_EQ(losses_to_new(old_with("", "", R"(, "max_table_id": "12")")),
              (Lines{R"(changed /max_table_id: "12" -> 12)"}));
}

// The old layout gets the name of the model, and no way leads it back.
TEST(Losses, OfWhatIsUsedAndDoesNotComeBack) {
    const std::string text =
        R"({"Device": {"Services": {}, "Customization": {}, "Users": {"list": {"max_instance": 0}, "version": 0},
            "Routing": {"ipv4": {"Routes": {"max_instance": 0}}, "ipv6": {"Routes": {"max_instance": 0}}},
            "DeviceInfo": {"lang": "en", "ModelName": "HG", "other": "HG"}}})";
    const Lines losses = losses_to_old(text);
    EXPECT_EQ(losses,
              (Lines{R"(defaulted /Device: -> {"Ifaces": {}})", R"(defaulted /Device/Services: -> {"tr069": {}})",
                     R"(changed /Device/DeviceInfo/ModelName: "HG")", R"(dropped /Device/DeviceInfo/other: "HG")"}));
}

// Of a list that does not come back, what nobody knows is still told by itself, and its count is not.
TEST(Losses, OfUnknownMembersInsideWhatIsUsed) {
    const std::string text = new_with(
        R"({"1": {"ifname_l2": "eth4", "services": {"ip": {"1": {"ifname_l3": "ip1", "phy_iface": "eth4",
            "connection_status": "Disconnected", "dhcp": false, "dns_from_dhcp": false,
            "ipv6": {"1": {"ipv6": "2001:db8::1", "x": 1}, "max_instance": 1}}, "max_instance": 1}}},
            "max_instance": 1})");
    EXPECT_EQ(losses_to_old(text), (Lines{R"(changed /Device/Ifaces/ethernet/1/services/ip/1/ipv6: )"
                                          R"({"1": {"ipv6": "2001:db8::1", "x": 1}, "max_instance": 1})",
                                          "dropped /Device/Ifaces/ethernet/1/services/ip/1/ipv6/1/x: 1"}));
}

TEST(Losses, OfWhatWasNotThere) {
    EXPECT_EQ(losses_to_new(R"({"passwd": []})"), (Lines{R"(defaulted : -> {"ifaces": {}, "route": []})"}));
    EXPECT_EQ(losses_to_new(R"({"passwd": [], "route": [], "ifaces": {"eth4": {"type": "ethernet"}}})"),
              (Lines{R"(defaulted /ifaces/eth4: -> {"services": {}})"}));
}

TEST(Losses, OfNumbersOfEntries) {
    EXPECT_EQ(losses_to_old(new_with(R"({"1": {"ifname_l2": "eth0", "services": {}},
                                         "3": {"ifname_l2": "eth1", "services": {}, "x": 1}, "max_instance": 3})")),
              (Lines{"renumbered /Device/Ifaces/ethernet/3: 3 -> 2", "dropped /Device/Ifaces/ethernet/3/x: 1",
                     "changed /Device/Ifaces/ethernet/max_instance: 3 -> 2"}));
    EXPECT_EQ(losses_to_old(new_with(R"({"1": {"ifname_l2": "eth1", "services": {}},
                                         "2": {"ifname_l2": "eth0", "services": {}}, "max_instance": 2})")),
              (Lines{"renumbered /Device/Ifaces/ethernet/1: 1 -> 2", "renumbered /Device/Ifaces/ethernet/2: 2 -> 1"}));
}

// Two losses at one place come in the order of their kinds.
TEST(Losses, OfNumbersOfEntriesThatGetMembers) {
    EXPECT_EQ(losses_to_old(new_with(R"({"1": {"ifname_l2": "eth0", "services": {}}, "3": {"ifname_l2": "eth1"},
                                         "max_instance": 3})")),
              (Lines{R"(defaulted /Device/Ifaces/ethernet/3: -> {"services": {}})",
                     "renumbered /Device/Ifaces/ethernet/3: 3 -> 2",
                     "changed /Device/Ifaces/ethernet/max_instance: 3 -> 2"}));
}

TEST(Losses, OfElementsThatAreLeftOut) {
    EXPECT_EQ(losses_to_new(R"({"passwd": [], "ifaces": {}, "route": [
                                {"ip": "10.0.0.0", "netmask": "255.0.0.0", "gw": "10.0.0.1"}, {"gw": "10.0.0.2"},
                                {"ip": "10.2.0.0", "netmask": "255.255.0.0", "gw": "10.0.0.2", "y": 1}]})"),
              (Lines{R"(dropped /route/1/gw: "10.0.0.2")", "dropped /route/2/y: 1"}));
}

TEST(Losses, StandWhereTheValueIs) {
    const std::string text = "{\"passwd\": [],\n \"route\": [], \"ifaces\": {},\n\t\"\u00e4\": \"x\", \"zz\": [12]}";
    const Result result = ask_for_losses(K_TEXT_TOWARDS_NEW, text);
    k_text_loss_t loss = {};
    loss.size = sizeof loss;
    ASSERT_EQ(k_text_loss_count(result.get()), 2u);
    ASSERT_EQ(k_text_loss(result.get(), 1, &loss), 0);
    EXPECT_EQ(text.substr(loss.offset, loss.length), "[12]");
    EXPECT_EQ(loss.line, 3u);
    EXPECT_EQ(loss.column, 18u);
    EXPECT_EQ(k_text_loss(result.get(), 2, &loss), -1);
    loss.size = sizeof loss - 1;
    EXPECT_EQ(k_text_loss(result.get(), 0, &loss), -1);
    EXPECT_EQ(k_text_loss(result.get(), 0, nullptr), -1);
    EXPECT_EQ(k_text_loss_count(nullptr), 0u);
}

TEST(Losses, ShowNoSecrets) {
    const std::string text = old_with(R"(, "x": {"password": "hunter2", "pins": [1, {"a": null}]}, "loid": "hunter3")");
    EXPECT_EQ(losses_to_new(text),
              (Lines{R"(dropped /ifaces/eth4/services/ppp0/x: {"password": "***", "pins": ["***", {"a": "***"}]})",
                     R"(dropped /ifaces/eth4/services/ppp0/loid: "***")"}));
    EXPECT_EQ(losses_of(ask_for_losses(K_TEXT_TOWARDS_NEW | K_TEXT_SHOW_SECRETS, text)),
              (Lines{R"(dropped /ifaces/eth4/services/ppp0/x: {"password": "hunter2", "pins": [1, {"a": null}]})",
                     R"(dropped /ifaces/eth4/services/ppp0/loid: "hunter3")"}));
}

// The losses are those of what is left, at the places of what there was.
TEST(Losses, OfARejectedText) {
    const std::string text =
        R"({"passwd": [], "ifaces": {}, "route": [], "macfilter": ["x", {"id": {}}, {"id": 1, "x": 2}]})";
    const Result result = ask_for_losses(K_TEXT_TOWARDS_NEW, text);
    EXPECT_EQ(k_text_status(result.get()), K_TEXT_CONVERTED);
    EXPECT_EQ(output_of(result), "(none)");
    EXPECT_EQ(losses_of(result), (Lines{"dropped /macfilter/2/x: 2"}));
    EXPECT_EQ(k_text_problem_count(result.get()), 5u);
    const Result check = ask_for_losses(K_TEXT_TOWARDS_NEW, text, K_TEXT_CHECK);
    EXPECT_EQ(k_text_status(check.get()), K_TEXT_REJECTED);
    EXPECT_EQ(losses_of(check), losses_of(result));
}

TEST(Losses, AreToldBesideAResult) {
    const std::string text = old_with(R"(, "a": 1)");
    const Result plain = ask(request_for(K_TEXT_TO_NEW, text));
    const Result told = ask_for_losses(K_TEXT_TELL_LOSSES, text, K_TEXT_TO_NEW);
    EXPECT_EQ(losses_of(plain), kNone);
    EXPECT_EQ(losses_of(told), (Lines{"dropped /ifaces/eth4/services/ppp0/a: 1"}));
    EXPECT_EQ(k_text_status(told.get()), K_TEXT_CONVERTED);
    EXPECT_EQ(output_of(told), output_of(plain));
    EXPECT_EQ(losses_of(ask_for_losses(K_TEXT_TELL_LOSSES, new_with("1"), K_TEXT_TO_OLD)),
              (Lines{"dropped /Device/Ifaces/ethernet: 1"}));
}

TEST(Losses, RejectWhereOneIsStrict) {
    const Result lossy = ask_for_losses(K_TEXT_STRICT, old_with(R"(, "a": 1)"), K_TEXT_TO_NEW);
    EXPECT_EQ(k_text_status(lossy.get()), K_TEXT_REJECTED);
    EXPECT_EQ(output_of(lossy), "(none)");
    EXPECT_EQ(k_text_loss_count(lossy.get()), 1u);
    const Result warned =
        ask_for_losses(K_TEXT_STRICT, old_with("", "", R"(, "dns": {"servers": "x y"})"), K_TEXT_TO_NEW);
    EXPECT_EQ(k_text_status(warned.get()), K_TEXT_REJECTED);
    const Result clean = ask_for_losses(K_TEXT_STRICT, old_with(""), K_TEXT_TO_NEW);
    EXPECT_EQ(k_text_status(clean.get()), K_TEXT_CONVERTED);
    EXPECT_NE(output_of(clean), "(none)");
}

TEST(Losses, AreCheckedWithoutAResult) {
    const Result check = ask_for_losses(K_TEXT_TOWARDS_NEW, old_with(R"(, "a": 1)"), K_TEXT_CHECK);
    EXPECT_EQ(k_text_status(check.get()), K_TEXT_CONVERTED);
    EXPECT_EQ(output_of(check), "(none)");
    EXPECT_EQ(k_text_loss_count(check.get()), 1u);
}

TEST(Losses, RefuseWhatMakesNoSense) {
    const auto why = [](uint32_t flags, uint32_t operation) {
        const Result result = ask_for_losses(flags, "{}", operation);
        EXPECT_EQ(k_text_status(result.get()), K_TEXT_WRONG_USAGE);
        return std::string(problem_of(result).message);
    };
    EXPECT_EQ(why(K_TEXT_TOWARDS_NEW | K_TEXT_TOWARDS_OLD, K_TEXT_LOSSES), "the request has two directions");
    EXPECT_EQ(why(K_TEXT_STRICT | K_TEXT_PARTIAL, K_TEXT_TO_NEW), "a strict request takes no part of a text");
    EXPECT_EQ(why(K_TEXT_STRICT, K_TEXT_CHECK), "the operation does not take these flags");
    EXPECT_EQ(why(K_TEXT_TELL_LOSSES, K_TEXT_LOSSES), "the operation does not take these flags");
}

}  // namespace

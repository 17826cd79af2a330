// Tables of fields, the engine that runs them, the exported helpers, and reports.
#include "frame/field.h"

#include <array>
#include <string>
#include <type_traits>
#include <vector>

#include "frame_tree.h"
#include "k_cnvrt.h"

namespace kcnvrt {
namespace {

constexpr Word<ways::carry, nullptr> only_to_new;
constexpr Word<nullptr, ways::carry> only_to_old;
constexpr Word<ways::string_or<"Off">, ways::carry> default_off;

// clang-format off
constexpr auto kEveryWord = fields(
    //               old         new
    carried         ("carried"),
    carried_or_false("flag"),
    integer_field   ("number",   "Number"),
    boolean_field   ("enable",   "Enable"),
    string_field    ("text",     "Text"),
    password        ("pass",     "Pass"),
    status          ("state"),
    default_off     ("mode",     "Mode"),
    only_to_new     ("up"),
    only_to_old     ("down"));
// clang-format on

TEST(FieldTable, IsMadeAtCompileTime) {
    static constexpr auto kTable = fields(carried("iface", "phy_iface"), integer_field("port"));
    constexpr Fields kFields = kTable;
    EXPECT_EQ(kFields.size(), 2u);
    const Field first = *kFields.begin();
    EXPECT_EQ(first.old_name, Key{"iface"});
    EXPECT_EQ(first.new_name, Key{"phy_iface"});
    EXPECT_EQ(first.to_new, ways::carry);
}

TEST(FieldTable, HoldsNoPointers) {
    static constexpr auto kTable = fields(carried("a"), carried("b", "c"));
    EXPECT_EQ(sizeof kTable, sizeof(TableHead) + 2 * sizeof(PackedField) + sizeof "a" + sizeof "b" + sizeof "c");
    EXPECT_EQ(alignof(decltype(kTable)), alignof(uint16_t));
}

TEST(FieldTable, KeepsTheOrderAndBothNamesOfItsRows) {
    std::string rows;
    for (const Field field : Fields{kEveryWord})
        rows += std::string{field.old_name.view()} + ":" + std::string{field.new_name.view()} + " ";
    EXPECT_EQ(rows,
              "carried:carried flag:flag number:Number enable:Enable text:Text pass:Pass state:state mode:Mode up:up "
              "down:down ");
}

TEST(FieldTable, NamesEndWithANul) {
    for (const Field field : Fields{kEveryWord}) {
        EXPECT_EQ(field.old_name.text()[field.old_name.length()], '\0');
        EXPECT_EQ(field.new_name.text()[field.new_name.length()], '\0');
    }
}

TEST(FieldTable, KeepsTheWaysOfItsRows) {
    const struct {
        Way to_new;
        Way to_old;
    } rows[] = {{ways::carry, ways::carry},
                {ways::carry_or_false, ways::carry},
                {ways::integer_to_new, ways::integer_to_old},
                {ways::boolean_to_new, ways::boolean_to_old},
                {ways::string_to_new, ways::string_to_old},
                {ways::password_to_new, ways::password_to_old},
                {ways::status_to_new, ways::carry},
                {ways::string_or<"Off">, ways::carry},
                {ways::carry, nullptr},
                {nullptr, ways::carry}};
    ASSERT_EQ(Fields{kEveryWord}.size(), std::size(rows));
    size_t at = 0;
    for (const Field field : Fields{kEveryWord}) {
        EXPECT_EQ(field.to_new, rows[at].to_new) << field.old_name.view();
        EXPECT_EQ(field.to_old, rows[at].to_old) << field.old_name.view();
        ++at;
    }
}

TEST(FieldTable, OneRowIsATable) {
    static constexpr auto kTable = fields(status("state", "State"));
    const Json destination = object();
    EXPECT_EQ(to_new(kTable, tree("{}").get(), destination.get(), Report{"one", nullptr}), 0);
    EXPECT_EQ(text(destination), "{'State':'Disconnected'}");
}

TEST(Engine, ConvertsEveryFieldToNew) {
    const Json destination = object();
    const Messages messages;
    const Json source = tree(
        "{'down': 9, 'up': 8, 'mode': '', 'state': '', 'pass': 'a', 'text': null, 'enable': '1', 'number': '5',"
        " 'flag': 'x', 'carried': [1], 'other': 7}");
    EXPECT_EQ(to_new(kEveryWord, source.get(), destination.get(), Report{"engine", messages}), 0);
    EXPECT_EQ(text(destination),
              "{'carried':[1],'flag':'x','Number':5,'Enable':true,'Text':'','Pass':'YQ==','state':'Disconnected',"
              "'Mode':'Off','up':8}");
    EXPECT_EQ(messages.list(), Messages::List{});
}

TEST(Engine, ConvertsEveryFieldToOld) {
    const Json destination = object();
    const Messages messages;
    const Json source = tree(
        "{'down': 9, 'up': 8, 'Mode': '', 'state': '', 'Pass': 'YQ==', 'Text': '', 'Enable': true, 'Number': 5,"
        " 'flag': false, 'carried': [1], 'number': 6}");
    EXPECT_EQ(to_old(kEveryWord, source.get(), destination.get(), Report{"engine", messages}), 0);
    EXPECT_EQ(
        text(destination),
        "{'carried':[1],'flag':false,'number':'5','enable':'1','text':null,'pass':'a','state':'','mode':'','down':9}");
    EXPECT_EQ(messages.list(), Messages::List{});
}

TEST(Engine, SumsFailuresAndReportsThemInTheOrderOfTheTable) {
    const Json destination = object();
    const Messages messages;
    const Json source =
        tree("{'mode': 1, 'state': 2, 'pass': 3, 'text': 4, 'enable': 5, 'number': true, 'carried': 6}");
    EXPECT_EQ(to_new(kEveryWord, source.get(), destination.get(), Report{"engine", messages}), 6);
    EXPECT_EQ(text(destination), "{'carried':6,'flag':false}");
    EXPECT_EQ(messages.list(), (Messages::List{{"engine", "Invalid field \"Number\", is not string"},
                                               {"engine", "Invalid field \"Enable\", number != 0 or 1"},
                                               {"engine", "Invalid field \"Text\", is not null or string"},
                                               {"engine", "Invalid field \"Pass\", is not string"},
                                               {"engine", "Invalid field \"\", is not string"},
                                               {"engine", "Invalid field \"\", is not string"}}));
}

TEST(Engine, ReportsUnderTheNameThatIsWritten) {
    const Json destination = object();
    const Messages messages;
    const Json source = tree("{'Number': '5', 'Enable': 1, 'Text': null, 'Pass': '?'}");
    EXPECT_EQ(to_old(kEveryWord, source.get(), destination.get(), Report{"engine", messages}), 4);
    EXPECT_EQ(text(destination), "{}");
    EXPECT_EQ(messages.list(),
              (Messages::List{{"engine", "Invalid field \"number\", is not integer"},
                              {"engine", "Invalid field \"enable\", json_type is 3"},
                              {"engine", "Invalid field \"text\", is not string"},
                              {"engine", "Invalid field \"pass\", error convert password to plain text"}}));
}

TEST(Engine, AbsentFieldsAreNoFailures) {
    const Messages messages;
    for (const char* const written : {"{}", "[1]", "'x'", "null"}) {
        const Json source = tree(written);
        const Json to_the_new = object();
        const Json to_the_old = object();
        EXPECT_EQ(to_new(kEveryWord, source.get(), to_the_new.get(), Report{"engine", messages}), 0);
        EXPECT_EQ(to_old(kEveryWord, source.get(), to_the_old.get(), Report{"engine", messages}), 0);
        EXPECT_EQ(text(to_the_new), "{'flag':false,'state':'Disconnected'}") << written;
        EXPECT_EQ(text(to_the_old), "{}") << written;
    }
    EXPECT_EQ(messages.list(), Messages::List{});
}

TEST(Carried, IsSharedAndKeepsEveryType) {
    const Json source = tree("{'a': {'b': 1}}");
    const Json destination = object();
    EXPECT_EQ(ways::carry(destination.get(), "c", get(source.get(), "a"), Report{"f", nullptr}), 0);
    EXPECT_EQ(get(destination.get(), "c"), get(source.get(), "a"));
    for (const char* const written : {"1", "1.5", "'x'", "true", "null", "[]", "{}"}) {
        EXPECT_EQ(ways::carry(destination.get(), "c", tree(written).get(), Report{"f", nullptr}), 0);
        EXPECT_EQ(text(destination), "{'c':" + std::string{written} + "}");
    }
}

TEST(Status, OnlyAnAbsentOneAndAnEmptyOneAreDisconnected) {
    const struct {
        const char* value;
        const char* stored;
    } rows[] = {{"''", "{'s':'Disconnected'}"}, {"'Connected'", "{'s':'Connected'}"}, {"' '", "{'s':' '}"}};
    for (const auto& row : rows) {
        const Json destination = object();
        EXPECT_EQ(ways::status_to_new(destination.get(), "s", tree(row.value).get(), Report{"f", nullptr}), 0);
        EXPECT_EQ(text(destination), row.stored);
    }
    const Json destination = object();
    EXPECT_EQ(ways::status_to_new(destination.get(), "s", nullptr, Report{"f", nullptr}), 0);
    EXPECT_EQ(text(destination), "{'s':'Disconnected'}");
}

TEST(Status, OfAnotherTypeIsAFailureWithoutAName) {
    const Messages messages;
    const Json destination = object();
    EXPECT_EQ(ways::status_to_new(destination.get(), "s", tree("null").get(), Report{"f", messages}), 1);
    EXPECT_EQ(text(destination), "{}");
    EXPECT_EQ(messages.list(), (Messages::List{{"f", "Invalid field \"\", is not string"}}));
}

TEST(StringOrDefault, LeavesAnAbsentOneOut) {
    const Json destination = object();
    EXPECT_EQ(ways::string_or<"Off">(destination.get(), "s", nullptr, Report{"f", nullptr}), 0);
    EXPECT_EQ(text(destination), "{}");
}

TEST(CarriedOrFalse, OnlyAnAbsentOneIsFalse) {
    const Json destination = object();
    EXPECT_EQ(ways::carry_or_false(destination.get(), "f", nullptr, Report{"f", nullptr}), 0);
    EXPECT_EQ(text(destination), "{'f':false}");
    EXPECT_EQ(ways::carry_or_false(destination.get(), "f", tree("null").get(), Report{"f", nullptr}), 0);
    EXPECT_EQ(text(destination), "{'f':null}");
}

using Helper = decltype(&json_string_set_safe);

TEST(FieldHelpers, WithoutAKeyStoreNothing) {
    const Json destination = object();
    const Json value = tree("[]");
    const Messages messages;
    for (const Helper helper :
         {json_integer_old_set_safe, json_boolean_old_set_safe, json_string_old_set_safe, json_string_set_password_old,
          json_string_set_safe, json_integer_set_safe, json_boolean_set_safe, json_string_set_password})
        EXPECT_EQ(helper(destination.get(), nullptr, value.get(), "f", 1, messages), 0);
    EXPECT_EQ(json_string_set_def(destination.get(), nullptr, value.get(), "d", "f", 1, messages), 0);
    EXPECT_EQ(text(destination), "{}");
    EXPECT_EQ(messages.list(), Messages::List{});
}

TEST(FieldHelpers, WithoutADefaultAnEmptyTextIsLeftOut) {
    const Json destination = object();
    EXPECT_EQ(json_string_set_def(destination.get(), "s", tree("''").get(), nullptr, "f", 1, nullptr), 0);
    EXPECT_EQ(text(destination), "{}");
}

TEST(FieldHelpers, ADefaultThatIsNotUtf8IsLeftOut) {
    const Json destination = object();
    EXPECT_EQ(json_string_set_def(destination.get(), "s", tree("''").get(), "\xff", "f", 1, nullptr), 0);
    EXPECT_EQ(text(destination), "{}");
}

TEST(Report, FailsWithOneMessageAndNotesWithoutCounting) {
    const Messages messages;
    const Report report{"author", messages};
    EXPECT_EQ(report.fail("%s is %d", "x", 5), 1);
    report.note("plain");
    EXPECT_EQ(report.under("other").fail("again"), 1);
    EXPECT_EQ(messages.list(), (Messages::List{{"author", "x is 5"}, {"author", "plain"}, {"other", "again"}}));
    EXPECT_STREQ(report.function(), "author");
    EXPECT_EQ(report.err(), messages);
}

TEST(Report, SaysWhatCounts) {
    const Messages messages;
    const Report report{"author", messages};
    report.fail("counted");
    report.note("not counted");
    uncounted(messages, [&] { report.fail("not counted"); });
    report.fail("counted");
    const int counted[] = {1, 0, 0, 1};
    for (size_t i = 0; i < 4; ++i) EXPECT_EQ(k_err_is_counted(messages, i), counted[i]) << i;
}

TEST(Report, SaysWhereMessagesBelong) {
    const Messages messages;
    const Report report{"author", messages};
    const Json source = tree("{'a': {'b': 1}, 'array': [0, 1], 'list': {'1': 0, '2': 1}}");
    json_t* const inner = get(source.get(), "a");
    EXPECT_EQ(report.fail_at(inner, "b", "wrong"), 1);
    report.fail("missing");
    EXPECT_EQ(report.placed(2, inner, "c"), 2);
    report.fail("of an array");
    EXPECT_EQ(report.placed_entry(1, get(source.get(), "array"), 2), 1);
    report.fail("of a list");
    EXPECT_EQ(report.placed_entry(1, get(source.get(), "list"), 2), 1);
    report.fail("of whoever comes");
    EXPECT_EQ(report.placed(0, inner, "b"), 0);
    EXPECT_EQ(report.placed_entry(0, get(source.get(), "list"), 1), 0);
    report.place(get(source.get(), "list"));
    EXPECT_EQ(messages.places_in(source), (std::vector<std::string>{"/a/b", "/a", "/array/1", "/list/2", "/list"}));
}

// In both directions a row names the member that it reads.
TEST(Engine, PlacesMessagesInTheSource) {
    constexpr auto kTable = fields(integer_field("old", "new"), carried("other"), integer_field("same"));
    const Messages messages;
    const Report report{"author", messages};
    const Json old_object = tree("{'old': [], 'same': {}}");
    EXPECT_EQ(to_new(kTable, old_object.get(), object().get(), report), 2);
    EXPECT_EQ(messages.places_in(old_object), (std::vector<std::string>{"/old", "/same"}));
    const Messages back;
    const Json new_object = tree("{'new': [], 'same': {}}");
    EXPECT_EQ(to_old(kTable, new_object.get(), object().get(), Report{"author", back}), 2);
    EXPECT_EQ(back.places_in(new_object), (std::vector<std::string>{"/new", "/same"}));
}

TEST(Report, KeepsTheLineWhereItWasMade) {
    const Messages messages;
    Report{"author", messages}.fail("here");
    EXPECT_EQ(k_err_line(messages, 0), __LINE__ - 1);
    Report{"author", messages, 77}.fail("there");
    EXPECT_EQ(k_err_line(messages, 1), 77);
}

TEST(Report, WithoutARecordStillCounts) {
    EXPECT_EQ((Report{"author", nullptr}.fail("nobody reads this")), 1);
}

}  // namespace
}  // namespace kcnvrt

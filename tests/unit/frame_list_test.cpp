// Numbered lists: how they are built, walked, and turned into arrays and back.
#include "frame/list.h"

#include <climits>
#include <string>
#include <vector>

#include "frame_memory.h"
#include "frame_tree.h"
#include "k_cnvrt.h"

namespace kcnvrt {
namespace {

// Number and entry of every step, as text.
std::string present(const char* list) {
    const Json object = tree(list);
    std::string walk;
    for (const auto [number, entry] : Instances{object.get()}) walk += std::to_string(number) + "=" + text(entry) + " ";
    return walk;
}

std::string every(const char* list) {
    const Json object = tree(list);
    const Messages messages;
    const Report report{"walker", messages};
    const EveryNumber numbers{object.get(), report};
    EXPECT_EQ(numbers.failures(), 0);
    std::string walk;
    for (const auto [number, entry] : numbers) walk += std::to_string(number) + "=" + text(entry) + " ";
    return walk;
}

TEST(EntryAt, IsFoundUnderTheDecimalTextOfItsNumber) {
    const Json list = tree("{'1': 'a', '02': 'b', '10': null, '0': 'c', '-1': 'd', '2147483648': 'e'}");
    EXPECT_EQ(text(entry_at(list.get(), 1)), "'a'");
    EXPECT_EQ(entry_at(list.get(), 2), nullptr);
    EXPECT_EQ(text(entry_at(list.get(), 10)), "null");
    EXPECT_EQ(text(entry_at(list.get(), 0)), "'c'");
    EXPECT_EQ(text(entry_at(list.get(), -1)), "'d'");
    EXPECT_EQ(text(entry_at(list.get(), 2147483648)), "'e'");
    EXPECT_EQ(entry_at(nullptr, 1), nullptr);
    EXPECT_EQ(entry_at(tree("['a']").get(), 1), nullptr);
}

TEST(MaxNumber, ReadsNamesAsAtoiDoes) {
    const struct {
        const char* list;
        int highest;
    } rows[] = {
        {"{}", -1},
        {"{'0': 1}", -1},
        {"{'max_instance': 9}", -1},
        {"{'1': 1, '3': 1, 'max_instance': 9}", 3},
        {"{'03': 1}", 3},
        {"{'3x': 1}", 3},
        {"{' 3': 1}", 3},
        {"{'+5': 1}", 5},
        {"{'-1': 1}", -1},
        {"{'-1': 1, '2': 1}", 2},
        {"{'x3': 1}", -1},
        {"{'': 1}", -1},
        {"{'2147483647': 1}", INT_MAX},
        {"{'99999999999': 1}", INT_MAX},
        {"{'99999999999999999999999999': 1}", INT_MAX},
        {"{'-99999999999': 1}", -1},
        {"[1, 2]", -1},
        {"null", -1},
    };
    for (const auto& row : rows) EXPECT_EQ(max_number(tree(row.list).get()), row.highest) << row.list;
    EXPECT_EQ(max_number(nullptr), -1);
}

TEST(HasInstances, NeedsAnIntegerOfAtLeastOne) {
    EXPECT_TRUE(has_instances(tree("{'max_instance': 1}").get()));
    EXPECT_TRUE(has_instances(tree("{'max_instance': 70000}").get()));
    for (const char* const list : {"{'max_instance': 0}", "{'max_instance': -1}", "{'max_instance': '1'}", "{'1': {}}",
                                   "{'max_instance': 1.0}", "{'max_instance': true}", "{'max_instance': null}", "[1]"})
        EXPECT_FALSE(has_instances(tree(list).get())) << list;
    EXPECT_FALSE(has_instances(nullptr));
}

TEST(ListBuilder, CountsFromOne) {
    ListBuilder list;
    list.add(string("a"));
    list.add(object());
    EXPECT_EQ(list.count(), 2u);
    EXPECT_EQ(text(list.finish()), "{'1':'a','2':{},'max_instance':2}");
}

TEST(ListBuilder, AnEmptyListHasItsCount) {
    EXPECT_EQ(text(ListBuilder{}.finish()), "{'max_instance':0}");
}

TEST(ListBuilder, AnAbsentEntryTakesItsNumber) {
    ListBuilder list;
    list.add(nullptr);
    list.add(integer(2));
    EXPECT_EQ(text(list.finish()), "{'2':2,'max_instance':2}");
}

TEST(ListBuilder, ASkippedNumberCountsAllTheSame) {
    ListBuilder list;
    list.add(integer(1));
    list.skip();
    list.add(integer(3));
    EXPECT_EQ(text(list.finish()), "{'1':1,'3':3,'max_instance':3}");
}

TEST(ListBuilder, FillsAnObjectThatIsThereAlready) {
    const Json destination = tree("{'z': 0}");
    {
        ListBuilder list{destination.get()};
        list.add(string("a"));
        list.finish();
    }
    EXPECT_EQ(text(destination), "{'z':0,'1':'a','max_instance':1}");
    EXPECT_EQ(destination->refcount, 1u);
}

TEST(Instances, ComeInTheOrderOfTheirNumbers) {
    EXPECT_EQ(present("{'10': 'j', 'max_instance': 3, '2': 'b', '1': null}"), "1=null 2='b' 10='j' ");
}

TEST(Instances, CostWhatIsPresentWhateverTheNumbers) {
    EXPECT_EQ(present("{'2147483647': 'z', '65536': 'y', '1': 'a'}"), "1='a' 65536='y' 2147483647='z' ");
}

TEST(Instances, AreOnlyNamesUnderWhichANumberIsLookedUp) {
    EXPECT_EQ(present("{'0': 1, '01': 1, '3x': 1, ' 4': 1, '+5': 1, '-6': 1, '': 1, '7.0': 1, 'max_instance': 1,"
                      " '2147483648': 1, '4294967297': 1, '99999999999999999999': 1}"),
              "");
}

TEST(Instances, OfAnythingButAnObjectAreNone) {
    EXPECT_EQ(present("['a']"), "");
    EXPECT_EQ(present("null"), "");
    EXPECT_EQ(Instances{nullptr}.count(), 0u);
}

Json list_down_from(int64_t highest) {
    Json list = object();
    for (int64_t number = highest; number > 0; --number) set(list.get(), Decimal{number}, integer(number));
    return list;
}

TEST(Instances, AreAllThereAtEverySize) {
    for (const int64_t size : {1, 31, 32, 33, 100, 1000}) {
        const Json list = list_down_from(size);
        const Instances instances{list.get()};
        ASSERT_EQ(instances.count(), static_cast<size_t>(size));
        int64_t expected = 0;
        for (const auto [number, entry] : instances) {
            EXPECT_EQ(number, ++expected);
            EXPECT_EQ(json_integer_value(entry), number);
        }
    }
}

TEST(Instances, AreNoneWhenMemoryRanOut) {
    const Json list = list_down_from(33);
    const OutOfMemory nothing_left{0};
    EXPECT_EQ(Instances{list.get()}.count(), 0u);
}

TEST(EveryNumber, IsFromOneToTheHighest) {
    EXPECT_EQ(every("{'1': 'a', '2': 'b'}"), "1='a' 2='b' ");
    EXPECT_EQ(every("{'2': 'b', '1': 'a', 'max_instance': 7}"), "1='a' 2='b' ");
}

TEST(EveryNumber, HasNoEntryInAGap) {
    EXPECT_EQ(every("{'4': 'd', '2': 'b'}"), "1=absent 2='b' 3=absent 4='d' ");
    EXPECT_EQ(every("{'1': null, '3': 'c'}"), "1=null 2=absent 3='c' ");
}

TEST(EveryNumber, GoesOnToNamesThatOnlyAtoiReads) {
    EXPECT_EQ(every("{'1': 'a', '3x': 'c'}"), "1='a' 2=absent 3=absent ");
    EXPECT_EQ(every("{'02': 'b'}"), "1=absent 2=absent ");
    EXPECT_EQ(every("{' 1': 'b'}"), "1=absent ");
    EXPECT_EQ(every("{'02': 'b', '2': 'c', '+3': 'd'}"), "1=absent 2='c' 3=absent ");
}

TEST(EveryNumber, OfNothingIsNone) {
    for (const char* const list : {"{}", "{'0': 1}", "{'-3': 1}", "{'max_instance': 4}", "[1, 2]", "'12'", "null"})
        EXPECT_EQ(every(list), "") << list;
}

struct Walked {
    size_t numbers = 0;
    int failures = 0;
    Messages::List messages;
};

Walked walk(const char* list) {
    const Json object = tree(list);
    const Messages messages;
    const Report report{"walker", messages};
    const EveryNumber numbers{object.get(), report};
    Walked walked;
    for ([[maybe_unused]] const Instance& instance : numbers) ++walked.numbers;
    walked.failures = numbers.failures();
    walked.messages = messages.list();
    return walked;
}

TEST(EveryNumber, ReachesTheBound) {
    EXPECT_EQ(K_CNVRT_MAX_INSTANCE, kMaxPlaceholderNumber);
    const Walked walked = walk("{'1': 1, '65535': 1}");
    EXPECT_EQ(walked.numbers, 65535u);
    EXPECT_EQ(walked.failures, 0);
    EXPECT_EQ(walked.messages, Messages::List{});
}

TEST(EveryNumber, IsNoneAboveTheBound) {
    const Walked walked = walk("{'1': 1, '65536': 1}");
    EXPECT_EQ(walked.numbers, 0u);
    EXPECT_EQ(walked.failures, 1);
    EXPECT_EQ(walked.messages, (Messages::List{{"walker", "Instance number 65536 is above 65535"}}));
}

TEST(EveryNumber, AlsoAboveTheBoundForNamesThatOnlyAtoiReads) {
    const Walked walked = walk("{'1': 1, '99999999999x': 1}");
    EXPECT_EQ(walked.numbers, 0u);
    EXPECT_EQ(walked.failures, 1);
    EXPECT_EQ(walked.messages, (Messages::List{{"walker", "Instance number 2147483647 is above 65535"}}));
}

TEST(ElementList, IsSharedElementByElement) {
    const Json array = tree("[{'a': 1}, 'b', null]");
    const Json list = list_of_elements(array.get());
    EXPECT_EQ(text(list), "{'1':{'a':1},'2':'b','3':null,'max_instance':3}");
    EXPECT_EQ(get(list.get(), "1"), json_array_get(array.get(), 0));
}

TEST(ElementList, OfAnythingButAnArrayIsEmpty) {
    for (const char* const value : {"{'1': 1}", "'a'", "null", "[]"})
        EXPECT_EQ(text(list_of_elements(tree(value).get())), "{'max_instance':0}") << value;
    EXPECT_EQ(text(list_of_elements(nullptr)), "{'max_instance':0}");
}

std::string elements_back(const char* list, const Messages& messages, int& failures) {
    return text(elements_of_list(tree(list).get(), Report{"elements", messages}, failures));
}

TEST(ElementList, ComesBackWithAnEmptyObjectForEachGap) {
    const Messages messages;
    int failures = 0;
    EXPECT_EQ(elements_back("{'3': 'c', '1': {'a': 1}, 'max_instance': 9}", messages, failures), "[{'a':1},{},'c']");
    EXPECT_EQ(elements_back("{'1': null}", messages, failures), "[null]");
    EXPECT_EQ(elements_back("{}", messages, failures), "[]");
    EXPECT_EQ(elements_back("[1]", messages, failures), "[]");
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(messages.list(), Messages::List{});
}

TEST(ElementList, ComesBackEmptyAboveTheBound) {
    const Messages messages;
    int failures = 1;
    EXPECT_EQ(elements_back("{'1': 1, '65536': 1}", messages, failures), "[]");
    EXPECT_EQ(failures, 2);
    EXPECT_EQ(messages.list(), (Messages::List{{"elements", "Instance number 65536 is above 65535"}}));
}

TEST(NameList, HoldsEachNameInAnObject) {
    EXPECT_EQ(text(names_to_list(tree("['lan', 'wan']").get())),
              "{'1':{'name':'lan'},'2':{'name':'wan'},'max_instance':2}");
    EXPECT_EQ(text(names_to_list(tree("{'a': 1}").get())), "{'max_instance':0}");
}

std::string names_back(const char* list) {
    const Messages messages;
    int failures = 0;
    const std::string names = text(list_to_names(tree(list).get(), Report{"names", messages}, failures));
    EXPECT_EQ(failures, 0);
    return names;
}

TEST(NameList, ComesBackWithAnEmptyNameForEachGap) {
    EXPECT_EQ(names_back("{'1': {'name': 'lan'}, '3': {'name': 'wan'}, 'max_instance': 2}"), "['lan','','wan']");
}

TEST(NameList, AnEntryWithoutANameAppendsNothing) {
    EXPECT_EQ(names_back("{'1': {'name': 'lan'}, '2': {}, '3': 'x', '4': {'name': 'wan'}}"), "['lan','wan']");
}

TEST(ListWays, AnAbsentListStoresNothing) {
    const Json destination = object();
    const Messages messages;
    const Report report{"lists", messages};
    for (const Way way : {&ways::names_to_new, &ways::names_to_old, &ways::elements_to_new, &ways::elements_to_old})
        EXPECT_EQ(way(destination.get(), Key{"list"}, nullptr, report), 0);
    EXPECT_EQ(text(destination), "{}");
}

TEST(ListWays, AListAboveTheBoundIsStoredEmptyAndCounts) {
    const Json destination = object();
    const Messages messages;
    const Report report{"lists", messages};
    const Json list = tree("{'65536': {'name': 'a'}}");
    EXPECT_EQ(ways::names_to_old(destination.get(), "names", list.get(), report), 1);
    EXPECT_EQ(ways::elements_to_old(destination.get(), "elements", list.get(), report), 1);
    EXPECT_EQ(text(destination), "{'names':[],'elements':[]}");
    EXPECT_EQ(messages.list().size(), 2u);
}

TEST(SortedKeys, AreReleasedWhenMemoryRunsOut) {
    const Json small = tree("{'b': 1, 'a': 2, 'c': 3}");
    for (size_t allocations = 0; allocations < 4; ++allocations) {
        int count = 0;
        const OutOfMemory soon{allocations};
        EXPECT_EQ(getSortedKeys(small.get(), &count), nullptr) << allocations;
        EXPECT_EQ(count, -1) << allocations;
    }
}

TEST(SortedKeys, SayWhenALargeObjectCannotBeSorted) {
    const Json large = list_down_from(100);
    int count = 0;
    const OutOfMemory nothing_left{0};
    EXPECT_EQ(getSortedKeys(large.get(), &count), nullptr);
    EXPECT_EQ(count, -1);
}

TEST(SortedKeys, NeedNoCount) {
    const Json object = tree("{'a': 1}");
    char** const keys = getSortedKeys(object.get(), nullptr);
    ASSERT_NE(keys, nullptr);
    EXPECT_STREQ(keys[0], "a");
    freeArrayOfString(keys, 1);
}

TEST(SortedKeys, AreReleasedByCount) {
    const Json object = tree("{'b': 1, 'a': 2}");
    int count = 0;
    char** const keys = getSortedKeys(object.get(), &count);
    ASSERT_EQ(count, 2);
    EXPECT_STREQ(keys[0], "a");
    EXPECT_STREQ(keys[1], "b");
    freeArrayOfString(keys, count);
    freeArrayOfString(nullptr, 5);
}

}  // namespace
}  // namespace kcnvrt

// The library's messages as they are shown: on one line, and without the secret that they may show.
#include "messages.h"

#include <gtest/gtest.h>

#include <cstring>

#include "owned.h"

using namespace kcnvrt;
using namespace kcnvrt::text;

namespace {

class Message : public testing::Test {
protected:
    // Reported of a member of the document.
    std::string shown(const char* message, const char* member, bool shows_secrets = false) {
        const size_t first = k_err_count(record.get());
        k_err_set(record.get(), "author", 1, "%s", message);
        k_err_place(record.get(), root.get(), member, std::strlen(member));
        k_err_locate(record.get(), first, root.get());
        return message_of(record.get(), first, {root.get(), place}, shows_secrets, texts);
    }

    const char* place = "";  // of the document in its text

    Json root{json_loads(R"({"password": "hunter2", "mode": "hunter2", "key": "", "pin": 1234})", 0, nullptr)};
    Record record{k_err_new()};
    KeptTexts texts;
};

TEST_F(Message, LosesTheLineBreakAtItsEnd) {
    EXPECT_EQ(shown("no digit", "mode"), "no digit");
    EXPECT_EQ(shown("no digit\n", "mode"), "no digit");
    EXPECT_EQ(shown("no\ndigit\n", "mode"), "no\ndigit");
}

TEST_F(Message, ShowsNoSecretOfItsPlace) {
    EXPECT_EQ(shown("\"hunter2\", that is hunter2\n", "password"), "\"***\", that is ***");
    EXPECT_EQ(shown("hunter2", "password"), "***");
    EXPECT_EQ(shown("\"hunter2\" is no mode", "mode"), "\"hunter2\" is no mode");
}

TEST_F(Message, ShowsNoSecretOfWhatItsDocumentIsIn) {
    place = "/passwd";
    EXPECT_EQ(shown("\"hunter2\" is no mode", "mode"), "\"***\" is no mode");
    place = "/modes";
    EXPECT_EQ(shown("\"hunter2\" is no mode", "mode"), "\"hunter2\" is no mode");
}

TEST_F(Message, ShowsASecretToThoseWhoAsk) {
    EXPECT_EQ(shown("\"hunter2\"\n", "password", true), "\"hunter2\"");
}

TEST_F(Message, StaysAsItIsWhereNothingIsHidden) {
    EXPECT_EQ(shown("not \"\"", "key"), "not \"\"");
    EXPECT_EQ(shown("type 1", "pin"), "type 1");
}

}  // namespace

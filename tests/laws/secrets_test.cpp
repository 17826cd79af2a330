// What tables convert as a password is masked wherever a value is shown.
#include <gtest/gtest.h>

#include <set>

#include "../../text/secrets.h"
#include "engine.h"
#include "examples.h"
#include "k_cnvrt.h"
#include "silence.h"

namespace {

// The names of the rows that convert passwords.
class PasswordRows : public Watcher {
public:
    void see(const RowRun& run) override {
        if (run.way() != kcnvrt::ways::password_to_new && run.way() != kcnvrt::ways::password_to_old) return;
        names.insert(std::string{run.row.old_name.view()});
        names.insert(std::string{run.row.new_name.view()});
    }

    std::set<std::string> names;
};

TEST(Secrets, HoldEveryPasswordOfATable) {
    PasswordRows rows;
    const Silence silence;
    const Tree old_root = old_example();
    const Tree new_root = new_example();
    const Tree to_new{k_cnvrt_to_new(old_root.get(), nullptr, 0, nullptr)};
    const Tree to_old{k_cnvrt_to_old(new_root.get(), 0, nullptr)};
    EXPECT_TRUE(rows.names.contains("loid_password"));
    EXPECT_GE(rows.names.size(), 10u);
    for (const std::string& name : rows.names) EXPECT_TRUE(kcnvrt::text::is_secret_name(name)) << name;
}

}  // namespace

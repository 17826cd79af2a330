// How many threads are worth having.
#include "stream/cores.h"

#include <gtest/gtest.h>
#include <sched.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

namespace kcnvrt {

namespace {

// A system's files of control groups, made up.
class Groups : public testing::Test {
protected:
    void SetUp() override { ASSERT_NE(nullptr, mkdtemp(root_.data())); }
    void TearDown() override { std::filesystem::remove_all(root_); }

    void write(const std::string& file, const std::string& text) const {
        const std::filesystem::path path = root_ + file;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << text;
    }
    void write_older(const std::string& group, const std::string& quota) const {
        write("/sys/fs/cgroup/cpu" + group + "/cpu.cfs_quota_us", quota + "\n");
        write("/sys/fs/cgroup/cpu" + group + "/cpu.cfs_period_us", "100000\n");
    }
    std::size_t cores() const { return cores_of_groups(root_); }

private:
    std::string root_ = std::filesystem::temp_directory_path() / "cores-XXXXXX";
};

}  // namespace

TEST(Cores, AreNoMoreThanTheMachineHas) {
    EXPECT_GE(usable_cores(), 1U);
    EXPECT_LE(usable_cores(), std::thread::hardware_concurrency());
}

TEST(Cores, AreThoseThatTheProcessIsBoundTo) {
    cpu_set_t before;
    ASSERT_EQ(0, sched_getaffinity(0, sizeof before, &before));
    cpu_set_t one;
    CPU_ZERO(&one);
    for (int core = 0; CPU_COUNT(&one) == 0; ++core)
        if (CPU_ISSET(core, &before)) CPU_SET(core, &one);
    ASSERT_EQ(0, sched_setaffinity(0, sizeof one, &one));
    EXPECT_EQ(1U, usable_cores());
    ASSERT_EQ(0, sched_setaffinity(0, sizeof before, &before));
}

TEST_F(Groups, ThatAreNotThereSetNoLimit) {
    EXPECT_EQ(kNoLimit, cores());
    write("/proc/self/cgroup", "0::/a\n");
    EXPECT_EQ(kNoLimit, cores());
    write("/sys/fs/cgroup/a/cpu.max", "max 100000\n");
    EXPECT_EQ(kNoLimit, cores());
    for (const char* text : {"", "100000\n", "x y\n", "0 100000\n", "100000 0\n", "-1 100000\n"}) {
        write("/sys/fs/cgroup/a/cpu.max", text);
        EXPECT_EQ(kNoLimit, cores()) << text;
    }
}

TEST_F(Groups, LimitWhatIsInThem) {
    write("/proc/self/cgroup", "0::/a/b\n");
    write("/sys/fs/cgroup/a/b/cpu.max", "250000 100000\n");
    EXPECT_EQ(3U, cores());
    write("/sys/fs/cgroup/a/cpu.max", "100000 50000\n");
    EXPECT_EQ(2U, cores());
    write("/sys/fs/cgroup/cpu.max", "1000 100000\n");  // as a container sees its own group
    EXPECT_EQ(1U, cores());
    write("/sys/fs/cgroup/c/cpu.max", "1000 100000\n");
    write("/sys/fs/cgroup/cpu.max", "max 100000\n");
    EXPECT_EQ(2U, cores());
}

TEST_F(Groups, OfTheOlderKindLimitLikewise) {
    write("/proc/self/cgroup", "5:memory:/m\n4:cpu,cpuacct:/a/b\n3:cpuset:/s\n1:name=systemd:/x\n0::/\n");
    EXPECT_EQ(kNoLimit, cores());
    write_older("/a", "-1");
    EXPECT_EQ(kNoLimit, cores());
    write_older("/a/b", "400000");
    EXPECT_EQ(4U, cores());
    write_older("", "150000");
    EXPECT_EQ(2U, cores());
    write_older("/s", "1000");
    EXPECT_EQ(2U, cores());
    write("/sys/fs/cgroup/cpu.max", "100000 100000");
    EXPECT_EQ(1U, cores());
}

}  // namespace kcnvrt

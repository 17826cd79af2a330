// How many threads are worth having.
#include "stream/cores.h"

#include <gtest/gtest.h>
#include <sched.h>

#include <thread>

namespace kcnvrt {

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

}  // namespace kcnvrt

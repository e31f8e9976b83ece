#include "WithoutThreads.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace
{

using Outcome = ChildWithoutThreads::Outcome;

void takeThreadsAway()
{
    const rlimit none{};
    setrlimit(RLIMIT_NPROC, &none);
    // The limit does not count for root. Whoever has no other user to become is not root here.
    constexpr uid_t kNobody = 65534;
    [[maybe_unused]] const int changed = setresuid(kNobody, kNobody, kNobody);
}

bool canStartThreads()
{
    try {
        std::thread([] {}).join();
        return true;
    } catch (const std::system_error&) {
        return false;
    }
}

Outcome outcomeOf(const std::function<bool()>& check)
{
    takeThreadsAway();
    if (canStartThreads()) {
        return Outcome::HadThreads;
    }
    return check() ? Outcome::Holds : Outcome::HoldsNot;
}

} // namespace

ChildWithoutThreads::ChildWithoutThreads(const std::function<bool()>& check)
{
    EXPECT_EQ(pipe(mStart.data()), 0);
    mChild = fork();
    if (mChild == 0) {
        char start = 0;
        const bool isTold = read(mStart[0], &start, 1) == 1;
        _exit(static_cast<int>(isTold ? outcomeOf(check) : Outcome::Died));
    }
}

ChildWithoutThreads::~ChildWithoutThreads()
{
    close(mStart[0]);
    close(mStart[1]);
}

Outcome ChildWithoutThreads::run()
{
    EXPECT_EQ(write(mStart[1], "", 1), 1);
    int status = 0;
    EXPECT_EQ(waitpid(mChild, &status, 0), mChild);
    return WIFEXITED(status) ? static_cast<Outcome>(WEXITSTATUS(status)) : Outcome::Died;
}

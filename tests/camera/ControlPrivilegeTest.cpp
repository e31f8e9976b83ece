#include "ControlPrivilege.h"

#include <gtest/gtest.h>

namespace camera
{
namespace
{

using namespace std::chrono_literals;
using gige::net::Endpoint;
using gige::wire::GvcpStatus;

const Endpoint kHost{{0x7F000001}, 5000};
const Endpoint kOther{{0x7F000001}, 5001};

TEST(ControlPrivilege, IsOpenToAllReaders)
{
    const ControlPrivilege privilege;
    EXPECT_EQ(privilege.value(), 0U);
    EXPECT_TRUE(privilege.mayRead(kOther));
    EXPECT_FALSE(privilege.mayWrite(kOther));
}

TEST(ControlPrivilege, BelongsToTheFirst)
{
    ControlPrivilege privilege;
    EXPECT_EQ(privilege.write(2, kHost, 0s), GvcpStatus::Success);
    EXPECT_EQ(privilege.write(2, kOther, 0s), GvcpStatus::AccessDenied);
    EXPECT_TRUE(privilege.mayWrite(kHost));
    EXPECT_FALSE(privilege.mayWrite(kOther));
    EXPECT_TRUE(privilege.mayRead(kOther));
}

TEST(ControlPrivilege, ExclusiveKeepsReadersOut)
{
    ControlPrivilege privilege;
    EXPECT_EQ(privilege.write(1, kHost, 0s), GvcpStatus::Success);
    EXPECT_TRUE(privilege.mayRead(kHost));
    EXPECT_FALSE(privilege.mayRead(kOther));
}

TEST(ControlPrivilege, TheOwnerMayChangeAndRelease)
{
    ControlPrivilege privilege;
    (void)privilege.write(2, kHost, 0s);
    EXPECT_EQ(privilege.write(1, kHost, 0s), GvcpStatus::Success);
    EXPECT_EQ(privilege.value(), 1U);
    EXPECT_EQ(privilege.write(0, kHost, 0s), GvcpStatus::Success);
    EXPECT_EQ(privilege.write(2, kOther, 0s), GvcpStatus::Success);
    EXPECT_EQ(privilege.owner(), kOther);
}

TEST(ControlPrivilege, ExpiresInSilence)
{
    ControlPrivilege privilege;
    EXPECT_FALSE(privilege.isExpired(1h, 3s));
    (void)privilege.write(2, kHost, 10s);
    privilege.heard(kOther, 12s);
    EXPECT_FALSE(privilege.isExpired(13s, 3s));
    EXPECT_TRUE(privilege.isExpired(13s + 1ms, 3s));
    privilege.heard(kHost, 12s);
    EXPECT_FALSE(privilege.isExpired(15s, 3s));
}

} // namespace
} // namespace camera

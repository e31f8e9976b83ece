#include "StreamReceiver.h"
#include "WithoutThreads.h"

#include <gtest/gtest.h>
#include <system_error>

namespace
{

TEST(WithoutThreads, AStreamIsNotOpenedAndItsPortStaysFree)
{
    ChildWithoutThreads child([] {
        const gige::net::Endpoint local{.address = {0x7F000001}, .port = 50123};
        std::error_code error;
        const auto receiver = gige::stream::StreamReceiver::open({.local = local}, error);
        const bool isRefused =
            receiver == nullptr && error == std::errc::resource_unavailable_try_again;
        return isRefused && gige::net::UdpSocket::open(local).has_value();
    });
    EXPECT_EQ(child.run(), ChildWithoutThreads::Outcome::Holds);
}

} // namespace

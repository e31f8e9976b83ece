#include "UdpSocket.h"

namespace gige::net
{

std::optional<UdpSocket> UdpSocket::open(const Endpoint& local, const UdpSocketOptions& options)
{
    std::error_code error;
    return open(local, options, error);
}

} // namespace gige::net

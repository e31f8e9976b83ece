#ifndef TELVO_TESTS_GIGE_NET_TESTENDPOINTS_H
#define TELVO_TESTS_GIGE_NET_TESTENDPOINTS_H

#include "UdpSocket.h"

#include <chrono>

namespace gige::net
{

inline constexpr Endpoint kHost{{0x7F000101}, 0};   // 127.0.1.1
inline constexpr Endpoint kDevice{{0x7F000102}, 0}; // 127.0.1.2
/// Never reached unless something is broken.
inline constexpr std::chrono::seconds kLong{20};

} // namespace gige::net

#endif

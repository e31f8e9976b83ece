#ifndef TELVO_TOOLS_TELVO_PANEL_WEB_ACCESSGUARD_H
#define TELVO_TOOLS_TELVO_PANEL_WEB_ACCESSGUARD_H

#include <cstdint>
#include <string>
#include <string_view>

namespace telvo
{

/// 128 random bits, as 32 hexadecimal digits.
std::string makeToken();

/**
 * Tells this panel's own pages from all that may reach its port through the user's browser: a
 * foreign page is known by its Origin, a name that was made to point here by the Host that the
 * browser was told. Pure; the server's answers follow it.
 */
class AccessGuard
{
  public:
    /// @param token  empty: the panel is served on this machine alone, and demands none. Else it is
    ///               demanded, and the panel goes by any address as well.
    AccessGuard(std::uint16_t port, std::string token);

    /// A Host header: "127.0.0.1:8400". Only an address, or this machine's own name for itself,
    /// cannot be another's name that was made to lead here.
    bool isOwnHost(std::string_view host) const;

    /// An Origin header: "http://" and the very Host of the request.
    bool isOwnOrigin(std::string_view origin, std::string_view host) const;

    bool needsToken() const { return !mToken.empty(); }

    /// Takes as long for a wrong one as for the right one.
    bool isToken(std::string_view text) const;

    /// Whether the token is in a Cookie header.
    bool hasToken(std::string_view cookies) const;

    /// The Set-Cookie header that makes a browser send it.
    std::string cookie() const;

  private:
    std::string mPort; // ":8400"
    std::string mToken;
};

} // namespace telvo

#endif

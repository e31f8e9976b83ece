#ifndef TELVO_TESTS_INTEGRATION_VIEWERSOCKET_H
#define TELVO_TESTS_INTEGRATION_VIEWERSOCKET_H

#include <optional>
#include <string>
#include <string_view>

/// Where a viewer of lines receives them in the test's own network: a datagram socket of an
/// abstract name.
class ViewerSocket
{
  public:
    explicit ViewerSocket(std::string_view name);
    ~ViewerSocket();
    ViewerSocket(const ViewerSocket&) = delete;
    ViewerSocket& operator=(const ViewerSocket&) = delete;

    int get() const { return mSocket; }
    /// None: no line waits.
    std::optional<std::string> receive() const;

  private:
    int mSocket;
};

#endif

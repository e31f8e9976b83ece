#include "HttpSession.h"

#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http/empty_body.hpp>
#include <boost/beast/http/file_body.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/span_body.hpp>
#include <boost/beast/http/write.hpp>
#include <boost/beast/websocket/rfc6455.hpp>
#include <chrono>
#include <memory>
#include <optional>
#include <utility>

namespace telvo
{

namespace
{

namespace beast = boost::beast;
namespace http = beast::http;
using Error = beast::error_code;

constexpr std::uint32_t kMostHeaderBytes = 8192;
constexpr std::chrono::seconds kRequestTime{10}; // for a whole request; idle connections too
constexpr std::chrono::minutes kAnswerTime{10};  // for a whole answer, large files too

std::string_view viewOf(boost::string_view text)
{
    return {text.data(), text.size()};
}

class HttpSession : public std::enable_shared_from_this<HttpSession>
{
  public:
    HttpSession(boost::asio::ip::tcp::socket socket, ConnectionCount::Place place,
                const HttpService& service)
        : mStream(std::move(socket)), mPlace(std::move(place)), mService(service)
    {
    }

    void read();

  private:
    using Request = http::request<http::empty_body>;

    void onRead(Error error);
    void answer(const Request& request);
    template <typename Body>
    void send(const Request& request, const SiteAnswer& answer, typename Body::value_type body);
    void sendFile(const Request& request, const SiteAnswer& answer);

    beast::tcp_stream mStream;
    ConnectionCount::Place mPlace;
    const HttpService& mService;
    beast::flat_buffer mBuffer;
    std::optional<http::request_parser<http::empty_body>> mParser; // one for each request
};

void HttpSession::read()
{
    mParser.emplace();
    mParser->header_limit(kMostHeaderBytes);
    mStream.expires_after(kRequestTime);
    http::async_read_header(
        mStream, mBuffer, *mParser,
        [self = shared_from_this()](Error error, std::size_t /*size*/) { self->onRead(error); });
}

void HttpSession::onRead(Error error)
{
    if (error) {
        return; // gone, too slow, or no HTTP: not worth an answer
    }
    if (!mParser->is_done()) { // a body follows, which nobody here reads
        mParser->get().keep_alive(false);
    }
    answer(mParser->release());
}

void HttpSession::answer(const Request& request)
{
    const SiteAnswer answer =
        mService.site.answer({.method = viewOf(request.method_string()),
                              .target = viewOf(request.target()),
                              .host = viewOf(request[http::field::host]),
                              .origin = viewOf(request[http::field::origin]),
                              .cookies = viewOf(request[http::field::cookie]),
                              .wantsSocket = beast::websocket::is_upgrade(request)});
    if (answer.isSocket) {
        mService.takeSocket({std::move(mStream), request}, std::move(mPlace));
    } else if (answer.file) {
        sendFile(request, answer);
    } else {
        send<http::span_body<const char>>(request, answer,
                                          {answer.body.data(), answer.body.size()});
    }
}

void HttpSession::sendFile(const Request& request, const SiteAnswer& answer)
{
    http::file_body::value_type file;
    Error error;
    file.open(answer.file->string().c_str(), beast::file_mode::scan, error);
    if (error) { // it was there a moment ago
        return send<http::empty_body>(request, {.status = 404, .headers = answer.headers}, {});
    }
    send<http::file_body>(request, answer, std::move(file));
}

template <typename Body>
void HttpSession::send(const Request& request, const SiteAnswer& answer,
                       typename Body::value_type body)
{
    using Response = http::response<Body>;
    const auto response = std::make_shared<Response>(
        std::piecewise_construct, std::make_tuple(std::move(body)),
        std::make_tuple(static_cast<http::status>(answer.status), request.version()));
    for (const auto& [name, value] : answer.headers) {
        response->insert({name.data(), name.size()}, value);
    }
    response->keep_alive(request.keep_alive());
    response->prepare_payload();

    mStream.expires_after(kAnswerTime);
    const auto onWritten = [self = shared_from_this(), response](Error error,
                                                                 std::size_t /*size*/) {
        if (!error && response->keep_alive()) {
            self->read();
        } else {
            Error ignored;
            self->mStream.socket().shutdown(boost::asio::ip::tcp::socket::shutdown_send, ignored);
        }
    };
    const auto serializer = std::make_shared<http::response_serializer<Body>>(*response);
    if (request.method() == http::verb::head) {
        http::async_write_header(mStream, *serializer, [onWritten, serializer](auto... results) {
            onWritten(results...);
        });
    } else {
        http::async_write(mStream, *serializer,
                          [onWritten, serializer](auto... results) { onWritten(results...); });
    }
}

} // namespace

void serveHttp(boost::asio::ip::tcp::socket socket, ConnectionCount::Place place,
               const HttpService& service)
{
    std::make_shared<HttpSession>(std::move(socket), std::move(place), service)->read();
}

} // namespace telvo

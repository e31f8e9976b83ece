#include "PanelServer.h"

#include "Failure.h"

#include "PanelSite.h"
#include "WebClient.h"

#include "../writers/TemporaryFolder.h"

#include <atomic>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace
{

using telvo::AccessGuard;
using telvo::ClientId;
using telvo::Message;
using telvo::PanelServer;
using telvo::PanelSite;
using testing::HasSubstr;

/// Answers every message with itself.
class Echo : public telvo::ClientListener
{
  public:
    explicit Echo(PanelServer& server) : mServer(server) {}
    void onOpened(ClientId /*client*/) override { ++open; }
    void onMessage(ClientId client, std::string_view text) override
    {
        ++messages;
        mServer.send(client, std::make_shared<Message>(Message{.bytes = std::string(text)}));
    }
    void onClosed(ClientId /*client*/) override { --open; }

    std::atomic<int> open{0};
    std::atomic<int> messages{0};

  private:
    PanelServer& mServer;
};

class PanelServerTest : public testing::Test
{
  protected:
    PanelServerTest() { server.start(site, echo); }
    ~PanelServerTest() override { server.stop(); }

    std::uint16_t port() const { return server.port(); }
    /// A page's WebSocket.
    std::unique_ptr<WebClient> page()
    {
        auto client = std::make_unique<WebClient>(port());
        EXPECT_EQ(client->openSocket(client->origin()).status, 101);
        return client;
    }
    static void expectEcho(WebClient& client, const std::string& text)
    {
        client.sendText(text);
        const auto message = client.next();
        ASSERT_TRUE(message);
        EXPECT_EQ(message->bytes, text);
    }

    TemporaryFolder folder;
    PanelServer server{"127.0.0.1", 0};
    Echo echo{server};
    PanelSite site{AccessGuard(server.port(), ""), [this](const std::string& name) {
                       return name == "a.raw" ? std::optional(folder.path() / name) : std::nullopt;
                   }};
};

TEST_F(PanelServerTest, ServesSeveralRequestsOfAConnection)
{
    WebClient client(port());
    EXPECT_EQ(client.get("/").status, 200);
    const HttpAnswer again = client.get("/");
    EXPECT_EQ(again.status, 200);
    EXPECT_THAT(again.body, HasSubstr("</html>"));
    EXPECT_EQ(client.get("/nothing").status, 404);
}

TEST_F(PanelServerTest, GivesTheHeadAlone)
{
    WebClient client(port());
    const HttpAnswer answer = client.ask("HEAD / HTTP/1.1\r\nHost: " + client.host() + "\r\n\r\n");
    EXPECT_EQ(answer.status, 200);
    EXPECT_THAT(answer.head, HasSubstr("Content-Length: "));
    EXPECT_EQ(client.get("/").status, 200); // no body came in between
}

TEST_F(PanelServerTest, SendsAFinishedDownload)
{
    const std::string bytes(3'000'000, 'x');
    std::ofstream(folder.path() / "a.raw", std::ios::binary) << bytes;
    WebClient client(port());
    const HttpAnswer answer = client.get("/download/a.raw");
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.body, bytes);
    EXPECT_EQ(client.get("/download/b.raw").status, 404);
}

TEST_F(PanelServerTest, SurvivesADownloadThatIsGone)
{
    WebClient client(port());
    EXPECT_EQ(client.get("/download/a.raw").status, 404);
    EXPECT_EQ(client.get("/").status, 200);
}

TEST_F(PanelServerTest, RefusesForeignPagesAndNames)
{
    WebClient client(port());
    EXPECT_EQ(client.get("/", "Origin: http://evil.example\r\n").status, 403);
    EXPECT_EQ(client.ask("GET / HTTP/1.1\r\nHost: evil.example\r\n\r\n").status, 403);
    EXPECT_EQ(client.ask("GET / HTTP/1.1\r\n\r\n").status, 403);
    EXPECT_EQ(WebClient(port()).openSocket("http://evil.example").status, 403);
    EXPECT_EQ(WebClient(port()).openSocket("").status, 403);
    EXPECT_EQ(echo.open, 0);
}

TEST_F(PanelServerTest, RefusesToBeWrittenTo)
{
    WebClient client(port());
    const HttpAnswer answer = client.ask("POST / HTTP/1.1\r\nHost: " + client.host() +
                                         "\r\nContent-Length: 5\r\n\r\nhello");
    EXPECT_EQ(answer.status, 405);
    EXPECT_TRUE(client.isEnded());
}

TEST_F(PanelServerTest, DropsWhatIsNoHttp)
{
    for (const std::string& bytes :
         {std::string("\x16\x03\x01 a handshake of another kind\r\n\r\n"), std::string(64, '\0'),
          std::string("GET\r\n\r\n"), "GET /" + std::string(20'000, 'a') + " HTTP/1.1\r\n\r\n"}) {
        WebClient client(port());
        client.sendBytes(bytes);
        EXPECT_TRUE(client.isEnded()) << bytes.substr(0, 20);
    }
    EXPECT_EQ(WebClient(port()).get("/").status, 200);
}

TEST_F(PanelServerTest, TalksOverASocket)
{
    const auto client = page();
    expectEcho(*client, "hello");
    expectEcho(*client, std::string(PanelServer::kMostMessageBytes, 'x'));
    EXPECT_EQ(echo.open, 1);
}

TEST_F(PanelServerTest, ClosesASocketThatSendsTooMuch)
{
    const auto client = page();
    client->sendText(std::string(PanelServer::kMostMessageBytes + 1, 'x'));
    const auto message = client->next();
    ASSERT_TRUE(message);
    EXPECT_EQ(message->kind, SocketMessage::Kind::Close);
    EXPECT_EQ(message->closeCode, 1009);
    EXPECT_EQ(echo.messages, 0);
}

TEST_F(PanelServerTest, ClosesASocketThatBreaksTheProtocol)
{
    const auto reserved = page();
    reserved->sendFrame(0xF1, "reserved bits");
    EXPECT_EQ(reserved->next()->closeCode, 1002);
    const auto unmasked = page();
    unmasked->sendBytes(std::string("\x81\x05hello"));
    EXPECT_EQ(unmasked->next()->closeCode, 1002);
    const auto noText = page();
    noText->sendText("\xC3\x28");
    EXPECT_EQ(noText->next()->closeCode, 1007);
    EXPECT_EQ(echo.messages, 0);
    expectEcho(*page(), "still there");
}

TEST_F(PanelServerTest, TellsOfPagesThatCloseOrVanish)
{
    auto client = page();
    expectEcho(*client, "hello");
    client.reset(); // no goodbye
    const auto deadline = std::chrono::steady_clock::now() + WebClient::kPatience;
    while (echo.open != 0 && std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    EXPECT_EQ(echo.open, 0);
}

TEST_F(PanelServerTest, Serves200ConnectionsAtOnce)
{
    std::vector<std::unique_ptr<WebClient>> idle;
    for (int i = 0; i < 100; ++i) {
        idle.push_back(std::make_unique<WebClient>(port())); // says nothing
    }
    std::vector<std::unique_ptr<WebClient>> pages;
    for (int i = 0; i < 100; ++i) {
        pages.push_back(page());
    }
    for (const auto& client : pages) {
        expectEcho(*client, "hello");
    }
    EXPECT_EQ(echo.open, 100);
    EXPECT_EQ(WebClient(port()).get("/").status, 200);
}

TEST_F(PanelServerTest, TakesNoMoreConnectionsThanItsLimitAndGoesOn)
{
    std::vector<std::unique_ptr<WebClient>> crowd;
    for (std::size_t i = 0; i < PanelServer::kMostConnections; ++i) {
        crowd.push_back(std::make_unique<WebClient>(port()));
    }
    EXPECT_EQ(crowd.back()->get("/").status, 200);
    EXPECT_TRUE(WebClient(port()).isEnded());
    crowd.clear();
    const auto deadline = std::chrono::steady_clock::now() + WebClient::kPatience;
    int status = 0; // the places become free as the server hears of it
    while (status != 200 && std::chrono::steady_clock::now() < deadline) {
        status = WebClient(port()).get("/").status;
    }
    EXPECT_EQ(status, 200);
}

TEST_F(PanelServerTest, DropsAPageThatDoesNotRead)
{
    const auto client = page();
    expectEcho(*client, "hello");
    const auto large = std::make_shared<Message>(Message{std::string(8U << 20U, 'x'), true});
    for (std::size_t sent = 0; sent <= PanelServer::kMostWaitingBytes;
         sent += large->bytes.size()) {
        server.sendAll(large);
    }
    const auto deadline = std::chrono::steady_clock::now() + WebClient::kPatience;
    while (echo.open != 0 && std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    EXPECT_EQ(echo.open, 0);
    expectEcho(*page(), "still there");
}

TEST_F(PanelServerTest, SaysGoodbyeWhenItStops)
{
    const auto client = page();
    expectEcho(*client, "hello");
    server.sendAll(std::make_shared<Message>(Message{"the last"}));
    server.stop();
    EXPECT_EQ(client->next()->bytes, "the last");
    EXPECT_EQ(client->next()->closeCode, 1001);
}

TEST_F(PanelServerTest, SaysThatItsPortIsTaken)
{
    try {
        const PanelServer second("127.0.0.1", port());
        FAIL() << "two servers at one port";
    } catch (const telvo::Failure& failure) {
        EXPECT_THAT(failure.what(), HasSubstr("--port takes another"));
    }
}

TEST_F(PanelServerTest, SaysThatAnAddressIsNone)
{
    EXPECT_THROW(PanelServer("house", 0), telvo::Failure);
    EXPECT_THROW(PanelServer("192.0.2.1", 0), telvo::Failure);
}

} // namespace

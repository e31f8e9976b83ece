#include "PanelNews.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <vector>

namespace
{

using telvo::ClientId;
using telvo::MessagePointer;
using telvo::PanelNews;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr ClientId kAll = 0;

/// Notes who is sent which text.
class NotedClients : public telvo::Clients
{
  public:
    struct Sent {
        ClientId client;
        std::string text;
        bool operator==(const Sent&) const = default;
    };

    void send(ClientId client, MessagePointer message) override { note(client, *message); }
    void sendAll(MessagePointer message) override { note(kAll, *message); }

    std::vector<Sent> sent;

  private:
    void note(ClientId client, const telvo::Message& message)
    {
        const auto json = nlohmann::json::parse(message.bytes);
        EXPECT_EQ(json["event"], "log");
        sent.push_back({client, json["text"]});
    }
};

using Sent = NotedClients::Sent;

TEST(PanelNews, AreToldToAllPages)
{
    NotedClients clients;
    PanelNews news(clients);
    news.greet(7);
    news.tell("one");
    EXPECT_THAT(clients.sent, ElementsAre(Sent{kAll, "one"}));
}

TEST(PanelNews, AreKeptForTheFirstPageThatComes)
{
    NotedClients clients;
    PanelNews news(clients);
    news.tell("one");
    news.tell("two");
    EXPECT_THAT(clients.sent, IsEmpty());
    news.greet(7);
    news.greet(8);
    EXPECT_THAT(clients.sent, ElementsAre(Sent{7, "one"}, Sent{7, "two"}));
}

TEST(PanelNews, AreKeptAgainOnceTheLastPageIsGone)
{
    NotedClients clients;
    PanelNews news(clients);
    news.greet(7);
    news.forget(7);
    news.tell("one");
    news.greet(8);
    EXPECT_THAT(clients.sent, ElementsAre(Sent{8, "one"}));
}

TEST(PanelNews, AreKeptOnceThoughTheyAreRepeated)
{
    NotedClients clients;
    PanelNews news(clients);
    news.tell("one");
    news.tell("one");
    news.greet(7);
    EXPECT_THAT(clients.sent, ElementsAre(Sent{7, "one"}));
}

TEST(PanelNews, AreKeptAsFarAsTheyAreNew)
{
    NotedClients clients;
    PanelNews news(clients);
    for (std::size_t i = 0; i < PanelNews::kMostKept + 3; ++i) {
        news.tell(std::to_string(i));
    }
    news.greet(7);
    ASSERT_EQ(clients.sent.size(), PanelNews::kMostKept);
    EXPECT_EQ(clients.sent.front(), (Sent{7, "3"}));
}

} // namespace

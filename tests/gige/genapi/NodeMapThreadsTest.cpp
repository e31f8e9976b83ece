#include "DemoDescription.h"
#include "TestTree.h"

#include <thread>

namespace gige::genapi
{
namespace
{

TEST(NodeMapThreads, MayUseOneMapTogether)
{
    MemoryPort port(0x8000, kDemoMemory);
    const std::unique_ptr<NodeMap> map = *NodeMap::load(kDemoDescription, port);
    constexpr int kRounds = 300;
    std::atomic<int> wrong = 0;
    const auto check = [&](bool isRight) { wrong += isRight ? 0 : 1; };
    std::thread writer([&] {
        for (int i = 0; i < kRounds; ++i) {
            check(map->find<IntegerNode>("Width")->setValue(16 + 8 * (i % 100)) == Status::Ok);
        }
    });
    std::thread reader([&] {
        for (int i = 0; i < kRounds; ++i) {
            const auto width = map->find<IntegerNode>("Width")->value();
            check(width && *width % 8 == 0);
            const auto size = map->find<IntegerNode>("PayloadSize")->value(ReadFrom::Device);
            check(size && *size % (480 * 8) == 0);
        }
    });
    for (int i = 0; i < kRounds; ++i) {
        check(map->find<BooleanNode>("ReverseX")->setValue(i % 2 == 0) == Status::Ok);
        check(map->find("Width")->accessMode().status() == Status::Ok);
        map->invalidate();
        map->poll(std::chrono::milliseconds(1));
    }
    writer.join();
    reader.join();
    EXPECT_EQ(wrong, 0);
}

} // namespace
} // namespace gige::genapi

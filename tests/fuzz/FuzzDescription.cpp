// Any bytes as a description file, plain or zipped, and every access to what it describes.
#include "DescriptionFile.h"
#include "DescriptionUrl.h"
#include "NodeMap.h"

#include <algorithm>

namespace
{

using namespace gige::genapi;

constexpr std::size_t kNodesTried = 200; // per input, so that each ends quickly

/// Registers that hold a byte of their address, and take every write.
class PatternPort : public RegisterPort
{
  public:
    Status readMemory(std::uint64_t address, std::span<std::uint8_t> bytes) override
    {
        std::ranges::fill(bytes, static_cast<std::uint8_t>(address >> 2U));
        return Status::Ok;
    }
    Status writeMemory(std::uint64_t /*address*/, std::span<const std::uint8_t> bytes) override
    {
        return bytes.size() % 4 == 0 ? Status::Ok : Status::PortBadAddress;
    }
    Status readRegister(std::uint64_t address, std::uint32_t& value) override
    {
        value = static_cast<std::uint32_t>(address);
        return Status::Ok;
    }
    Status writeRegister(std::uint64_t /*address*/, std::uint32_t /*value*/) override
    {
        return Status::Ok;
    }
};

// The answers do not matter here, only that there are some.
template <typename... Answers>
void ignore(const Answers&... /*answers*/)
{
}

void exercise(NodeMap& map, Node& node)
{
    ignore(node.accessMode());
    if (auto* const integer = dynamic_cast<IntegerNode*>(&node)) {
        const Result<std::int64_t> value = integer->value();
        ignore(integer->minimum(), integer->maximum(), integer->increment(), integer->unit(),
               integer->setValue(value ? *value : 1));
    } else if (auto* const real = dynamic_cast<FloatNode*>(&node)) {
        const Result<double> value = real->value(ReadFrom::Device);
        ignore(real->minimum(), real->maximum(), real->increment(), real->unit(),
               real->setValue(value ? *value : 1.5));
    } else if (auto* const boolean = dynamic_cast<BooleanNode*>(&node)) {
        ignore(boolean->value(), boolean->setValue(true));
    } else if (auto* const text = dynamic_cast<StringNode*>(&node)) {
        ignore(text->value(), text->setValue("text"), text->maximumLength());
    } else if (auto* const enumeration = dynamic_cast<EnumerationNode*>(&node)) {
        ignore(enumeration->text());
        for (const auto& entry : enumeration->entries()) {
            ignore(enumeration->setText(entry->symbolic()));
        }
    } else if (auto* const command = dynamic_cast<CommandNode*>(&node)) {
        ignore(command->execute(), command->isDone());
    } else if (auto* const bytes = dynamic_cast<RegisterNode*>(&node)) {
        const auto content = bytes->read();
        ignore(bytes->length(), content ? bytes->write(*content) : content.status());
    }
    map.poll(std::chrono::milliseconds(10));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    ignore(parseDescriptionUrl(std::string(data, data + size)));
    const Result<std::string> xml = unpackDescription({data, size});
    if (!xml) {
        return 0;
    }
    PatternPort port;
    const auto map = NodeMap::load(*xml, port);
    if (map) {
        const std::vector<Node*> nodes = (*map)->nodes();
        for (Node* const node : std::span(nodes).first(std::min(nodes.size(), kNodesTried))) {
            exercise(**map, *node);
        }
    }
    return 0;
}

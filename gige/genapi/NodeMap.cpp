#include "NodeMap.h"

#include "DescriptionReader.h"
#include "Register.h"
#include "TextNumbers.h"

#include <utility>

namespace gige::genapi
{

namespace
{

// Schema 1.0, which descriptions without a version follow, knew no other access to 4 bytes.
bool isFirstSchema(const pugi::xml_node& description)
{
    const auto version = [&description](const char* name, std::int64_t otherwise) {
        return parseInteger(description.attribute(name).value()).value_or(otherwise);
    };
    return version("SchemaMajorVersion", 1) <= 1 && version("SchemaMinorVersion", 0) < 1;
}

PortPolicy policyFor(const pugi::xml_node& description, const PortOptions& options)
{
    return {options.fourBytesAsRegister.value_or(isFirstSchema(description)),
            options.hasWriteMemory, options.isBigEndian};
}

} // namespace

NodeMap::NodeMap(RegisterPort& port, PortPolicy policy) : mStore(port, policy) {}

Result<std::unique_ptr<NodeMap>> NodeMap::load(std::string_view xml, RegisterPort& port,
                                               const PortOptions& options)
{
    pugi::xml_document document;
    const Result<pugi::xml_node> description = parseDescription(xml, document);
    if (!description) {
        return description.status();
    }
    std::unique_ptr<NodeMap> map(new NodeMap(port, policyFor(*description, options)));
    if (const Status status = readNodes(*description, map->mStore); status != Status::Ok) {
        return status;
    }
    // Only registers are cached; a node above one is read anew with it.
    for (const auto& node : map->mStore.nodes()) {
        if (node->registers() != nullptr && node->info().pollingTime.count() > 0) {
            map->mUnpolled.emplace(node.get(), 0);
        }
    }
    return map;
}

void NodeMap::invalidate()
{
    const std::lock_guard lock(mStore.state().mutex);
    mStore.state().cache.clear();
}

void NodeMap::poll(std::chrono::milliseconds elapsed)
{
    const std::lock_guard lock(mStore.state().mutex);
    for (auto& [node, unpolled] : mUnpolled) {
        unpolled += elapsed;
        if (unpolled >= node->info().pollingTime) {
            mStore.state().cache.drop(node->registers()->cacheId());
            unpolled = std::chrono::milliseconds(0);
        }
    }
}

} // namespace gige::genapi

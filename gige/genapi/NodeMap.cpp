#include "NodeMap.h"

#include "DescriptionReader.h"
#include "Register.h"
#include "TextNumbers.h"

#include <utility>

namespace gige::genapi
{

namespace
{

DescriptionInfo readInfo(const pugi::xml_node& description)
{
    DescriptionInfo info;
    info.modelName = description.attribute("ModelName").value();
    info.vendorName = description.attribute("VendorName").value();
    info.toolTip = description.attribute("ToolTip").value();
    info.standardNameSpace = description.attribute("StandardNameSpace").value();
    info.schemaMajor =
        parseInteger(description.attribute("SchemaMajorVersion").value()).value_or(1);
    info.schemaMinor =
        parseInteger(description.attribute("SchemaMinorVersion").value()).value_or(0);
    return info;
}

PortPolicy policyFor(const DescriptionInfo& info, const PortOptions& options)
{
    const bool isFirstSchema = info.schemaMajor <= 1 && info.schemaMinor < 1;
    return {options.fourBytesAsRegister.value_or(isFirstSchema), options.hasWriteMemory,
            options.isBigEndian};
}

} // namespace

NodeMap::NodeMap(DescriptionInfo info, RegisterPort& port, PortPolicy policy)
    : mInfo(std::move(info)), mStore(port, policy)
{
}

Result<std::unique_ptr<NodeMap>> NodeMap::load(std::string_view xml, RegisterPort& port,
                                               const PortOptions& options)
{
    pugi::xml_document document;
    const Result<pugi::xml_node> description = parseDescription(xml, document);
    if (!description) {
        return description.status();
    }
    DescriptionInfo info = readInfo(*description);
    const PortPolicy policy = policyFor(info, options);
    std::unique_ptr<NodeMap> map(new NodeMap(std::move(info), port, policy));
    if (const Status status = readNodes(*description, map->mStore); status != Status::Ok) {
        return status;
    }
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

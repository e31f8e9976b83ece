#ifndef TELVO_TESTS_GIGE_GENAPI_TESTTREE_H
#define TELVO_TESTS_GIGE_GENAPI_TESTTREE_H

#include "MemoryPort.h"
#include "NodeMap.h"

#include <gtest/gtest.h>

#include <string>

namespace gige::genapi
{

/// A description around some nodes. @param minor of schema 1.x
inline std::string describe(const std::string& nodes, int minor = 1)
{
    return R"(<RegisterDescription SchemaMajorVersion="1" SchemaMinorVersion=")" +
           std::to_string(minor) + R"("><Port Name="Device"/>)" + nodes + "</RegisterDescription>";
}

/// The elements of a register at 0x100 that can be read and written, but for its length.
inline std::string at100(const std::string& rest)
{
    return "<Address>0x100</Address><AccessMode>RW</AccessMode><pPort>Device</pPort>" + rest;
}

/// A node map over memory from 0x100 on.
struct TestTree {
    /// @param memory  hexadecimal digits
    explicit TestTree(const std::string& nodes,
                      const std::string& memory = "00000000000000000000000000000000")
        : TestTree(nodes, memory, 1, {})
    {
    }

    TestTree(const std::string& nodes, const std::string& memory, int schemaMinor,
             const PortOptions& options)
        : port(0x100, memory)
    {
        auto loaded = NodeMap::load(describe(nodes, schemaMinor), port, options);
        EXPECT_EQ(loaded.status(), Status::Ok);
        map = *std::move(loaded);
    }

    template <typename NodeType>
    NodeType& get(const char* name)
    {
        auto* const node = map->find<NodeType>(name);
        if (node == nullptr) {
            throw std::runtime_error(std::string("no such node: ") + name);
        }
        return *node;
    }

    IntegerNode& integer(const char* name) { return get<IntegerNode>(name); }
    FloatNode& real(const char* name) { return get<FloatNode>(name); }

    /// The value, or a number that no test expects.
    std::int64_t value(const char* name)
    {
        const Result<std::int64_t> value = integer(name).value();
        EXPECT_EQ(value.status(), Status::Ok) << name;
        return value ? *value : -987654321;
    }
    double realValue(const char* name)
    {
        const Result<double> value = real(name).value();
        EXPECT_EQ(value.status(), Status::Ok) << name;
        return value ? *value : -987654321.0;
    }
    Status valueStatus(const char* name) { return integer(name).value().status(); }

    MemoryPort port;
    std::unique_ptr<NodeMap> map;
};

using Accesses = std::vector<std::string>;

} // namespace gige::genapi

#endif

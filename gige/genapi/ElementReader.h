#ifndef TELVO_GIGE_GENAPI_ELEMENTREADER_H
#define TELVO_GIGE_GENAPI_ELEMENTREADER_H

#include "NodeStore.h"
#include "NumberSource.h"

#include <pugixml.hpp>

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace gige::genapi
{

/// Name without namespace prefix.
std::string_view localName(const pugi::xml_node& element);

/// Children with this local name, in order.
std::vector<pugi::xml_node> childrenOf(const pugi::xml_node& element, std::string_view tag);

/// The text in an element, without blanks around it.
std::string_view textOf(const pugi::xml_node& element);

/// Reads one node's XML element. What is missing gives nothing; what is wrong is remembered as the
/// node's defect, and reading goes on. References are recorded in the nodes' links.
class ElementReader
{
  public:
    /// @param fallback  where to look for what the element lacks: a StructReg for its entries
    ElementReader(NodeStore& store, Node& node, pugi::xml_node element,
                  pugi::xml_node fallback = {});

    NodeStore& store() { return mStore; }
    Node& node() { return mNode; }

    std::vector<pugi::xml_node> children(std::string_view tag) const;
    pugi::xml_node child(std::string_view tag) const;
    bool has(std::string_view tag) const { return !child(tag).empty(); }
    /// Where the element stands in the description; for an entry of a StructReg, where that stands.
    std::ptrdiff_t position() const;

    /// Texts for users are never taken from the fallback.
    std::optional<std::string> text(std::string_view tag) const;
    std::optional<std::int64_t> integer(std::string_view tag);
    std::optional<double> real(std::string_view tag);

    /// A word of a list; another word is as good as none.
    template <typename T>
    std::optional<T> choice(std::string_view tag,
                            std::span<const std::pair<std::string_view, T>> words) const
    {
        const std::string_view word = textOf(child(tag));
        for (const auto& [candidate, meaning] : words) {
            if (word == candidate) {
                return meaning;
            }
        }
        return std::nullopt;
    }

    /// A word of a list, or the default when there is no such element; another word is a defect.
    template <typename T>
    T required(std::string_view tag, std::span<const std::pair<std::string_view, T>> words,
               T otherwise)
    {
        const std::optional<T> meaning = choice(tag, words);
        if (!meaning && has(tag)) {
            fail(Status::BadNode);
        }
        return meaning.value_or(otherwise);
    }

    /// The node that the text names, as part of this node's value or limits. Null and a defect when
    /// there is none.
    Node* reference(std::string_view name);
    /// The node named by a child element, as above; null without a defect if the element is absent.
    Node* referenceIn(std::string_view tag);
    std::vector<Node*> referencesIn(std::string_view tag);
    /// As referenceIn, for a condition of the access.
    Node* conditionIn(std::string_view tag);
    /// Nodes that exist, of those named; they are no part of this node's value.
    std::vector<Node*> linksIn(std::string_view tag) const;

    /// `X` as a constant or `pX` as a reference. @param tag such as "Min"
    std::optional<Operand> operand(std::string_view tag, bool isInteger);

    /// The first failure is kept as the node's defect.
    void fail(Status status);

  private:
    Node* named(std::string_view name);

    NodeStore& mStore;
    Node& mNode;
    pugi::xml_node mElement;
    pugi::xml_node mFallback;
};

} // namespace gige::genapi

#endif

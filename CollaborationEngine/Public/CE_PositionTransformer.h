#pragma once

#include "CE_NodePositionTransformer.h"

#include <boost/container/flat_map.hpp>

#include <memory>

namespace Zem::CollaborationEngine
{

/// Moves positions across operations of any kind, by what is registered for the node types. Operations on nodes that
/// don't contain the position, empty and shadowed ones leave it as it is.
///
/// Including an operation and excluding it again gives the position back; excluding an insertion in which it lies and
/// including it again, in whatever form, does too.
class ZEM_EXPORT PositionTransformer
{
public:
    PositionTransformer() = default;
    PositionTransformer(const PositionTransformer&) = delete;
    PositionTransformer& operator=(const PositionTransformer&) = delete;
    ~PositionTransformer();

    /// Fails: "isNew" when the node type has one already; "plainPtr" for null.
    void registerNodePositionTransformer(unsigned long nodeType, std::shared_ptr<NodePositionTransformer> transformer);

    /// What is registered for a node type; null if nothing is.
    const NodePositionTransformer* findNodePositionTransformer(unsigned long nodeType) const;

    /// Both fail with "transformerIt != _nodePositionTransformers.end()" where the operation's node contains the
    /// position and its type isn't registered, and with `std::bad_cast` for an atomic operation that isn't
    /// hierarchical.
    void include(const Operation& operation, NodeAddressWithTransformationData& position) const;
    void exclude(const Operation& operation, NodeAddressWithTransformationData& position) const;

private:
    const NodePositionTransformer* findFor(const HierarchicalOperation& operation,
                                           const NodeAddressWithTransformationData& position) const;

    boost::container::flat_map<unsigned long, std::shared_ptr<NodePositionTransformer>> _nodePositionTransformers;
};

} // namespace Zem::CollaborationEngine

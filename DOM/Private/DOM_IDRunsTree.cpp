#include "DOM_IDRunsTree.h"

#include "Util_SecretHash.h"

#include <algorithm>

namespace Zem::DOM::IDRunsDetails
{

std::optional<NodeNumber> IDRunsTree::findID(unsigned long id) const
{
    const auto behind = _nodesByID.upper_bound(id);
    if (behind == _nodesByID.begin())
    {
        return std::nullopt;
    }
    const NodeNumber node = std::prev(behind)->second;
    return id <= getRun(node).getLastID() ? std::optional(node) : std::nullopt;
}

std::optional<unsigned long> IDRunsTree::findHighestID(unsigned long limit) const
{
    const auto behind = _nodesByID.upper_bound(limit);
    if (behind == _nodesByID.begin())
    {
        return std::nullopt;
    }
    return std::min(limit, getRun(std::prev(behind)->second).getLastID());
}

bool IDRunsTree::isAnyIDHeld(const Run& run) const
{
    const std::optional<unsigned long> highest = findHighestID(run.getLastID());
    return highest && *highest >= run._firstID;
}

Counts IDRunsTree::countBefore(NodeNumber node) const
{
    Counts before = getSum(_nodes[node]._left);
    for (NodeNumber parent = _nodes[node]._parent; parent != noNode; parent = _nodes[node]._parent)
    {
        if (_nodes[parent]._right == node)
        {
            const Run& run = getRun(parent);
            before += getSum(_nodes[parent]._left) + Counts{run._count, run.getLiveCount()};
        }
        node = parent;
    }
    return before;
}

/// The last node of the subtree of `node` in the direction of `Child`; `noNode` for an empty one.
template<NodeNumber IDRunsTree::Node::*Child>
NodeNumber IDRunsTree::getOutermost(NodeNumber node) const
{
    while (node != noNode && _nodes[node].*Child != noNode)
    {
        node = _nodes[node].*Child;
    }
    return node;
}

/// The neighbour of `node` in the direction of `Child`, which is away from `OtherChild`.
template<NodeNumber IDRunsTree::Node::*Child, NodeNumber IDRunsTree::Node::*OtherChild>
NodeNumber IDRunsTree::getNeighbour(NodeNumber node) const
{
    if (_nodes[node].*Child != noNode)
    {
        return getOutermost<OtherChild>(_nodes[node].*Child);
    }
    NodeNumber parent = _nodes[node]._parent;
    while (parent != noNode && _nodes[parent].*Child == node)
    {
        node = parent;
        parent = _nodes[node]._parent;
    }
    return parent;
}

NodeNumber IDRunsTree::getFirst() const
{
    return getOutermost<&Node::_left>(_root);
}

NodeNumber IDRunsTree::getLast() const
{
    return getOutermost<&Node::_right>(_root);
}

NodeNumber IDRunsTree::getNext(NodeNumber node) const
{
    return getNeighbour<&Node::_right, &Node::_left>(node);
}

NodeNumber IDRunsTree::getPrevious(NodeNumber node) const
{
    return getNeighbour<&Node::_left, &Node::_right>(node);
}

NodeNumber IDRunsTree::insertAfter(NodeNumber previous, const Run& run)
{
    const NodeNumber node = allocate(run);
    NodeNumber parent = previous == noNode ? _root : _nodes[previous]._right;
    if (parent == noNode)
    {
        parent = previous;
        (parent == noNode ? _root : _nodes[parent]._right) = node;
    }
    else
    {
        while (_nodes[parent]._left != noNode)
        {
            parent = _nodes[parent]._left;
        }
        _nodes[parent]._left = node;
    }
    _nodes[node]._parent = parent;
    mendSumsUpwards(node);
    while (_nodes[node]._parent != noNode && getPriority(_nodes[node]._parent) < getPriority(node))
    {
        rotateUp(node);
    }
    return node;
}

void IDRunsTree::erase(NodeNumber node)
{
    const NodeNumber parent = _nodes[node]._parent;
    const NodeNumber heir = mergeChildren(_nodes[node]._left, _nodes[node]._right);
    getLinkTo(node) = heir;
    if (heir != noNode)
    {
        _nodes[heir]._parent = parent;
    }
    if (parent != noNode)
    {
        mendSumsUpwards(parent);
    }
    _nodesByID.erase(getRun(node)._firstID);
    _freeNodes.push_back(node);
}

void IDRunsTree::replace(NodeNumber node, const Run& run)
{
    if (getRun(node)._firstID != run._firstID)
    {
        _nodesByID.erase(getRun(node)._firstID);
        _nodesByID.emplace(run._firstID, node);
    }
    _nodes[node]._run = run;
    mendSumsUpwards(node);
}

template<unsigned long Counts::*counted>
IDRunsTree::Position IDRunsTree::find(unsigned long target) const
{
    Position position;
    NodeNumber node = _root;
    while (node != noNode)
    {
        const Node& current = _nodes[node];
        const Counts withLeft = position._before + getSum(current._left);
        if (target < withLeft.*counted)
        {
            node = current._left;
            continue;
        }
        position._before = withLeft;
        const Counts withRun = withLeft + Counts{current._run._count, current._run.getLiveCount()};
        if (target < withRun.*counted)
        {
            position._node = node;
            return position;
        }
        position._before = withRun;
        node = current._right;
    }
    return position;
}

template IDRunsTree::Position IDRunsTree::find<&Counts::_all>(unsigned long target) const;
template IDRunsTree::Position IDRunsTree::find<&Counts::_live>(unsigned long target) const;

/// As good as random, and known to nobody: whoever could tell priorities in advance could choose the places of new
/// lines so that the tree becomes a list.
std::uint64_t IDRunsTree::getPriority(NodeNumber node)
{
    return secretHash(node);
}

NodeNumber IDRunsTree::allocate(const Run& run)
{
    NodeNumber node = static_cast<NodeNumber>(_nodes.size());
    if (_freeNodes.empty())
    {
        _nodes.emplace_back();
    }
    else
    {
        node = _freeNodes.back();
        _freeNodes.pop_back();
        _nodes[node] = Node();
    }
    _nodes[node]._run = run;
    _nodesByID.emplace(run._firstID, node);
    return node;
}

void IDRunsTree::mendSum(NodeNumber node)
{
    Node& current = _nodes[node];
    current._sum =
        getSum(current._left) + Counts{current._run._count, current._run.getLiveCount()} + getSum(current._right);
}

void IDRunsTree::mendSumsUpwards(NodeNumber node)
{
    for (; node != noNode; node = _nodes[node]._parent)
    {
        mendSum(node);
    }
}

/// What names the node: the root, or a link of its parent.
NodeNumber& IDRunsTree::getLinkTo(NodeNumber node)
{
    const NodeNumber parent = _nodes[node]._parent;
    if (parent == noNode)
    {
        return _root;
    }
    return _nodes[parent]._left == node ? _nodes[parent]._left : _nodes[parent]._right;
}

/// Exchanges a node and its parent; the order of the runs stays.
void IDRunsTree::rotateUp(NodeNumber node)
{
    const NodeNumber parent = _nodes[node]._parent;
    getLinkTo(parent) = node;
    _nodes[node]._parent = _nodes[parent]._parent;
    const bool isLeft = _nodes[parent]._left == node;
    NodeNumber& outer = isLeft ? _nodes[parent]._left : _nodes[parent]._right;
    NodeNumber& inner = isLeft ? _nodes[node]._right : _nodes[node]._left;
    outer = inner;
    if (inner != noNode)
    {
        _nodes[inner]._parent = parent;
    }
    inner = parent;
    _nodes[parent]._parent = node;
    mendSum(parent);
    mendSum(node);
}

/// Makes one tree of two, all of `left` before all of `right`, and returns its root.
NodeNumber IDRunsTree::mergeChildren(NodeNumber left, NodeNumber right)
{
    if (left == noNode || right == noNode)
    {
        return left == noNode ? right : left;
    }
    if (getPriority(left) > getPriority(right))
    {
        const NodeNumber merged = mergeChildren(_nodes[left]._right, right);
        _nodes[left]._right = merged;
        _nodes[merged]._parent = left;
        mendSum(left);
        return left;
    }
    const NodeNumber merged = mergeChildren(left, _nodes[right]._left);
    _nodes[right]._left = merged;
    _nodes[merged]._parent = right;
    mendSum(right);
    return right;
}

void IDRunsTree::checkInvariants(std::vector<std::string>& broken) const
{
    std::size_t nodesCount = 0;
    for (NodeNumber node = getFirst(); node != noNode; node = getNext(node))
    {
        ++nodesCount;
        const Node& current = _nodes[node];
        const std::string name = "Run " + std::to_string(current._run._firstID);
        const Counts own{current._run._count, current._run.getLiveCount()};
        if (current._sum != getSum(current._left) + own + getSum(current._right))
        {
            broken.push_back(name + " has wrong sums.");
        }
        for (const NodeNumber child : {current._left, current._right})
        {
            if (child != noNode && (_nodes[child]._parent != node || getPriority(node) < getPriority(child)))
            {
                broken.push_back(name + " and its child don't fit.");
            }
        }
        const auto entry = _nodesByID.find(current._run._firstID);
        if (entry == _nodesByID.end() || entry->second != node)
        {
            broken.push_back(name + " isn't found by its first id.");
        }
    }
    if (nodesCount != _nodesByID.size() || nodesCount + _freeNodes.size() != _nodes.size())
    {
        broken.push_back("The nodes of the runs don't add up.");
    }
}

std::size_t IDRunsTree::getMemoryUsage() const
{
    /// What a node of the standard library's balanced tree has beside its value.
    constexpr std::size_t mapNodeOverhead = 4 * sizeof(void*);
    return _nodes.capacity() * sizeof(Node) + _freeNodes.capacity() * sizeof(NodeNumber) +
           _nodesByID.size() * (sizeof(decltype(_nodesByID)::value_type) + mapNodeOverhead);
}

} // namespace Zem::DOM::IDRunsDetails

#pragma once

/// The runs of `TombstonesWithIDsStorage`, in order, each found by place, by live index, or by one of its ids.
///
/// The runs are the nodes of a binary tree, which is kept balanced by a heap order of priorities that are as good as
/// random and differ from process to process. A node knows the sums of the runs below it, so that one finds a place by
/// walking down. It also knows its parent, so that one finds the place of a run by walking up; a map from first ids to
/// nodes tells with which run of all to begin:
///
///     runs        {7: 3 live} {20: 2 dead} {10: 5 live}          {first id: count}
///     places      0 1 2       3 4          5 6 7 8 9
///     ids         7 8 9       20 21        10 11 12 13 14
///
///     where is 12?   the map says: in the run of 10, third place; before that run lie 5 places, 3 of them live
///
/// Nodes lie in one array and name each other by number, so that a copy of the tree is a copy of two containers.

#include "Util_Export.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace Zem::DOM::IDRunsDetails
{

/// Neighbouring places that are alike, and whose ids ascend by one.
struct Run
{
    unsigned long getLastID() const
    {
        return _firstID + (_count - 1);
    }

    unsigned long getLiveCount() const
    {
        return _isLive ? _count : 0;
    }

    friend bool operator==(const Run&, const Run&) = default;

    unsigned long _firstID = 0;
    unsigned long _count = 0;
    bool _isLive = true;
};

/// A number of places, and of the live ones among them.
struct Counts
{
    Counts& operator+=(const Counts& other)
    {
        _all += other._all;
        _live += other._live;
        return *this;
    }

    friend Counts operator+(Counts left, const Counts& right)
    {
        return left += right;
    }

    friend bool operator==(const Counts&, const Counts&) = default;

    unsigned long _all = 0;
    unsigned long _live = 0;
};

using NodeNumber = std::uint32_t;
constexpr NodeNumber noNode = 0xFFFFFFFF;

class ZEM_EXPORT IDRunsTree
{
public:
    /// A run, and what lies before it; behind the last run, `_node` is `noNode`.
    struct Position
    {
        NodeNumber _node = noNode;
        Counts _before;
    };

    const Run& getRun(NodeNumber node) const
    {
        return _nodes[node]._run;
    }

    /// Of all runs. Constant time.
    Counts getTotal() const
    {
        return getSum(_root);
    }

    /// Constant time.
    std::size_t getRunsCount() const
    {
        return _nodesByID.size();
    }

    /// The run that holds a place. Logarithmic.
    Position findPlace(unsigned long place) const
    {
        return find<&Counts::_all>(place);
    }

    /// The run that holds a live index. Logarithmic.
    Position findLive(unsigned long live) const
    {
        return find<&Counts::_live>(live);
    }

    /// The run that holds an id; empty if none does. Logarithmic.
    std::optional<NodeNumber> findID(unsigned long id) const;

    /// What lies before a run. Logarithmic.
    Counts countBefore(NodeNumber node) const;

    /// The highest id of at most `limit`; empty if there is none. Logarithmic.
    std::optional<unsigned long> findHighestID(unsigned long limit) const;

    /// Whether one of the ids of `run` is held. Logarithmic.
    bool isAnyIDHeld(const Run& run) const;

    /// The neighbours of a run, `noNode` where there is none. Logarithmic.
    NodeNumber getPrevious(NodeNumber node) const;
    NodeNumber getNext(NodeNumber node) const;

    NodeNumber getFirst() const;
    NodeNumber getLast() const;

    /// Puts a run behind `previous`, or in front of all for `noNode`. Logarithmic.
    /// Requires: the run isn't empty, and none of its ids is held.
    NodeNumber insertAfter(NodeNumber previous, const Run& run);

    /// Logarithmic.
    void erase(NodeNumber node);

    /// Replaces a run by one whose ids are its own, or free. Logarithmic.
    void replace(NodeNumber node, const Run& run);

    /// Appends a line for each of these rules of the tree that is broken:
    ///     1. The sums of a node are those of its run and of its children.
    ///     2. A child names its parent, and has no higher priority.
    ///     3. The map names each node by its first id, and nothing else.
    void checkInvariants(std::vector<std::string>& broken) const;

    /// Bytes on the heap, as far as they are known.
    std::size_t getMemoryUsage() const;

private:
    struct Node
    {
        Run _run;
        Counts _sum;
        NodeNumber _parent = noNode;
        NodeNumber _left = noNode;
        NodeNumber _right = noNode;
    };

    Counts getSum(NodeNumber node) const
    {
        return node == noNode ? Counts{} : _nodes[node]._sum;
    }

    template<unsigned long Counts::*counted>
    Position find(unsigned long target) const;

    template<NodeNumber Node::*Child>
    NodeNumber getOutermost(NodeNumber node) const;
    template<NodeNumber Node::*Child, NodeNumber Node::*OtherChild>
    NodeNumber getNeighbour(NodeNumber node) const;

    static std::uint64_t getPriority(NodeNumber node);

    NodeNumber allocate(const Run& run);
    void mendSum(NodeNumber node);
    void mendSumsUpwards(NodeNumber node);
    NodeNumber& getLinkTo(NodeNumber node);
    void rotateUp(NodeNumber node);
    NodeNumber mergeChildren(NodeNumber left, NodeNumber right);

    std::vector<Node> _nodes;
    std::vector<NodeNumber> _freeNodes;
    std::map<unsigned long, NodeNumber> _nodesByID;
    NodeNumber _root = noNode;
};

} // namespace Zem::DOM::IDRunsDetails

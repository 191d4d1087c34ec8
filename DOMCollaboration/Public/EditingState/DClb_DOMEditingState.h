#pragma once

/// What a client gives the engine of its selection: two positions and how they are read. The engine keeps it, and
/// `DOMEditingStateTransformer` moves it across the operations of others.

#include "CE_ClientEditingState.h"
#include "CE_NodeAddressWithTransformationData.h"

#include "Util_Export.h"

#include <memory>

namespace Zem::DOMCollaboration
{

/// How the two ends of a selection are read. It is stored and handed on; nothing here depends on it.
enum class SelectionMode : unsigned char
{
    /// What lies between the two positions, in the order of the text.
    Text,
    /// The rectangle of cells whose opposite corners the positions name.
    Cells,
    /// The objects from the first position to the second.
    Objects
};

/// The addresses count tombstones: they are in the coordinates of operations. Only such a state is transformed.
struct DOMEditingStateWithTSTag
{
};

/// The addresses don't count tombstones. A client makes such a state for itself, and converts it itself.
struct DOMEditingStateWithoutTSTag
{
};

/// A selection; a plain cursor is one whose ends are equal. Nothing keeps the ends in an order.
template<class Tag>
class DOMEditingState final : public CollaborationEngine::ClientEditingState
{
public:
    /// One end of a selection.
    class SelectionPosition : public CollaborationEngine::NodeAddressWithTransformationData
    {
    public:
        SelectionPosition() = default;
        explicit SelectionPosition(const CollaborationEngine::OperationNodeAddress& address);

        bool sticksToPrevious() const override
        {
            return _stickToPrevious;
        }

        /// Whether the position sticks to the element in front of it when something is inserted exactly there.
        void setStickToPrevious(bool stickToPrevious)
        {
            _stickToPrevious = stickToPrevious;
        }

        /// The addresses and the sticking; what is kept only for the sake of transformation doesn't count.
        friend bool operator==(const SelectionPosition& left, const SelectionPosition& right)
        {
            return left.getAddress() == right.getAddress() && left._stickToPrevious == right._stickToPrevious;
        }

    private:
        bool _stickToPrevious = false;
    };

    DOMEditingState(SelectionMode selectionMode, SelectionPosition selectionBegin, SelectionPosition selectionEnd);
    DOMEditingState(const DOMEditingState&) = default;
    DOMEditingState(DOMEditingState&&) = default;
    DOMEditingState& operator=(const DOMEditingState&) = default;
    DOMEditingState& operator=(DOMEditingState&&) = default;

    const SelectionPosition& getSelectionBegin() const
    {
        return _selectionBegin;
    }

    SelectionPosition& getSelectionBegin()
    {
        return _selectionBegin;
    }

    const SelectionPosition& getSelectionEnd() const
    {
        return _selectionEnd;
    }

    SelectionPosition& getSelectionEnd()
    {
        return _selectionEnd;
    }

    SelectionMode getSelectionMode() const
    {
        return _selectionMode;
    }

    void setSelectionMode(SelectionMode selectionMode)
    {
        _selectionMode = selectionMode;
    }

    void cloneTo(std::shared_ptr<CollaborationEngine::ClientEditingState>& target) const override;
    void cloneTo(std::unique_ptr<CollaborationEngine::ClientEditingState>& target) const override;

    /// False for a state of another class.
    bool operator==(const CollaborationEngine::ClientEditingState& other) const override;
    bool operator==(const DOMEditingState& other) const;

    /// Forgets the reverted insertions of both ends; the addresses stay.
    void clearCache() override;

private:
    SelectionPosition _selectionBegin;
    SelectionPosition _selectionEnd;
    SelectionMode _selectionMode;
};

extern template class ZEM_EXPORT DOMEditingState<DOMEditingStateWithTSTag>;
extern template class ZEM_EXPORT DOMEditingState<DOMEditingStateWithoutTSTag>;

using DOMEditingStateWithTS = DOMEditingState<DOMEditingStateWithTSTag>;
using DOMEditingStateWithoutTS = DOMEditingState<DOMEditingStateWithoutTSTag>;

} // namespace Zem::DOMCollaboration

#pragma once

#include "DOMNodeAdapters/DClb_NodeAdapterImpl.h"
#include "DOMNodeAdapters/Shared/DClb_PlaceNodeAdapters.h"

namespace Zem::DOMCollaboration
{

/// A collection of the text tree. Tombstones don't exist there, and asking for them is a mistake.
/// `Derived` has `getSize() const`, and `createItemAdapter(unsigned long index) const` for an index below it.
template<class Derived, NativeDOMNodeType nodeType, class Subject>
class NativeListNodeAdapter : public TypedNodeAdapter<Derived, nodeType, ListNodeAdapterBase<Derived>, Subject>
{
public:
    using TypedNodeAdapter<Derived, nodeType, ListNodeAdapterBase<Derived>, Subject>::TypedNodeAdapter;
    using ChildUPtr = typename NodeAdapterRoot<Derived>::ChildUPtr;

    IndexExcludingTombstones getChildrenCountExcludingTombstones() const final
    {
        return IndexExcludingTombstones(getDerived().getSize());
    }

    IndexIncludingTombstones getChildrenCountIncludingTombstones() const final
    {
        ZEM_FAIL(tombstonesMessage);
    }

    ChildUPtr createChildAdapterByIndexIfPossible(IndexIncludingTombstones) final
    {
        ZEM_FAIL(tombstonesMessage);
    }

    ChildUPtr createChildAdapterByIndexIfPossible(IndexExcludingTombstones index) final
    {
        const unsigned long size = getDerived().getSize();
        if (index.get() > size)
        {
            return nullptr;
        }
        if (index.get() == size)
        {
            using EndMark =
                InNativeWorld<GenericCollectionEndMarkNodeAdapter, NodeAdapterDetails::Traits<Derived>::isConst>;
            return std::make_unique<EndMark>(nodeType);
        }
        return getDerived().createItemAdapter(index.get());
    }

private:
    static constexpr const char* tombstonesMessage = "Tombstones aren't supported in native model";

    const Derived& getDerived() const
    {
        return static_cast<const Derived&>(*this);
    }
};

} // namespace Zem::DOMCollaboration

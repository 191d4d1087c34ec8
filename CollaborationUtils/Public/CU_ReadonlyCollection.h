#pragma once

#include "CU_CollectionWithTombstones.h"

#include "Util_ReadonlyVector.h"

namespace Zem::CollaborationUtils
{

/// A read-only view of a collection of owning pointers, in which what the pointers own can't be changed either. It
/// refers to the collection and copies nothing.
template<class V>
class ReadonlyCollectionWithTombstones
{
public:
    explicit ReadonlyCollectionWithTombstones(const CollectionWithTombstones<V>& collection)
        : _collection(&collection)
    {
    }

    /// The live elements, in order.
    ReadonlyVector<V> getElements() const
    {
        return ReadonlyVector<V>(_collection->getElements());
    }

    const TombstonesStorage& getTombstones() const
    {
        return _collection->getTombstones();
    }

    IndexExcludingTombstones getLiveElementsCount() const
    {
        return _collection->getLiveElementsCount();
    }

    IndexIncludingTombstones getAllElementsCount() const
    {
        return _collection->getAllElementsCount();
    }

private:
    const CollectionWithTombstones<V>* _collection;
};

} // namespace Zem::CollaborationUtils

#pragma once

/// The items that list operations carry.

#include "CE_DataValue.h"

#include "CU_IndexRange.h"
#include "Util_SharedConstPtr.h"

#include <memory>
#include <utility>

namespace Zem::CollaborationEngine
{

using CollaborationUtils::IndexRange;

/// An abstract sequence of items. Two collections are equal when their dynamic types and, deeply, their items are.
class ZEM_EXPORT ItemsCollection : public Clonable<ItemsCollection>
{
public:
    ~ItemsCollection() override;

    virtual bool isDeeplyEqual(const ItemsCollection& other) const = 0;

    /// A deep copy of the items of `range`.
    virtual std::unique_ptr<ItemsCollection> copySubrange(const IndexRange<unsigned long>& range) const = 0;

    /// A deep copy of one item, which stays valid when the collection is gone.
    virtual SharedConstPtr<DataValue> getItem(unsigned long index) const = 0;

    virtual unsigned long getSize() const = 0;

    /// Appends deep copies of the items of `other`, which may be this collection itself. Fails: `std::bad_cast` when it
    /// is of another dynamic type.
    virtual void append(const ItemsCollection& other) = 0;

    friend bool operator==(const ItemsCollection& left, const ItemsCollection& right)
    {
        return left.isDeeplyEqual(right);
    }
};

/// Items in a vector `C`, of values or of unique pointers.
template<class C>
class SimpleItemsCollection final : public ItemsCollection
{
public:
    SimpleItemsCollection() = default;

    explicit SimpleItemsCollection(C collection)
        : _collection(std::move(collection))
    {
    }

    SimpleItemsCollection(const SimpleItemsCollection& other)
        : ItemsCollection(other)
        , _collection(deepCopy(other._collection))
    {
    }

    SimpleItemsCollection& operator=(const SimpleItemsCollection&) = delete;

    const C& getCollection() const
    {
        return _collection;
    }

    C& getCollection()
    {
        return _collection;
    }

    void cloneTo(std::shared_ptr<ItemsCollection>& target) const override
    {
        target = std::make_shared<SimpleItemsCollection>(*this);
    }

    void cloneTo(std::unique_ptr<ItemsCollection>& target) const override
    {
        target = std::make_unique<SimpleItemsCollection>(*this);
    }

    bool isDeeplyEqual(const ItemsCollection& other) const override
    {
        const auto* sameKind = cast<SimpleItemsCollection>(&other);
        return sameKind && areDeeplyEqual(_collection, sameKind->_collection);
    }

    /// Fails: "range.getEnd() <= _collection.size()".
    std::unique_ptr<ItemsCollection> copySubrange(const IndexRange<unsigned long>& range) const override
    {
        ZEM_ASSERT(range.getEnd() <= _collection.size());
        auto copy = std::make_unique<SimpleItemsCollection>();
        copy->_collection.reserve(range.getCount());
        for (unsigned long index = range.getBegin(); index < range.getEnd(); ++index)
        {
            copy->_collection.push_back(deepCopy(_collection[index]));
        }
        return copy;
    }

    /// Fails: "index < _collection.size()".
    SharedConstPtr<DataValue> getItem(unsigned long index) const override
    {
        ZEM_ASSERT(index < _collection.size());
        return makeSharedConst<SimpleDataValue<typename C::value_type>>(deepCopy(_collection[index]));
    }

    unsigned long getSize() const override
    {
        return _collection.size();
    }

    void append(const ItemsCollection& other) override
    {
        // Nothing is reserved: a vector that grows to the very size needed each time is copied for each piece.
        const C& items = cast<SimpleItemsCollection>(other)._collection;
        // `other` may be this very collection, which grows.
        const unsigned long count = items.size();
        for (unsigned long index = 0; index < count; ++index)
        {
            _collection.push_back(deepCopy(items[index]));
        }
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    C _collection;
};

} // namespace Zem::CollaborationEngine

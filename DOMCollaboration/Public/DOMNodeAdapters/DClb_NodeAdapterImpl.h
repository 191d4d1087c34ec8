#pragma once

/// What concrete adapters do alike: accepting visitors, telling their type, making the read-only twin.

#include "DOMNodeAdapters/DClb_DOMNodeAdapter.h"

#include "CU_ReadonlyCollection.h"
#include "Util_ReadonlyVector.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

/// Declares, in a header, that the four forms of an adapter of both worlds are instantiated in a source.
#define ZEM_DECLARE_SHARED_NODE_ADAPTER(Adapter) ZEM_FOR_SHARED_NODE_ADAPTER(extern, ZEM_EXPORT, Adapter)
/// Instantiates them.
#define ZEM_INSTANTIATE_SHARED_NODE_ADAPTER(Adapter) ZEM_FOR_SHARED_NODE_ADAPTER(, , Adapter)

#define ZEM_FOR_SHARED_NODE_ADAPTER(storage, exported, Adapter)                                                        \
    storage template class exported Adapter<OperationNodeAddressTag, unsigned long, true>;                             \
    storage template class exported Adapter<OperationNodeAddressTag, unsigned long, false>;                            \
    storage template class exported Adapter<NativeNodeAddressTag, NativeDOMNodeType, true>;                            \
    storage template class exported Adapter<NativeNodeAddressTag, NativeDOMNodeType, false>;

/// As above, for the two forms of an adapter of one world.
#define ZEM_DECLARE_NODE_ADAPTER(Adapter)                                                                              \
    extern template class ZEM_EXPORT Adapter<true>;                                                                    \
    extern template class ZEM_EXPORT Adapter<false>;
#define ZEM_INSTANTIATE_NODE_ADAPTER(Adapter)                                                                          \
    template class Adapter<true>;                                                                                      \
    template class Adapter<false>;

namespace Zem::DOMCollaboration
{

namespace NodeAdapterDetails
{

/// What an adapter class says of itself by its template arguments.
template<class Adapter>
struct Traits;

template<class Tag_, class NodeType_, bool isConst_, class ConstTwin_>
struct TraitsOf
{
    using Tag = Tag_;
    using NodeType = NodeType_;
    using ConstTwin = ConstTwin_;
    using Root = DOMNodeAdapter<Tag, NodeType, isConst_>;
    static constexpr bool isConst = isConst_;
};

template<template<class, class, bool> class Adapter, class Tag, class NodeType, bool isConst>
struct Traits<Adapter<Tag, NodeType, isConst>> : TraitsOf<Tag, NodeType, isConst, Adapter<Tag, NodeType, true>>
{
};

template<template<class, class, class, bool> class Adapter, class Tag, class NodeType, class Subject, bool isConst>
struct Traits<Adapter<Tag, NodeType, Subject, isConst>>
    : TraitsOf<Tag, NodeType, isConst, Adapter<Tag, NodeType, Subject, true>>
{
};

template<template<bool> class Adapter, bool isConst>
struct Traits<Adapter<isConst>>
    : std::conditional_t<isOneOf<Adapter<isConst>, OperationTextNodeAdapters<isConst>>,
                         TraitsOf<OperationNodeAddressTag, unsigned long, isConst, Adapter<true>>,
                         TraitsOf<NativeNodeAddressTag, NativeDOMNodeType, isConst, Adapter<true>>>
{
};

/// The subject of an adapter that shows a place without data.
struct NoSubject
{
};

} // namespace NodeAdapterDetails

/// The root of the adapters that `Adapter` belongs to.
template<class Adapter>
using NodeAdapterRoot = typename NodeAdapterDetails::Traits<Adapter>::Root;

/// `BaseDOMNodeAdapter`, `GenericListNodeAdapter` and `GenericMapNodeAdapter` of the world of `Adapter`.
template<class Adapter, class ChildAddress>
using NodeAdapterBase = BaseDOMNodeAdapter<typename NodeAdapterDetails::Traits<Adapter>::Tag,
                                           typename NodeAdapterDetails::Traits<Adapter>::NodeType,
                                           NodeAdapterDetails::Traits<Adapter>::isConst, ChildAddress>;
template<class Adapter>
using FixedNodeAdapterBase = NodeAdapterBase<Adapter, typename NodeAdapterRoot<Adapter>::FixedChunk>;
template<class Adapter>
using ListNodeAdapterBase = GenericListNodeAdapter<typename NodeAdapterDetails::Traits<Adapter>::Tag,
                                                   typename NodeAdapterDetails::Traits<Adapter>::NodeType,
                                                   NodeAdapterDetails::Traits<Adapter>::isConst>;
template<class Adapter>
using MapNodeAdapterBase = GenericMapNodeAdapter<typename NodeAdapterDetails::Traits<Adapter>::Tag,
                                                 typename NodeAdapterDetails::Traits<Adapter>::NodeType,
                                                 NodeAdapterDetails::Traits<Adapter>::isConst>;

/// `T` as an adapter may touch it: const if the adapter is read-only.
template<class Adapter, class T>
using NodeOf = ConstIf<NodeAdapterDetails::Traits<Adapter>::isConst, T>;

/// How an adapter refers to an object of the document.
template<class Adapter, class T>
using NodeReference = std::reference_wrapper<NodeOf<Adapter, T>>;

/// A list of owning pointers as an adapter hands it out: the read-only form shows const elements alone, since a const
/// vector of pointers would leave what they own open.
template<bool isConst, class V>
using ListOf = std::conditional_t<isConst, ReadonlyVector<V>, V&>;
template<bool isConst, class V>
using CollectionOf = std::conditional_t<isConst, CollaborationUtils::ReadonlyCollectionWithTombstones<V>,
                                        CollaborationUtils::CollectionWithTombstones<V>&>;

/// An element of such a list. Fails: "plainPtr" on a null entry. Requires: `index` is below the size.
template<class V>
const auto& getListElement(const ReadonlyVector<V>& list, std::size_t index)
{
    return list[index];
}

template<class T>
T& getListElement(std::vector<std::unique_ptr<T>>& list, std::size_t index)
{
    return derefPtr(list[index]);
}

/// The double dispatch, the reference to what is shown, and the read-only twin of the adapter class `Derived`, which
/// stands below `Base`. `Subject` is a small copyable value that refers to the node; that of a writable adapter
/// converts to that of a read-only one.
template<class Derived, class Base, class Subject>
class NodeAdapterImpl : public Base
{
public:
    using typename Base::ConstVisitorType;
    using typename Base::VisitorType;

    explicit NodeAdapterImpl(Subject subject)
        : _subject(std::move(subject))
    {
    }

    void accept(VisitorType& visitor) final
    {
        visitor.visit(static_cast<Derived&>(*this));
    }

    void accept(ConstVisitorType& visitor) const final
    {
        visitor.visit(static_cast<const Derived&>(*this));
    }

    typename Base::ConstUPtr createConst() const final
    {
        return std::make_unique<typename NodeAdapterDetails::Traits<Derived>::ConstTwin>(_subject);
    }

protected:
    const Subject& getSubject() const
    {
        return _subject;
    }

private:
    [[no_unique_address]] Subject _subject;
};

/// Adds the node type. `nodeType` is that of the operation world if the adapter exists there, from which that of the
/// native world follows by the table of corresponding types.
template<class Derived, auto nodeType, class Base, class Subject>
class TypedNodeAdapter : public NodeAdapterImpl<Derived, Base, Subject>
{
public:
    using NodeAdapterImpl<Derived, Base, Subject>::NodeAdapterImpl;

    typename NodeAdapterDetails::Traits<Derived>::NodeType getNodeType() const final
    {
        return nodeTypeInWorld;
    }

    static constexpr auto nodeTypeInWorld =
        NodeAdapterDetails::World<typename NodeAdapterDetails::Traits<Derived>::Tag>::getNodeType(nodeType);
};

/// A leaf that shows an object of the class `T`, and whose children would be reached by fixed type if it had any.
template<class Derived, auto nodeType, class T>
class FixedLeafNodeAdapter
    : public TypedNodeAdapter<Derived, nodeType, FixedNodeAdapterBase<Derived>, NodeReference<Derived, T>>
{
public:
    using TypedNodeAdapter<Derived, nodeType, FixedNodeAdapterBase<Derived>,
                           NodeReference<Derived, T>>::TypedNodeAdapter;

    typename NodeAdapterRoot<Derived>::ChildUPtr
    createChildAdapterIfPossibleImpl(const typename NodeAdapterRoot<Derived>::FixedChunk&, bool) final
    {
        return nullptr;
    }
};

/// A leaf that has no way of reaching children at all.
template<class Derived, auto nodeType, class Subject>
class PlainLeafNodeAdapter : public TypedNodeAdapter<Derived, nodeType, NodeAdapterRoot<Derived>, Subject>
{
public:
    using TypedNodeAdapter<Derived, nodeType, NodeAdapterRoot<Derived>, Subject>::TypedNodeAdapter;

    typename NodeAdapterRoot<Derived>::ChildUPtr
    createChildAdapterIfPossible(const typename NodeAdapterRoot<Derived>::Chunk&, bool) final
    {
        return nullptr;
    }
};

} // namespace Zem::DOMCollaboration

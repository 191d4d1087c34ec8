#pragma once

/// The two address worlds, and the closed list of node adapters that each of them has.
///
///                    operations                               the document itself (native)
///     Tag            OperationNodeAddressTag                  NativeNodeAddressTag
///     NodeType       unsigned long (OperationDOMNodeType)     NativeDOMNodeType
///     text           one flat list of tags and bytes          blocks, runs, characters
///     list indices   include tombstones                       exclude tombstones
///
/// An adapter that is named with <Tag, NodeType, isConst> exists in both, one that is named with <isConst> in one.
/// An adapter is read-only when `isConst` is true.

#include "DClb_NodeTypes.h"

#include "CE_OperationNodeAddress.h"
#include "DOM_NativeNodeAddress.h"

#include "Util_ConstIf.h"
#include "Util_TypeList.h"
#include "Util_Visitor.h"

#include <type_traits>

namespace Zem::DOM
{

class FieldBlock;

} // namespace Zem::DOM

namespace Zem::DOMCollaboration
{

using CollaborationEngine::OperationNodeAddress;
using CollaborationEngine::OperationNodeAddressTag;
using DOM::NativeDOMNodeType;
using DOM::NativeNodeAddress;
using DOM::NativeNodeAddressTag;

template<class Tag, class NodeType, bool isConst>
class DOMNodeAdapter;

template<bool isConst>
using OperationNodeAdapter = DOMNodeAdapter<OperationNodeAddressTag, unsigned long, isConst>;
template<bool isConst>
using NativeNodeAdapter = DOMNodeAdapter<NativeNodeAddressTag, NativeDOMNodeType, isConst>;

/// An adapter of both worlds in one of them: `InOperationWorld<GenericTableNodeAdapter, false>`.
template<template<class, class, bool> class Adapter, bool isConst>
using InOperationWorld = Adapter<OperationNodeAddressTag, unsigned long, isConst>;
template<template<class, class, bool> class Adapter, bool isConst>
using InNativeWorld = Adapter<NativeNodeAddressTag, NativeDOMNodeType, isConst>;

template<class Tag, class NodeType, bool isConst>
class GenericTextDocumentNodeAdapter;
template<class Tag, class NodeType, bool isConst>
class GenericWorkbookDocumentNodeAdapter;
template<class Tag, class NodeType, bool isConst>
class GenericPresentationDocumentNodeAdapter;
template<class Tag, class NodeType, bool isConst>
class GenericTemporaryDOMNodeAdapter;
template<class Tag, class NodeType, bool isConst>
class GenericTableNodeAdapter;
template<class Tag, class NodeType, bool isConst>
class GenericCellCollectionNodeAdapter;
template<class Tag, class NodeType, bool isConst>
class GenericCellNodeAdapter;
template<class Tag, class NodeType, bool isConst>
class GenericShapeNodeAdapter;
template<class Tag, class NodeType, bool isConst>
class GenericHeaderFooterPairNodeAdapter;
template<class Tag, class NodeType, bool isConst>
class GenericHeaderOrFooterNodeAdapter;
template<class Tag, class NodeType, bool isConst>
class GenericSectionTagNodeAdapter;
template<class Tag, class NodeType, class BlockType, bool isConst>
class GenericAtomicBlockNodeAdapter;
template<class Tag, class NodeType, bool isConst>
class GenericCommentNodeAdapter;
template<class Tag, class NodeType, bool isConst>
class GenericNoteNodeAdapter;
template<class Tag, class NodeType, bool isConst>
class GenericTextStyleNodeAdapter;
template<class Tag, class NodeType, bool isConst>
class GenericTableStyleNodeAdapter;
template<class Tag, class NodeType, bool isConst>
class GenericFrameNodeAdapter;
template<class Tag, class NodeType, bool isConst>
class GenericConditionalFormatNodeAdapter;
template<class Tag, class NodeType, bool isConst>
class GenericDocumentPropsNodeAdapter;
template<class Tag, class NodeType, bool isConst>
class GenericCharNodeAdapter;
template<class Tag, class NodeType, bool isConst>
class GenericTombstoneNodeAdapter;
template<class Tag, class NodeType, bool isConst>
class GenericCollectionEndMarkNodeAdapter;
template<class Tag, class NodeType, bool isConst>
class GenericHeaderFooterPairCollectionNodeAdapter;
template<class Tag, class NodeType, bool isConst>
class GenericCommentCollectionNodeAdapter;
template<class Tag, class NodeType, bool isConst>
class GenericNoteCollectionNodeAdapter;
template<class Tag, class NodeType, bool isConst>
class GenericTextStyleCollectionNodeAdapter;
template<class Tag, class NodeType, bool isConst>
class GenericTableStyleCollectionNodeAdapter;
template<class Tag, class NodeType, bool isConst>
class GenericScriptCollectionNodeAdapter;
template<class Tag, class NodeType, bool isConst>
class GenericFrameCollectionNodeAdapter;
template<class Tag, class NodeType, bool isConst>
class GenericConditionalFormatCollectionNodeAdapter;

template<bool isConst>
class GenericTextWithTombstonesNodeAdapter;
template<bool isConst>
class GenericParagraphTagNodeAdapter;
template<bool isConst>
class GenericParagraphMarkNodeAdapter;
template<bool isConst>
class GenericRunTagNodeAdapter;

template<bool isConst>
class GenericBlockCollectionNodeAdapter;
template<bool isConst>
class GenericParagraphNodeAdapter;
template<bool isConst>
class GenericRunCollectionNodeAdapter;
template<bool isConst>
class GenericRunNodeAdapter;
template<bool isConst>
class GenericTextRunNodeAdapter;
template<bool isConst>
class GenericCharCollectionNodeAdapter;

/// The adapters that both worlds have.
template<class Tag, class NodeType, bool isConst>
using SharedNodeAdapters = TypeList<
    GenericTextDocumentNodeAdapter<Tag, NodeType, isConst>, GenericWorkbookDocumentNodeAdapter<Tag, NodeType, isConst>,
    GenericPresentationDocumentNodeAdapter<Tag, NodeType, isConst>,
    GenericTemporaryDOMNodeAdapter<Tag, NodeType, isConst>, GenericTableNodeAdapter<Tag, NodeType, isConst>,
    GenericCellCollectionNodeAdapter<Tag, NodeType, isConst>, GenericCellNodeAdapter<Tag, NodeType, isConst>,
    GenericShapeNodeAdapter<Tag, NodeType, isConst>, GenericHeaderFooterPairNodeAdapter<Tag, NodeType, isConst>,
    GenericHeaderOrFooterNodeAdapter<Tag, NodeType, isConst>, GenericSectionTagNodeAdapter<Tag, NodeType, isConst>,
    GenericAtomicBlockNodeAdapter<Tag, NodeType, DOM::FieldBlock, isConst>,
    GenericCommentNodeAdapter<Tag, NodeType, isConst>, GenericNoteNodeAdapter<Tag, NodeType, isConst>,
    GenericTextStyleNodeAdapter<Tag, NodeType, isConst>, GenericTableStyleNodeAdapter<Tag, NodeType, isConst>,
    GenericFrameNodeAdapter<Tag, NodeType, isConst>, GenericConditionalFormatNodeAdapter<Tag, NodeType, isConst>,
    GenericDocumentPropsNodeAdapter<Tag, NodeType, isConst>, GenericCharNodeAdapter<Tag, NodeType, isConst>,
    GenericTombstoneNodeAdapter<Tag, NodeType, isConst>, GenericCollectionEndMarkNodeAdapter<Tag, NodeType, isConst>,
    GenericHeaderFooterPairCollectionNodeAdapter<Tag, NodeType, isConst>,
    GenericCommentCollectionNodeAdapter<Tag, NodeType, isConst>,
    GenericNoteCollectionNodeAdapter<Tag, NodeType, isConst>,
    GenericTextStyleCollectionNodeAdapter<Tag, NodeType, isConst>,
    GenericTableStyleCollectionNodeAdapter<Tag, NodeType, isConst>,
    GenericScriptCollectionNodeAdapter<Tag, NodeType, isConst>,
    GenericFrameCollectionNodeAdapter<Tag, NodeType, isConst>,
    GenericConditionalFormatCollectionNodeAdapter<Tag, NodeType, isConst>>;

/// The adapters that show text as one flat list.
template<bool isConst>
using OperationTextNodeAdapters =
    TypeList<GenericTextWithTombstonesNodeAdapter<isConst>, GenericParagraphTagNodeAdapter<isConst>,
             GenericParagraphMarkNodeAdapter<isConst>, GenericRunTagNodeAdapter<isConst>>;

/// The adapters that show text as the tree that it is.
template<bool isConst>
using NativeTextNodeAdapters =
    TypeList<GenericBlockCollectionNodeAdapter<isConst>, GenericParagraphNodeAdapter<isConst>,
             GenericRunCollectionNodeAdapter<isConst>, GenericRunNodeAdapter<isConst>,
             GenericTextRunNodeAdapter<isConst>, GenericCharCollectionNodeAdapter<isConst>>;

namespace NodeAdapterDetails
{

template<class First, class Second>
struct Joined;

template<class... First, class... Second>
struct Joined<TypeList<First...>, TypeList<Second...>>
{
    using Type = TypeList<First..., Second...>;
};

template<class List>
struct WithConst;

template<class... Types>
struct WithConst<TypeList<Types...>>
{
    using Type = TypeList<const Types...>;
};

/// Whether `T` is one of a list's types.
template<class T, class List>
inline constexpr bool isOneOf = false;

template<class T, class... Types>
inline constexpr bool isOneOf<T, TypeList<Types...>> = (std::is_same_v<T, Types> || ...);

/// What a world tells apart by its tag.
template<class Tag>
struct World;

template<>
struct World<OperationNodeAddressTag>
{
    template<bool isConst>
    using TextNodeAdapters = OperationTextNodeAdapters<isConst>;

    static constexpr unsigned long getNodeType(OperationDOMNodeType nodeType)
    {
        return convertOperationNodeType(nodeType);
    }
};

template<>
struct World<NativeNodeAddressTag>
{
    template<bool isConst>
    using TextNodeAdapters = NativeTextNodeAdapters<isConst>;

    static constexpr NativeDOMNodeType getNodeType(OperationDOMNodeType nodeType)
    {
        return NodeTypesDetails::nativeByOperation.at(convertOperationNodeType(nodeType));
    }

    static constexpr NativeDOMNodeType getNodeType(NativeDOMNodeType nodeType)
    {
        return nodeType;
    }
};

} // namespace NodeAdapterDetails

/// All concrete adapters of a world.
template<class Tag, class NodeType, bool isConst>
using NodeAdaptersOf = typename NodeAdapterDetails::Joined<
    SharedNodeAdapters<Tag, NodeType, isConst>,
    typename NodeAdapterDetails::World<Tag>::template TextNodeAdapters<isConst>>::Type;

template<class Tag, class NodeType, bool isConst>
using NodeAdapterVisitor = Visitor<NodeAdaptersOf<Tag, NodeType, isConst>>;

template<class Tag, class NodeType, bool isConst>
using NodeAdapterConstVisitor =
    Visitor<typename NodeAdapterDetails::WithConst<NodeAdaptersOf<Tag, NodeType, isConst>>::Type>;

} // namespace Zem::DOMCollaboration

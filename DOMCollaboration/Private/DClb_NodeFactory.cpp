#include "DClb_NodeFactory.h"

#include "DClb_NodeOperationExecutor.h"
#include "DClb_NodeTypes.h"
#include "DClb_PropertyDataMergers.h"
#include "NodeOperationExecutors/DClb_DocumentPropsOperationExecutor.h"
#include "NodeOperationExecutors/DClb_FieldBlockOperationExecutor.h"
#include "NodeOperationExecutors/DClb_ParagraphOperationExecutor.h"
#include "NodeOperationExecutors/DClb_RunOperationExecutor.h"
#include "NodeOperationExecutors/DClb_ScriptCollectionOperationExecutor.h"
#include "NodeOperationExecutors/DClb_SectionPropsOperationExecutor.h"
#include "NodeOperationExecutors/DClb_TextWithTombstonesOperationExecutor.h"
#include "Notifications/DClb_ExecutorNotificationObserver.h"

#include "CE_ListMultirangeTransformers.h"
#include "CE_ListTransformers.h"
#include "CE_MapTransformers.h"
#include "CE_SetPropertyTransformers.h"
#include "CE_TableTransformers.h"

#include "Util_Assert.h"

#include <type_traits>
#include <utility>

namespace Zem::DOMCollaboration
{

using CollaborationEngine::AncestorCollectionModificationTransformer;
using CollaborationEngine::HierarchicalOperation;
using CollaborationEngine::NodeAddressWithTransformationData;
using CollaborationEngine::NodePositionTransformer;
using CollaborationEngine::OperationExecutor;
using CollaborationEngine::OperationUPtr;
using CollaborationEngine::SameNodeTransformer;

namespace
{

// The guards of types of node that nothing may be aimed at.

class AssertingNodePositionTransformer final : public NodePositionTransformer
{
public:
    void include(const HierarchicalOperation&, NodeAddressWithTransformationData&) const override
    {
        ZEM_FAIL("Node position include transformation should never happen for this node type.");
    }

    void exclude(const HierarchicalOperation&, NodeAddressWithTransformationData&) const override
    {
        ZEM_FAIL("Node position exclude transformation should never happen for this node type.");
    }
};

class AssertingSameNodeTransformer final : public SameNodeTransformer
{
public:
    OperationUPtr include(const CollaborationEngine::NodeOperand&, const CollaborationEngine::NodeOperand&,
                          CollaborationEngine::TieResolveCondition) const override
    {
        ZEM_FAIL("Same node transformation should never happen for this node type.");
    }
};

class AssertingAncestorCollectionModifierTransformer final : public AncestorCollectionModificationTransformer
{
public:
    CollaborationEngine::AddressChange include(CollaborationEngine::OperationNodeAddress&,
                                               const HierarchicalOperation&) const override
    {
        ZEM_FAIL("Ancestor node transformation should never happen for this node type.");
    }
};

class AssertingOperationExecutor final : public NodeOperationExecutor
{
public:
    AssertingOperationExecutor(std::shared_ptr<DocumentAdapterWithNodeAdapter> dom, unsigned long nodeType)
        : NodeOperationExecutor(std::move(dom))
        , _nodeType(nodeType)
    {
    }

    unsigned long getNodeType() const override
    {
        return _nodeType;
    }

    bool executeAndChangeIfNeeded(HierarchicalOperation&, OperationUPtr&) override
    {
        ZEM_FAIL("Operation execution should never happen for this node type.");
    }

    void reverse(HierarchicalOperation&) override
    {
        ZEM_FAIL("Operation reverse should never happen for this node type.");
    }

private:
    unsigned long _nodeType;
};

/// Makes the three transformers of a kind of node. `makeSameNodeTransformer` makes those that need a merger with a new
/// one.
template<class PositionTransformer, class SameNode, class Ancestor>
class TransformersFactory : public NodeFactory
{
public:
    std::shared_ptr<NodePositionTransformer> createNodePositionTransformer() const override
    {
        return std::make_shared<PositionTransformer>();
    }

    std::shared_ptr<SameNodeTransformer> createSameNodeTransformer() const override
    {
        if constexpr (std::is_default_constructible_v<SameNode>)
        {
            return std::make_shared<SameNode>();
        }
        else
        {
            return std::make_shared<SameNode>(makeSetPropertyDataMerger());
        }
    }

    std::shared_ptr<AncestorCollectionModificationTransformer> createAncestorTransformer() const override
    {
        return std::make_shared<Ancestor>();
    }
};

using ListFactory =
    TransformersFactory<CollaborationEngine::ListNodePositionTransformer, CollaborationEngine::ListSameNodeTransformer,
                        CollaborationEngine::AncestorListModificationTransformer>;
using ListMultirangeFactory = TransformersFactory<CollaborationEngine::ListMultirangeNodePositionTransformer,
                                                  CollaborationEngine::ListMultirangeSameNodeTransformer,
                                                  CollaborationEngine::AncestorListMultirangeModificationTransformer>;
using MapFactory =
    TransformersFactory<CollaborationEngine::MapNodePositionTransformer, CollaborationEngine::MapSameNodeTransformer,
                        CollaborationEngine::AncestorMapModificationTransformer>;
using TableFactory = TransformersFactory<CollaborationEngine::TableNodePositionTransformer,
                                         CollaborationEngine::TableSameNodeTransformer,
                                         CollaborationEngine::AncestorTableModificationTransformer>;
using SetPropertyFactory = TransformersFactory<CollaborationEngine::SetPropertyPositionTransformer,
                                               CollaborationEngine::SetPropertyOperationTransformer,
                                               CollaborationEngine::AncestorSetPropertyModificationTransformer>;
using NoAddressTransformationFactory =
    TransformersFactory<AssertingNodePositionTransformer, AssertingSameNodeTransformer,
                        AssertingAncestorCollectionModifierTransformer>;

/// The factory of a type of node that nothing may be aimed at.
class NoTransformatorsNodeFactory final : public NoAddressTransformationFactory
{
public:
    explicit NoTransformatorsNodeFactory(unsigned long nodeType)
        : _nodeType(nodeType)
    {
    }

    unsigned long getNodeType() const override
    {
        return _nodeType;
    }

    std::shared_ptr<NodeOperationExecutor>
    createNodeOperationExecutor(OperationExecutor&, const std::shared_ptr<DocumentAdapterWithNodeAdapter>& dom,
                                std::weak_ptr<ExecutorNotificationObserver>) const override
    {
        return std::make_shared<AssertingOperationExecutor>(dom, _nodeType);
    }

private:
    unsigned long _nodeType;
};

/// A weak pointer to one interface of the observer, which shares its ownership; empty if the observer is gone.
template<class Observer>
std::weak_ptr<Observer> getObserverInterface(const std::weak_ptr<ExecutorNotificationObserver>& observer)
{
    return std::shared_ptr<Observer>(observer.lock());
}

/// The factory of a type of node that operations change. `Executor` is given the proxy if it takes one.
template<OperationDOMNodeType nodeType, class BaseFactory, class Executor, class Observer>
class ExecutedNodeFactory final : public BaseFactory
{
public:
    unsigned long getNodeType() const override
    {
        return convertOperationNodeType(nodeType);
    }

    std::shared_ptr<NodeOperationExecutor>
    createNodeOperationExecutor(OperationExecutor& proxy, const std::shared_ptr<DocumentAdapterWithNodeAdapter>& dom,
                                std::weak_ptr<ExecutorNotificationObserver> observer) const override
    {
        using DomPtr = std::shared_ptr<DocumentAdapterWithNodeAdapter>;
        if constexpr (std::is_same_v<Executor, AssertingOperationExecutor>)
        {
            return std::make_shared<AssertingOperationExecutor>(dom, getNodeType());
        }
        else if constexpr (std::is_constructible_v<Executor, OperationExecutor&, const DomPtr&,
                                                   std::weak_ptr<Observer>>)
        {
            return std::make_shared<Executor>(proxy, dom, getObserverInterface<Observer>(observer));
        }
        else
        {
            return std::make_shared<Executor>(dom, getObserverInterface<Observer>(observer));
        }
    }
};

/// The types of node in ascending order of their numbers. `GUARDED` are those that nothing may be aimed at; `EXECUTED`
/// have a factory of a name of its own, the kind of their transformers, their executor, and the interface of the
/// observer that it tells.
#define ZEM_NODE_FACTORIES(GUARDED, EXECUTED)                                                                          \
    GUARDED(TextDocument)                                                                                              \
    GUARDED(WorkbookDocument)                                                                                          \
    GUARDED(PresentationDocument)                                                                                      \
    GUARDED(Tombstone)                                                                                                 \
    EXECUTED(WorksheetCollectionNodeFactory, WorksheetCollection, ListFactory, AssertingOperationExecutor,             \
             BlockCollectionChangedObserver)                                                                           \
    EXECUTED(SectionTagNodeFactory, SectionTag, NoAddressTransformationFactory, SectionPropsOperationExecutor,         \
             SectionPropsChangedObserver)                                                                              \
    EXECUTED(TableNodeFactory, Table, SetPropertyFactory, AssertingOperationExecutor, TablePropsChangedObserver)       \
    EXECUTED(FrameNodeFactory, Frame, SetPropertyFactory, AssertingOperationExecutor, FramePropsChangedObserver)       \
    EXECUTED(FrameCollectionNodeFactory, FrameCollection, ListFactory, AssertingOperationExecutor,                     \
             FrameCollectionChangedObserver)                                                                           \
    EXECUTED(ConditionalFormatNodeFactory, ConditionalFormat, SetPropertyFactory, AssertingOperationExecutor,          \
             ConditionalFormatChangedObserver)                                                                         \
    EXECUTED(ConditionalFormatCollectionNodeFactory, ConditionalFormatCollection, ListFactory,                         \
             AssertingOperationExecutor, ConditionalFormatCollectionChangedObserver)                                   \
    EXECUTED(FieldBlockNodeFactory, FieldBlock, SetPropertyFactory, FieldBlockOperationExecutor,                       \
             FieldBlockPropsChangedObserver)                                                                           \
    EXECUTED(CellCollectionNodeFactory, CellCollection, TableFactory, AssertingOperationExecutor,                      \
             CellCollectionChangedObserver)                                                                            \
    EXECUTED(CellNodeFactory, Cell, SetPropertyFactory, AssertingOperationExecutor, CellPropsChangedObserver)          \
    GUARDED(Shape)                                                                                                     \
    EXECUTED(ParagraphTagNodeFactory, ParagraphTag, SetPropertyFactory, ParagraphOperationExecutor,                    \
             ParaPropsChangedObserver)                                                                                 \
    GUARDED(CollectionEndMark)                                                                                         \
    EXECUTED(RunNodeFactory, Run, SetPropertyFactory, RunOperationExecutor, RunPropsChangedObserver)                   \
    GUARDED(Char)                                                                                                      \
    EXECUTED(HeaderFooterPairCollectionNodeFactory, HeaderFooterPairCollection, MapFactory,                            \
             AssertingOperationExecutor, HeaderFooterCollectionChangedObserver)                                        \
    EXECUTED(HeaderFooterPairNodeFactory, HeaderFooterPair, SetPropertyFactory, AssertingOperationExecutor,            \
             HeaderFooterPairPropsChangedObserver)                                                                     \
    GUARDED(Header)                                                                                                    \
    GUARDED(Footer)                                                                                                    \
    GUARDED(Temporary)                                                                                                 \
    EXECUTED(DocumentPropsNodeFactory, DocumentProps, SetPropertyFactory, DocumentPropsOperationExecutor,              \
             DocumentPropsChangedObserver)                                                                             \
    EXECUTED(ScriptCollectionNodeFactory, ScriptCollection, MapFactory, ScriptCollectionOperationExecutor,             \
             ScriptCollectionChangedObserver)                                                                          \
    EXECUTED(CommentCollectionNodeFactory, CommentCollection, MapFactory, AssertingOperationExecutor,                  \
             CommentCollectionChangedObserver)                                                                         \
    EXECUTED(CommentNodeFactory, Comment, SetPropertyFactory, AssertingOperationExecutor, CommentPropsChangedObserver) \
    EXECUTED(NoteCollectionNodeFactory, NoteCollection, MapFactory, AssertingOperationExecutor,                        \
             NoteCollectionChangedObserver)                                                                            \
    EXECUTED(NoteNodeFactory, Note, SetPropertyFactory, AssertingOperationExecutor, NotePropsChangedObserver)          \
    EXECUTED(TextStyleCollectionNodeFactory, TextStyleCollection, MapFactory, AssertingOperationExecutor,              \
             TextStyleCollectionChangedObserver)                                                                       \
    EXECUTED(TextStyleNodeFactory, TextStyle, SetPropertyFactory, AssertingOperationExecutor,                          \
             TextStylePropsChangedObserver)                                                                            \
    EXECUTED(TableStyleCollectionNodeFactory, TableStyleCollection, MapFactory, AssertingOperationExecutor,            \
             TableStyleCollectionChangedObserver)                                                                      \
    GUARDED(TableStyle)                                                                                                \
    EXECUTED(TextWithTombstonesNodeFactory, TextWithTombstones, ListMultirangeFactory,                                 \
             TextWithTombstonesOperationExecutor, TextWithTombstonesChangedObserver)

#define ZEM_NO_FACTORY_CLASS(type)
#define ZEM_FACTORY_CLASS(factory, type, base, executor, observer)                                                     \
    using factory = ExecutedNodeFactory<OperationDOMNodeType::type, base, executor, observer>;
ZEM_NODE_FACTORIES(ZEM_NO_FACTORY_CLASS, ZEM_FACTORY_CLASS)
#undef ZEM_NO_FACTORY_CLASS
#undef ZEM_FACTORY_CLASS

const std::vector<std::shared_ptr<const NodeFactory>> nodeFactories = makeNodeTransformersFactory();

} // namespace

std::vector<std::shared_ptr<const NodeFactory>> makeNodeTransformersFactory()
{
    return {
#define ZEM_MAKE_GUARD(type)                                                                                           \
    std::make_shared<NoTransformatorsNodeFactory>(convertOperationNodeType(OperationDOMNodeType::type)),
#define ZEM_MAKE_FACTORY(factory, type, base, executor, observer) std::make_shared<factory>(),
        ZEM_NODE_FACTORIES(ZEM_MAKE_GUARD, ZEM_MAKE_FACTORY)
#undef ZEM_MAKE_GUARD
#undef ZEM_MAKE_FACTORY
    };
}

void forAllNodePositionTransformers(const CallableRef<void(const NodePositionTransformersFactory&)>& callable)
{
    for (const auto& factory : nodeFactories)
    {
        callable(*factory);
    }
}

void forAllSameNodePositionTransformers(const CallableRef<void(const SameNodePositionTransformersFactory&)>& callable)
{
    for (const auto& factory : nodeFactories)
    {
        callable(*factory);
    }
}

void forAllNodeOperationExecutors(const CallableRef<void(const NodeOperationExecutorsFactory&)>& callable)
{
    for (const auto& factory : nodeFactories)
    {
        callable(*factory);
    }
}

} // namespace Zem::DOMCollaboration

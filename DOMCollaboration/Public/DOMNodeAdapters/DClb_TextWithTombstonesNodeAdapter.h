#pragma once

/// The nodes of a text in the world of operations, where it is one flat list.

#include "DOMNodeAdapters/DClb_NodeAdapterImpl.h"
#include "DOMNodeAdapters/DClb_TextReference.h"
#include "PlaneIndexUtils/DClb_PlanePlace.h"

#include "Util_ReadonlyVector.h"

namespace Zem::DOMCollaboration
{

/// A whole text. Its children are its elements: tags, marks, bytes and atomic blocks, one for each place of the plane.
/// It also shows the worksheets of a workbook, which are a text of tables.
template<bool isConst>
class GenericTextWithTombstonesNodeAdapter final
    : public TypedNodeAdapter<GenericTextWithTombstonesNodeAdapter<isConst>, OperationDOMNodeType::TextWithTombstones,
                              ListNodeAdapterBase<GenericTextWithTombstonesNodeAdapter<isConst>>,
                              TextReference<isConst>>
{
public:
    using GenericTextWithTombstonesNodeAdapter::TypedNodeAdapter::TypedNodeAdapter;
    using ChildUPtr = typename OperationNodeAdapter<isConst>::ChildUPtr;

    /// The text; for that of a cell that isn't there yet, an empty one that is shared by all. The read-only adapter
    /// shows its parts alone, since a const text leaves its blocks open.
    template<bool isWritable = !isConst>
    requires isWritable const DOM::TextWithTombstones& getTextWithTombstones() const
    {
        return this->getSubject().getText();
    }

    /// The text for who walks it as a whole, as an index or a planner does. Requires: nothing is changed through the
    /// pointers that a const text holds.
    const DOM::TextWithTombstones& readText() const
    {
        return this->getSubject().getText();
    }

    /// The text, for change; brings the cell into being whose text this is.
    template<bool isWritable = !isConst>
    requires isWritable DOM::TextWithTombstones& getOrCreateTextWithTombstones() const
    {
        return getOrCreateText(this->getSubject());
    }

    ReadonlyVector<DOM::Blocks> getBlocks() const;

    const CollaborationUtils::TombstonesStorage& getTombstones() const;

    /// The place at an index of the plane; empty beyond the end. Cost: a walk over the text up to the place.
    boost::optional<PlanePlace> findPlace(IndexExcludingTombstones index) const;

    /// The plane's size. Cost: a walk over the text.
    IndexExcludingTombstones getChildrenCountExcludingTombstones() const override;
    IndexIncludingTombstones getChildrenCountIncludingTombstones() const override;

    /// Cost: a walk over the text up to the child.
    ChildUPtr createChildAdapterByIndexIfPossible(IndexIncludingTombstones index) override;
    ChildUPtr createChildAdapterByIndexIfPossible(IndexExcludingTombstones index) override;

    /// The child at a place that was found already, without a walk. Requires: it is a place of this text as it is now.
    ChildUPtr createChildAdapterAt(const PlanePlace& place);
};

/// The tag that a paragraph begins with.
template<bool isConst>
class GenericParagraphTagNodeAdapter final
    : public PlainLeafNodeAdapter<GenericParagraphTagNodeAdapter<isConst>, OperationDOMNodeType::ParagraphTag,
                                  NodeReference<GenericParagraphTagNodeAdapter<isConst>, DOM::Paragraph>>
{
public:
    using GenericParagraphTagNodeAdapter::PlainLeafNodeAdapter::PlainLeafNodeAdapter;

    NodeOf<GenericParagraphTagNodeAdapter, DOM::Paragraph>& getParagraph() const
    {
        return this->getSubject();
    }
};

/// The mark that a paragraph ends with. It is the end mark of the paragraph's runs, and has its type.
template<bool isConst>
class GenericParagraphMarkNodeAdapter final
    : public PlainLeafNodeAdapter<GenericParagraphMarkNodeAdapter<isConst>, OperationDOMNodeType::CollectionEndMark,
                                  NodeReference<GenericParagraphMarkNodeAdapter<isConst>, DOM::Paragraph>>
{
public:
    using GenericParagraphMarkNodeAdapter::PlainLeafNodeAdapter::PlainLeafNodeAdapter;

    NodeOf<GenericParagraphMarkNodeAdapter, DOM::Paragraph>& getParagraph() const
    {
        return this->getSubject();
    }
};

/// The tag of a text run, or an atomic run.
template<bool isConst>
class GenericRunTagNodeAdapter final
    : public PlainLeafNodeAdapter<GenericRunTagNodeAdapter<isConst>, OperationDOMNodeType::Run,
                                  NodeReference<GenericRunTagNodeAdapter<isConst>, DOM::Run>>
{
public:
    using GenericRunTagNodeAdapter::PlainLeafNodeAdapter::PlainLeafNodeAdapter;

    NodeOf<GenericRunTagNodeAdapter, DOM::Run>& getRun() const
    {
        return this->getSubject();
    }
};

ZEM_DECLARE_NODE_ADAPTER(GenericTextWithTombstonesNodeAdapter)
ZEM_DECLARE_NODE_ADAPTER(GenericParagraphTagNodeAdapter)
ZEM_DECLARE_NODE_ADAPTER(GenericParagraphMarkNodeAdapter)
ZEM_DECLARE_NODE_ADAPTER(GenericRunTagNodeAdapter)

} // namespace Zem::DOMCollaboration

#pragma once

/// A paragraph of the text tree, its runs, and their characters.

#include "DOMNodeAdapters/Native/DClb_NativeListNodeAdapter.h"

#include "DOM_Run.h"

#include "Util_ReadonlyVector.h"

namespace Zem::DOM
{

class Paragraph;
class TextRun;

} // namespace Zem::DOM

namespace Zem::DOMCollaboration
{

/// A paragraph. Its one child is the collection of its runs.
template<bool isConst>
class GenericParagraphNodeAdapter final
    : public TypedNodeAdapter<GenericParagraphNodeAdapter<isConst>, NativeDOMNodeType::Paragraph,
                              FixedNodeAdapterBase<GenericParagraphNodeAdapter<isConst>>,
                              NodeReference<GenericParagraphNodeAdapter<isConst>, DOM::Paragraph>>
{
public:
    using GenericParagraphNodeAdapter::TypedNodeAdapter::TypedNodeAdapter;

    NodeOf<GenericParagraphNodeAdapter, DOM::Paragraph>& getParagraph() const
    {
        return this->getSubject();
    }

    typename NativeNodeAdapter<isConst>::ChildUPtr
    createChildAdapterIfPossibleImpl(const typename NativeNodeAdapter<isConst>::FixedChunk& childAddress,
                                     bool) override;
};

/// The runs of a paragraph.
template<bool isConst>
class GenericRunCollectionNodeAdapter final
    : public NativeListNodeAdapter<GenericRunCollectionNodeAdapter<isConst>, NativeDOMNodeType::RunCollection,
                                   NodeReference<GenericRunCollectionNodeAdapter<isConst>, DOM::Runs>>
{
public:
    using GenericRunCollectionNodeAdapter::NativeListNodeAdapter::NativeListNodeAdapter;

    ListOf<isConst, DOM::Runs> getRuns() const
    {
        return ListOf<isConst, DOM::Runs>(this->getSubject().get());
    }

    unsigned long getSize() const;

    /// Requires: `index` < `getSize()`.
    typename NativeNodeAdapter<isConst>::ChildUPtr createItemAdapter(unsigned long index) const;
};

/// Any run but a text run.
template<bool isConst>
class GenericRunNodeAdapter final
    : public FixedLeafNodeAdapter<GenericRunNodeAdapter<isConst>, NativeDOMNodeType::Run, DOM::Run>
{
public:
    using GenericRunNodeAdapter::FixedLeafNodeAdapter::FixedLeafNodeAdapter;

    NodeOf<GenericRunNodeAdapter, DOM::Run>& getRun() const
    {
        return this->getSubject();
    }
};

/// A text run. Its one child is the collection of its characters. It has the type of any run: `accept` tells the two
/// classes apart.
template<bool isConst>
class GenericTextRunNodeAdapter final
    : public TypedNodeAdapter<GenericTextRunNodeAdapter<isConst>, NativeDOMNodeType::Run,
                              FixedNodeAdapterBase<GenericTextRunNodeAdapter<isConst>>,
                              NodeReference<GenericTextRunNodeAdapter<isConst>, DOM::TextRun>>
{
public:
    using GenericTextRunNodeAdapter::TypedNodeAdapter::TypedNodeAdapter;

    NodeOf<GenericTextRunNodeAdapter, DOM::TextRun>& getRun() const
    {
        return this->getSubject();
    }

    typename NativeNodeAdapter<isConst>::ChildUPtr
    createChildAdapterIfPossibleImpl(const typename NativeNodeAdapter<isConst>::FixedChunk& childAddress,
                                     bool) override;
};

/// The characters of a text run; each is a byte.
template<bool isConst>
class GenericCharCollectionNodeAdapter final
    : public NativeListNodeAdapter<GenericCharCollectionNodeAdapter<isConst>, NativeDOMNodeType::CharCollection,
                                   NodeReference<GenericCharCollectionNodeAdapter<isConst>, DOM::TextRun>>
{
public:
    using GenericCharCollectionNodeAdapter::NativeListNodeAdapter::NativeListNodeAdapter;

    NodeOf<GenericCharCollectionNodeAdapter, DOM::TextRun>& getTextRun() const
    {
        return this->getSubject();
    }

    unsigned long getSize() const;

    /// Requires: `index` < `getSize()`.
    typename NativeNodeAdapter<isConst>::ChildUPtr createItemAdapter(unsigned long index) const;
};

ZEM_DECLARE_NODE_ADAPTER(GenericParagraphNodeAdapter)
ZEM_DECLARE_NODE_ADAPTER(GenericRunCollectionNodeAdapter)
ZEM_DECLARE_NODE_ADAPTER(GenericRunNodeAdapter)
ZEM_DECLARE_NODE_ADAPTER(GenericTextRunNodeAdapter)
ZEM_DECLARE_NODE_ADAPTER(GenericCharCollectionNodeAdapter)

} // namespace Zem::DOMCollaboration

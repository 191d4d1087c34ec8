#pragma once

/// The adapter of a piece of text outside a document, so that operations may run on it.

#include "DOMNodeAdapters/DClb_DocumentAdapterWithNodeAdapter.h"

#include "DOM_TextWithTombstones.h"

#include "Util_ReadonlyVector.h"

namespace Zem::DOMCollaboration
{

/// A detached text, with the document-wide values that it needs. All that it is given must outlive it.
class ZEM_EXPORT BlocksAdapter : public virtual DOMAdapter
{
public:
    /// `theme`, `colorMap` and the default properties may be null.
    BlocksAdapter(DOM::TextWithTombstones& text, const DOM::Styles& styles, const DOM::Theme* theme,
                  const DOM::ColorMap* colorMap, const DOM::ParaPropsConstPtr& localDefaultParaProps,
                  const DOM::RunPropsConstPtr& localDefaultRunProps,
                  const DOM::SharedObjectFactory& sharedObjectFactory);

    ReadonlyVector<DOM::Blocks> getBlocks() const
    {
        return ReadonlyVector<DOM::Blocks>(_text.getBlocks());
    }

    const DOM::TextWithTombstones& getTextWithTombstones() const
    {
        return _text;
    }

    DOM::TextWithTombstones& getTextWithTombstones()
    {
        return _text;
    }

    /// Off until it is set.
    void setChangesTrackingEnabled(bool isEnabled)
    {
        _isChangesTrackingEnabled = isEnabled;
    }

    /// A detached text has none.
    const DOM::UUIDContainer<DOM::NumberedList>& getNumLists() const override;
    const DOM::SharedObjectFactory& getSharedObjectFactory() const override;
    const DOM::Styles& getStyles() const override;
    const DOM::Theme* getTheme() const override;
    const DOM::ColorMap* getColorMap() const override;
    bool isChangesTrackingEnabled() const override;
    const DOM::CellPropsConstPtr& getDefaultCellProps() const override;
    DOM::ParaPropsConstPtr getLocalDefaultParaProps() const override;
    DOM::RunPropsConstPtr getLocalDefaultRunProps() const override;

private:
    DOM::TextWithTombstones& _text;
    const DOM::Styles& _styles;
    const DOM::Theme* _theme;
    const DOM::ColorMap* _colorMap;
    DOM::ParaPropsConstPtr _localDefaultParaProps;
    DOM::RunPropsConstPtr _localDefaultRunProps;
    const DOM::SharedObjectFactory& _sharedObjectFactory;
    DOM::UUIDContainer<DOM::NumberedList> _numLists;
    bool _isChangesTrackingEnabled = false;
};

class ZEM_EXPORT BlocksAdapterWithNodeAdapter final
    : public DocumentAdapterImpl<BlocksAdapterWithNodeAdapter, BlocksAdapter, GenericTemporaryDOMNodeAdapter>
{
public:
    using DocumentAdapterImpl::DocumentAdapterImpl;
};

extern template class DocumentAdapterImpl<BlocksAdapterWithNodeAdapter, BlocksAdapter, GenericTemporaryDOMNodeAdapter>;

} // namespace Zem::DOMCollaboration

#pragma once

/// A document whose roots a test chooses, to reach nodes that no document has at its root.

#include "DOMNodeAdapters/DClb_DocumentAdapter.h"

#include <functional>

namespace Zem::DOMCollaboration
{

class FakeDocumentAdapter : public DocumentAdapterWithNodeAdapter, public DocumentAdapter
{
public:
    using DocumentAdapter::DocumentAdapter;

    void accept(VisitorType&) override
    {
    }

    void accept(ConstVisitorType&) const override
    {
    }

    const DOM::CellPropsConstPtr& getDefaultCellProps() const override
    {
        static const DOM::CellPropsConstPtr none;
        return none;
    }

    std::unique_ptr<NativeNodeAdapter<false>> createNodeAdapter() override
    {
        return nullptr;
    }

    std::unique_ptr<NativeNodeAdapter<true>> createNodeAdapter() const override
    {
        return _makeNative ? _makeNative() : nullptr;
    }

    std::unique_ptr<OperationNodeAdapter<false>> createOperationNodeAdapter() override
    {
        return nullptr;
    }

    std::unique_ptr<OperationNodeAdapter<true>> createOperationNodeAdapter() const override
    {
        return _makeOperation ? _makeOperation() : nullptr;
    }

    std::function<std::unique_ptr<NativeNodeAdapter<true>>()> _makeNative;
    std::function<std::unique_ptr<OperationNodeAdapter<true>>()> _makeOperation;
};

} // namespace Zem::DOMCollaboration

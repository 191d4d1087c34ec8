#pragma once

#include "DOMNodeAdapters/DClb_DOMAdapter.h"
#include "DOMNodeAdapters/DClb_DOMNodeAdapter.h"

namespace Zem::DOMCollaboration
{

/// A document with the roots of its nodes in both worlds.
class ZEM_EXPORT DocumentAdapterWithNodeAdapter : public virtual DOMAdapter
{
public:
    /// The root of the native world.
    virtual std::unique_ptr<NativeNodeAdapter<false>> createNodeAdapter() = 0;
    virtual std::unique_ptr<NativeNodeAdapter<true>> createNodeAdapter() const = 0;

    /// The root of the world of operations.
    virtual std::unique_ptr<OperationNodeAdapter<false>> createOperationNodeAdapter() = 0;
    virtual std::unique_ptr<OperationNodeAdapter<true>> createOperationNodeAdapter() const = 0;
};

/// Implements what the concrete kinds do alike: `accept`, and the roots. `Root` is the adapter of the root, and `Data`
/// the class that holds what it shows, a `DocumentAdapter` or a `BlocksAdapter`.
template<class Derived, class Data, template<class, class, bool> class Root>
class ZEM_EXPORT DocumentAdapterImpl : public DocumentAdapterWithNodeAdapter, public Data
{
public:
    using Data::Data;

    void accept(VisitorType& visitor) final;
    void accept(ConstVisitorType& visitor) const final;

    std::unique_ptr<NativeNodeAdapter<false>> createNodeAdapter() final;
    std::unique_ptr<NativeNodeAdapter<true>> createNodeAdapter() const final;
    std::unique_ptr<OperationNodeAdapter<false>> createOperationNodeAdapter() final;
    std::unique_ptr<OperationNodeAdapter<true>> createOperationNodeAdapter() const final;
};

} // namespace Zem::DOMCollaboration

#pragma once

#include "Util_Clonable.h"
#include "Util_Export.h"

namespace Zem::CollaborationEngine
{

/// What a client has under its hands, such as a selection. The engine keeps, clones and compares it, and transforms it
/// against operations through a `BaseClientEditingStateTransformer`.
class ZEM_EXPORT ClientEditingState : public Clonable<ClientEditingState>
{
public:
    ~ClientEditingState() override;

    virtual bool operator==(const ClientEditingState& other) const = 0;

    /// Forgets what is kept only for the sake of transformation.
    virtual void clearCache() = 0;

protected:
    ClientEditingState() = default;
    ClientEditingState(const ClientEditingState&) = default;
    ClientEditingState(ClientEditingState&&) = default;
    ClientEditingState& operator=(const ClientEditingState&) = default;
    ClientEditingState& operator=(ClientEditingState&&) = default;
};

} // namespace Zem::CollaborationEngine

#pragma once

#include "Util_Export.h"

#include <string>

namespace Zem::DOMCollaboration
{

/// Is told of scripts that left the document or came into it.
class ZEM_EXPORT ScriptCollectionChangedObserver
{
public:
    virtual void onScriptRemoved(const std::string& name) = 0;

    virtual void onScriptInserted(const std::string& name) = 0;

protected:
    ~ScriptCollectionChangedObserver() = default;
};

} // namespace Zem::DOMCollaboration

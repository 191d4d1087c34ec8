#include "DOM_Scripts.h"

#include "Util_Assert.h"

namespace Zem::DOM
{

boost::optional<std::string> Scripts::getScript(const std::string& name) const
{
    const auto script = _scripts.find(name);
    return script == _scripts.end() ? boost::none : boost::optional<std::string>(script->second);
}

void Scripts::insertScript(const std::string& name, const std::string& text)
{
    const bool isInserted = _scripts.emplace(name, text).second;
    ZEM_ASSERT(isInserted);
}

void Scripts::removeScript(const std::string& name)
{
    const auto removedCount = _scripts.erase(name);
    ZEM_ASSERT(removedCount == 1);
}

} // namespace Zem::DOM

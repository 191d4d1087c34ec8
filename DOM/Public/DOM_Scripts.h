#pragma once

#include "DOM_FieldOperators.h"

#include "Util_Export.h"
#include "Util_Fields.h"

#include <boost/optional.hpp>

#include <map>
#include <string>

namespace Zem::DOM
{

/// The texts of a document's scripts by their names.
class ZEM_EXPORT Scripts
{
public:
    /// The text of the script; empty if no script has the name.
    boost::optional<std::string> getScript(const std::string& name) const;

    /// Fails: "isInserted" when a script has the name already.
    void insertScript(const std::string& name, const std::string& text);

    /// Fails: "removedCount == 1" when no script has the name.
    void removeScript(const std::string& name);

    /// Name to text, in the order of the names' bytes.
    const std::map<std::string, std::string>& getScripts() const
    {
        return _scripts;
    }

    static constexpr auto fields()
    {
        return std::make_tuple(field("_scripts", &Scripts::_scripts));
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    std::map<std::string, std::string> _scripts;
};

} // namespace Zem::DOM

#pragma once

#include "Util_Export.h"

#include <stdexcept>
#include <string>

namespace Zem
{

/// The base of the exceptions of this family of libraries.
class ZEM_EXPORT BaseRuntimeError : public std::runtime_error
{
public:
    explicit BaseRuntimeError(const std::string& message);
};

} // namespace Zem

#pragma once

#include "Util_DeepComparison.h"

namespace Zem::DOM
{

/// `==` of the model's value classes, from their lists of fields.
using FieldOperators::operator==;

} // namespace Zem::DOM

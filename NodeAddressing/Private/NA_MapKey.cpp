#include "NA_MapKey.h"

namespace Zem::NodeAddressing
{

MapKey::~MapKey() = default;

} // namespace Zem::NodeAddressing

#include "DOM_Note.h"

#include "Util_DeepCopy.h"

namespace Zem::DOM
{

Note::Note() = default;

Note::Note(const Note& other)
    : UUIDable(other)
    , _blocks(deepCopy(other._blocks))
    , _extent(other._extent)
    , _alwaysVisible(other._alwaysVisible)
{
}

Note::Note(Note&&) noexcept = default;

Note& Note::operator=(const Note& other)
{
    return *this = Note(other);
}

Note& Note::operator=(Note&&) noexcept = default;
Note::~Note() = default;

} // namespace Zem::DOM

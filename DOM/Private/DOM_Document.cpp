#include "DOM_Document.h"

#include "Util_DeepComparison.h"

namespace Zem::DOM
{

Document::Document() = default;
Document::Document(const Document&) = default;
Document::Document(Document&&) noexcept = default;
Document& Document::operator=(const Document&) = default;
Document& Document::operator=(Document&&) noexcept = default;
Document::~Document() = default;

bool operator==(const Document& left, const Document& right)
{
    return DefineDeepComparisonDetails::areMembersDeeplyEqual(left, right);
}

} // namespace Zem::DOM

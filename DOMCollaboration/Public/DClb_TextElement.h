#pragma once

/// The flat form of text that the engine sees: a paragraph is its block element, the elements of its runs, and a
/// `ParagraphMark`; a text run is its run element and one `short` for each byte. Blocks and runs inside elements are
/// shared and immutable, and carry no children: they are cloned before they enter a document.

#include "CE_ItemsCollection.h"
#include "DOM_Block.h"
#include "DOM_Run.h"

#include "Util_SharedConstPtr.h"

#include <boost/variant.hpp>

#include <vector>

namespace Zem::DOMCollaboration
{

/// The end of a paragraph. All marks are equal.
struct ParagraphMark
{
    friend bool operator==(const ParagraphMark&, const ParagraphMark&)
    {
        return true;
    }

    template<class Archive>
    void serialize(Archive& archive);
};

/// One place of the flat form. A `short` is the value of a byte, sign-extended.
using TextWithTombstonesElement =
    boost::variant<ParagraphMark, SharedConstPtr<DOM::Block>, SharedConstPtr<DOM::Run>, short>;

using TextWithTombstonesElementVector = std::vector<TextWithTombstonesElement>;

using TextWithTombstonesItems = CollaborationEngine::SimpleItemsCollection<TextWithTombstonesElementVector>;

} // namespace Zem::DOMCollaboration

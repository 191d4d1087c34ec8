#pragma once

#include "DOMNodeAdapters/Shared/DClb_LeafNodeAdapters.h"
#include "DOMNodeAdapters/Shared/DClb_TableNodeAdapters.h"
#include "DOMNodeAdapters/Shared/DClb_TextOwnerNodeAdapters.h"

#include "DOM_Blocks.h"

namespace Zem::DOMCollaboration
{

/// Makes the adapter of a block, by its class. `ParagraphAdapter` is how the world shows a paragraph.
template<class Tag, class NodeType, bool isConst, class ParagraphAdapter>
std::unique_ptr<DOMNodeAdapter<Tag, NodeType, isConst>> makeBlockAdapter(ConstIf<isConst, DOM::Block>& block)
{
    using Result = std::unique_ptr<DOMNodeAdapter<Tag, NodeType, isConst>>;
    return DOM::visitBlock(
        block,
        [](ConstIf<isConst, DOM::Paragraph>& paragraph) -> Result
        { return std::make_unique<ParagraphAdapter>(paragraph); },
        [](ConstIf<isConst, DOM::Table>& table) -> Result
        { return std::make_unique<GenericTableNodeAdapter<Tag, NodeType, isConst>>(table); },
        [](ConstIf<isConst, DOM::SectionTag>& tag) -> Result
        { return std::make_unique<GenericSectionTagNodeAdapter<Tag, NodeType, isConst>>(tag); },
        [](ConstIf<isConst, DOM::Shape>& shape) -> Result
        { return std::make_unique<GenericShapeNodeAdapter<Tag, NodeType, isConst>>(shape); },
        [](ConstIf<isConst, DOM::FieldBlock>& field) -> Result
        { return std::make_unique<GenericAtomicBlockNodeAdapter<Tag, NodeType, DOM::FieldBlock, isConst>>(field); });
}

} // namespace Zem::DOMCollaboration

#pragma once

/// What every operation on a text first learns of its target, and whether a cell takes what is to be put into it.

#include "DClb_TextElement.h"
#include "DOMNodeAdapters/DClb_DocumentAdapterWithNodeAdapter.h"
#include "DOMNodeAdapters/DClb_TextWithTombstonesNodeAdapter.h"

#include "CE_ListMultirangeOperation.h"
#include "CE_OperationNodeAddress.h"
#include "DOM_NativeNodeAddress.h"

#include <memory>

namespace Zem::DOMCollaboration
{

/// What a text holds: rich text, one formula or value of a cell, or nothing.
enum class BlocksContentType : unsigned char
{
    RichText = 0,
    FormulaOrData = 1,
    Empty = 2
};

BlocksContentType getContentType(const DOM::Block& block);

/// The type of the first block, or `Empty`.
BlocksContentType getContentType(const DOM::Blocks& blocks);

/// The type of the first nested operation that holds elements: `RichText` unless these begin with a block.
/// Fails: "plainPtr" on missing data; `std::bad_cast` on items that aren't text elements.
template<class Operation>
BlocksContentType getTypeOfAddedData(const CollaborationEngine::ListMultirangeOperationImpl<Operation>& operation);

/// The elements that a nested operation carries. Fails as `getTypeOfAddedData`.
template<class Operation>
const TextWithTombstonesElementVector& getElements(const Operation& operation)
{
    return cast<TextWithTombstonesItems>(derefPtr(operation.getData())).getCollection();
}

struct TextWithTombstonesInfo
{
    using TextAdapter = GenericTextWithTombstonesNodeAdapter<false>;

    const TextAdapter& getAdapter() const
    {
        return static_cast<const TextAdapter&>(*_textWithTombstonesAdapter);
    }

    bool _isInCell = false;
    /// Whether no cell on the way is merged into another or covered by a pivot table; true outside cells.
    bool _isAccessibleCell = true;
    BlocksContentType _contentType = BlocksContentType::Empty;
    DOM::NativeNodeAddress _nativeAddress;
    std::unique_ptr<OperationNodeAdapter<false>> _textWithTombstonesAdapter;
};

/// Walks from the root of `document` to the text at `address`. Fails: "castAddress", "opt", "currentTable", "There is
/// no element corresponding to the passed address", "!isPtrNull(dest)", and "contentType !=
/// BlocksContentType::FormulaOrData || isInCell" for a formula outside of cells.
TextWithTombstonesInfo getTextWithTombstonesInfo(DocumentAdapterWithNodeAdapter& document,
                                                 const CollaborationEngine::OperationNodeAddress& address);

/// Whether the text takes what is to be added. A formula or value is never mixed with anything else: it goes only into
/// an empty cell, and nothing goes into a cell that has one; a cell that isn't accessible takes nothing.
/// Fails: "textWithTombstonesInfo.contentType != BlocksContentType::FormulaOrData && typeOfAddedData !=
/// BlocksContentType::FormulaOrData" outside of cells.
bool shouldChangeDom(const TextWithTombstonesInfo& textWithTombstonesInfo, BlocksContentType typeOfAddedData);

} // namespace Zem::DOMCollaboration

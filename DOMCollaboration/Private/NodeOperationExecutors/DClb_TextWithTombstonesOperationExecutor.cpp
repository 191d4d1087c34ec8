#include "NodeOperationExecutors/DClb_TextWithTombstonesOperationExecutor.h"

#include "DClb_NodeTypes.h"
#include "DClb_Utils.h"
#include "Text/DClb_OpenParagraphs.h"
#include "Text/DClb_TextContents.h"
#include "Text/DClb_TextEditing.h"
#include "Text/DClb_TextNesting.h"

#include "Util_Assert.h"
#include "Util_Cast.h"
#include "Util_Visitor.h"

namespace Zem::DOMCollaboration
{

using namespace CollaborationEngine;
using TextBusinessRules::BusinessLogicValidationResult;
using TextBusinessRules::TextSurroundings;

namespace
{

template<class Tag>
using MultirangeOf = ListMultirangeOperationImpl<ListModificationOperation<Tag>>;
using LeaveTombstonesOperation = ListMultirangeOperationImpl<ListLeaveTombstonesOperation>;

const DOM::Blocks& getBlocks(const TextWithTombstonesInfo& info)
{
    return info.getAdapter().getTextWithTombstones().getBlocks();
}

const CollaborationUtils::TombstonesStorage& getTombstones(const TextWithTombstonesInfo& info)
{
    return info.getAdapter().getTextWithTombstones().getTombstones();
}

bool refuse(OperationUPtr& changedOp)
{
    changedOp = std::make_unique<EmptyOperation>();
    return true;
}

/// Repairs the data of each range, gives it the marks that the tree will show, and returns whether any range changed.
bool fixBusinessLogicForInsertion(RangeInfos& ranges, const DOM::Blocks& blocks)
{
    findPlaces(ranges, blocks);
    bool isChanged = false;
    for (RangeInfo& range : ranges)
    {
        const TextSurroundings surroundings(blocks, range.getAnchor());
        IndexExcludingTombstones startIndex = range.getStartIndex();
        bool isRangeChanged = TextBusinessRules::fixBusinessLogicForInsertion(range._data, startIndex, surroundings);
        isRangeChanged |= TextBusinessRules::closeOpenParagraphs(range._data, startIndex, surroundings);
        if (!isRangeChanged)
        {
            continue;
        }
        isChanged = true;
        ZEM_ASSERT_MESSAGE(startIndex == range.getStartIndex() || (startIndex + 1) == range.getStartIndex(),
                           "startIndex == rangeInfo.getStartIndex() || (startIndex + 1) == rangeInfo.getStartIndex()");
        if (startIndex != range.getStartIndex())
        {
            range.getAnchor().stepBack(blocks);
        }
        range.setSize(range._data.size());
    }
    return isChanged;
}

/// The judgement of all ranges, each on the document as it is; the first that is invalid decides.
template<class Judge>
BusinessLogicValidationResult judgeRanges(RangeInfos& ranges, const DOM::Blocks& blocks, Judge judge)
{
    findPlaces(ranges, blocks);
    for (RangeInfo& range : ranges)
    {
        const TextSurroundings surroundings(blocks, range.getAnchor());
        if (judge(range, surroundings) == BusinessLogicValidationResult::Invalid)
        {
            return BusinessLogicValidationResult::Invalid;
        }
    }
    return BusinessLogicValidationResult::Valid;
}

/// What the grammar lets through is invalid too if it would leave a paragraph open.
BusinessLogicValidationResult requireClosed(BusinessLogicValidationResult judgement, bool leavesParagraphOpen)
{
    return leavesParagraphOpen ? BusinessLogicValidationResult::Invalid : judgement;
}

BusinessLogicValidationResult fixBusinessLogicForRemoving(RangeInfos& ranges, const DOM::Blocks& blocks)
{
    return judgeRanges(
        ranges, blocks,
        [](const RangeInfo& range, const TextSurroundings& surroundings)
        {
            const IndexExcludingTombstones begin = range.getStartIndex();
            const IndexExcludingTombstones end = range.getEndIndex();
            const auto judgement = TextBusinessRules::fixBusinessLogicForRemoving(begin, end, surroundings);
            return requireClosed(judgement, TextBusinessRules::leavesParagraphOpen(begin, end, surroundings));
        });
}

BusinessLogicValidationResult fixBusinessLogicForRestoring(RangeInfos& ranges, const DOM::Blocks& blocks)
{
    return judgeRanges(
        ranges, blocks,
        [](const RangeInfo& range, const TextSurroundings& surroundings)
        {
            const IndexExcludingTombstones begin = range.getStartIndex();
            const auto judgement = TextBusinessRules::fixBusinessLogicForRestoring(range._data, begin, surroundings);
            return requireClosed(judgement, TextBusinessRules::leavesParagraphOpen(range._data, begin, surroundings));
        });
}

/// The insertion that really happens, of the repaired ranges that have elements left; each of these is from now on
/// covered by its operation. Null when there are none.
std::unique_ptr<MultirangeOf<InsertTag>> makeRepairedInsertion(const MultirangeOf<InsertTag>& operation,
                                                               RangeInfos& ranges,
                                                               const CollaborationUtils::TombstonesStorage& tombstones)
{
    std::vector<ListModificationOperation<InsertTag>> nestedOperations;
    for (const RangeInfo& range : ranges)
    {
        if (range.getSize() == 0)
        {
            continue;
        }
        const unsigned long begin = tombstones.convertIndex(range.getStartIndex()).get();
        nestedOperations.emplace_back(operation.getNodeAddress(), operation.getOperandType(),
                                      makeSharedConst<TextWithTombstonesItems>(range._data),
                                      IndexRange<unsigned long>::fromCount(begin, range.getSize()));
    }
    if (nestedOperations.empty())
    {
        return nullptr;
    }
    auto repaired = std::make_unique<MultirangeOf<InsertTag>>(std::move(nestedOperations));
    auto nestedOperation = repaired->getNestedOperations().begin();
    for (RangeInfo& range : ranges)
    {
        if (range.getSize() > 0)
        {
            range.setCurrentOperation(*nestedOperation++);
        }
    }
    return repaired;
}

/// Takes the data of all ranges apart, so that data that can't be put in fails before anything is changed.
std::vector<InsertionData> takeDataApart(const RangeInfos& ranges)
{
    std::vector<InsertionData> data;
    data.reserve(ranges.size());
    for (const RangeInfo& range : ranges)
    {
        data.push_back(takeApart(range._data));
    }
    return data;
}

/// Throws what an observer threw, if it did, now that tree, slots and operation agree again.
void rethrow(const std::exception_ptr& failure)
{
    if (failure)
    {
        std::rethrow_exception(failure);
    }
}

/// Keeps the nested ranges of an insertion in common coordinates for as long as it lives, also when it is left early.
class ShiftedNestedRanges
{
public:
    explicit ShiftedNestedRanges(MultirangeOf<InsertTag>& operation)
        : _operation(operation)
    {
        shiftNestedRanges(_operation, true);
    }

    ShiftedNestedRanges(const ShiftedNestedRanges&) = delete;
    ShiftedNestedRanges& operator=(const ShiftedNestedRanges&) = delete;

    ~ShiftedNestedRanges()
    {
        shiftNestedRanges(_operation, false);
    }

private:
    MultirangeOf<InsertTag>& _operation;
};

} // namespace

TextWithTombstonesOperationExecutor::TextWithTombstonesOperationExecutor(
    std::shared_ptr<DocumentAdapterWithNodeAdapter> dom, std::weak_ptr<TextWithTombstonesChangedObserver> observer)
    : NodeOperationExecutor(std::move(dom))
    , _observer(std::move(observer))
{
}

unsigned long TextWithTombstonesOperationExecutor::getNodeType() const
{
    return convertOperationNodeType(OperationDOMNodeType::TextWithTombstones);
}

bool TextWithTombstonesOperationExecutor::executeAndChangeIfNeeded(HierarchicalOperation& operation,
                                                                   OperationUPtr& changedOp)
{
    return visitWith<bool>(
        cast<ListMultirangeOperation>(operation),
        [&](MultirangeOf<InsertTag>& insertion) { return insertData(insertion, changedOp); },
        [](MultirangeOf<RemoveTag>&) -> bool { ZEM_FAIL("ListRemoveOperation shouldn't be executed ever"); },
        [&](MultirangeOf<MarkAsRemovedTag>& marking) { return markDataAsRemoved(marking, changedOp); },
        [&](MultirangeOf<RestoreTag>& restoring) { return restoreData(restoring, changedOp); },
        [](LeaveTombstonesOperation&) { return false; });
}

void TextWithTombstonesOperationExecutor::reverse(HierarchicalOperation& operation)
{
    OperationUPtr changedOp;
    const bool opChanged = visitWith<bool>(
        cast<ListMultirangeOperation>(operation),
        [&](MultirangeOf<InsertTag>& insertion)
        {
            removeData(insertion);
            return false;
        },
        [](MultirangeOf<RemoveTag>&) -> bool { ZEM_FAIL("ListRemoveOperation shouldn't be executed ever"); },
        [&](MultirangeOf<MarkAsRemovedTag>& marking) { return restoreData(marking, changedOp); },
        [&](MultirangeOf<RestoreTag>& restoring) { return markDataAsRemoved(restoring, changedOp); },
        [](LeaveTombstonesOperation&) { return false; });
    ZEM_ASSERT(!opChanged && !changedOp);
}

bool TextWithTombstonesOperationExecutor::insertData(InsertOperation& operation, OperationUPtr& changedOp)
{
    TextWithTombstonesInfo info = getTextWithTombstonesInfo(getDomAdapter(), operation.getNodeAddress());
    if (!shouldChangeDom(info, getTypeOfAddedData(operation)) || isNestedTooDeeply(info._nativeAddress, operation))
    {
        return refuse(changedOp);
    }
    RangeInfos ranges = makeRangesToFill(operation, getTombstones(info));
    const bool isChanged = fixBusinessLogicForInsertion(ranges, getBlocks(info));
    if (isChanged)
    {
        changedOp = makeRepairedInsertion(operation, ranges, getTombstones(info));
        if (!changedOp)
        {
            return refuse(changedOp);
        }
    }
    rethrow(applyInsertion(info, ranges, SlotsChange::Insert));
    return isChanged;
}

void TextWithTombstonesOperationExecutor::removeData(InsertOperation& operation)
{
    TextWithTombstonesInfo info = getTextWithTombstonesInfo(getDomAdapter(), operation.getNodeAddress());
    std::exception_ptr failure;
    {
        const ShiftedNestedRanges shifted(operation);
        RangeInfos ranges = makeRangesToEmpty(operation, getTombstones(info));
        ZEM_ASSERT_MESSAGE(
            fixBusinessLogicForRemoving(ranges, getBlocks(info)) == BusinessLogicValidationResult::Valid,
            "fixBusinessLogicForRemoving(removeData, textWithTombstonesInfo.textWithTombstonesAdapter) == "
            "BusinessLogicValidationResult::Valid");
        failure = applyRemoval(info, ranges, SlotsChange::Remove);
        giveDataBack<InsertTag>(std::move(ranges));
    }
    Utils::clearCellIfNeeded(getDomAdapter(), info._nativeAddress);
    rethrow(failure);
}

template<class Tag>
bool TextWithTombstonesOperationExecutor::markDataAsRemoved(
    ListMultirangeOperationImpl<ListModificationOperation<Tag>>& operation, OperationUPtr& changedOp)
{
    TextWithTombstonesInfo info = getTextWithTombstonesInfo(getDomAdapter(), operation.getNodeAddress());
    RangeInfos ranges = makeRangesToEmpty(operation, getTombstones(info));
    if (TextBusinessRules::isInvalid(fixBusinessLogicForRemoving(ranges, getBlocks(info))))
    {
        return refuse(changedOp);
    }
    const std::exception_ptr failure = applyRemoval(info, ranges, SlotsChange::MarkAsRemoved);
    giveDataBack<Tag>(std::move(ranges));
    rethrow(failure);
    return false;
}

template<class Tag>
bool TextWithTombstonesOperationExecutor::restoreData(
    ListMultirangeOperationImpl<ListModificationOperation<Tag>>& operation, OperationUPtr& changedOp)
{
    TextWithTombstonesInfo info = getTextWithTombstonesInfo(getDomAdapter(), operation.getNodeAddress());
    if (!shouldChangeDom(info, getTypeOfAddedData(operation)))
    {
        return refuse(changedOp);
    }
    // A reversal puts back what was there, however deep that was.
    if constexpr (std::is_same_v<Tag, RestoreTag>)
    {
        if (isNestedTooDeeply(info._nativeAddress, operation))
        {
            return refuse(changedOp);
        }
    }
    RangeInfos ranges = makeRangesToFill(operation, getTombstones(info));
    requireTombstones(ranges, getTombstones(info));
    if (TextBusinessRules::isInvalid(fixBusinessLogicForRestoring(ranges, getBlocks(info))))
    {
        return refuse(changedOp);
    }
    rethrow(applyInsertion(info, ranges, SlotsChange::Restore));
    return false;
}

std::exception_ptr TextWithTombstonesOperationExecutor::applyInsertion(TextWithTombstonesInfo& info, RangeInfos& ranges,
                                                                       SlotsChange change)
{
    std::exception_ptr failure;
    const TextNotificationTarget target{info._nativeAddress, _observer, &failure};
    std::vector<InsertionData> data = takeDataApart(ranges);
    GenericTextWithTombstonesWrapper<false> wrapper(info.getAdapter().getOrCreateTextWithTombstones(), target);
    for (std::size_t index = 0; index < ranges.size(); ++index)
    {
        if (ranges[index].getSize() > 0)
        {
            insertElements(wrapper.getBlocks(), ranges[index], std::move(data[index]));
            changeSlots(wrapper.getTombstones(), ranges[index], change);
        }
    }
    return failure;
}

std::exception_ptr TextWithTombstonesOperationExecutor::applyRemoval(TextWithTombstonesInfo& info, RangeInfos& ranges,
                                                                     SlotsChange change)
{
    std::exception_ptr failure;
    const TextNotificationTarget target{info._nativeAddress, _observer, &failure};
    GenericTextWithTombstonesWrapper<false> wrapper(info.getAdapter().getOrCreateTextWithTombstones(), target);
    for (RangeInfo& range : ranges)
    {
        changeSlots(wrapper.getTombstones(), range, change);
        extractElements(wrapper.getBlocks(), range);
    }
    return failure;
}

} // namespace Zem::DOMCollaboration

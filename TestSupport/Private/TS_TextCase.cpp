#include "TS_TextCase.h"

#include "CE_SetPropertyOperation.h"
#include "DClb_DocumentOperationTransformer.h"
#include "DClb_NodeTypes.h"
#include "DOM_CheckInvariants.h"
#include "DOM_DocumentJson.h"

#include "Util_Cast.h"
#include "Util_Visitor.h"

#include <gtest/gtest.h>

namespace Zem::TestSupport
{

using namespace CollaborationEngine;
using DOMCollaboration::convertOperationNodeType;
using DOMCollaboration::OperationDOMNodeType;
using DOMCollaboration::TextWithTombstonesItems;

namespace
{

constexpr unsigned long textType = static_cast<unsigned long>(OperationDOMNodeType::TextWithTombstones);

template<class Tag>
OperationUPtr makeOperation(std::initializer_list<Piece> pieces)
{
    std::vector<ListModificationOperation<Tag>> nestedOperations;
    for (const Piece& piece : pieces)
    {
        nestedOperations.emplace_back(getTextAddress(), textType,
                                      makeSharedConst<TextWithTombstonesItems>(makeElements(piece._elements)),
                                      IndexRange<unsigned long>::fromCount(piece._slot, piece._elements.size()));
    }
    return std::make_unique<ListMultirangeOperationImpl<ListModificationOperation<Tag>>>(std::move(nestedOperations));
}

template<class Nested>
std::string printNested(const char* kind, const ListMultirangeOperationImpl<Nested>& operation)
{
    std::string line = kind;
    for (const Nested& nested : operation.getNestedOperations())
    {
        line += " " + std::to_string(nested.getRange().getBegin()) + ":";
        line += nested.getData() ? print(cast<TextWithTombstonesItems>(*nested.getData()).getCollection())
                                 : std::string(nested.getRange().getCount(), '.');
    }
    return line;
}

} // namespace

const OperationNodeAddress& getTextAddress()
{
    static const OperationNodeAddress address{OperationNodeAddress::FixedChunk(textType)};
    return address;
}

OperationUPtr insert(std::initializer_list<Piece> pieces)
{
    return makeOperation<InsertTag>(pieces);
}

OperationUPtr insert(unsigned long slot, std::string_view elements)
{
    return insert({Piece{slot, elements}});
}

OperationUPtr mark(std::initializer_list<Stretch> stretches)
{
    std::vector<ListModificationOperation<MarkAsRemovedTag>> nestedOperations;
    for (const Stretch& stretch : stretches)
    {
        nestedOperations.emplace_back(getTextAddress(), textType,
                                      IndexRange<unsigned long>(stretch._begin, stretch._end));
    }
    return std::make_unique<ListMultirangeOperationImpl<ListModificationOperation<MarkAsRemovedTag>>>(
        std::move(nestedOperations));
}

OperationUPtr mark(unsigned long begin, unsigned long end)
{
    return mark({Stretch{begin, end}});
}

OperationUPtr restore(std::initializer_list<Piece> pieces)
{
    return makeOperation<RestoreTag>(pieces);
}

OperationUPtr restore(unsigned long slot, std::string_view elements)
{
    return restore({Piece{slot, elements}});
}

std::string print(const Operation& operation)
{
    if (cast<EmptyOperation>(&operation))
    {
        return "empty";
    }
    return visitWith<std::string>(
        cast<ListMultirangeOperation>(operation),
        [](const ListMultirangeOperationImpl<ListModificationOperation<InsertTag>>& insertion)
        { return printNested("insert", insertion); },
        [](const ListMultirangeOperationImpl<ListModificationOperation<RemoveTag>>& removal)
        { return printNested("remove", removal); },
        [](const ListMultirangeOperationImpl<ListModificationOperation<MarkAsRemovedTag>>& marking)
        { return printNested("mark", marking); },
        [](const ListMultirangeOperationImpl<ListModificationOperation<RestoreTag>>& restoring)
        { return printNested("restore", restoring); },
        [](const ListMultirangeOperationImpl<ListLeaveTombstonesOperation>& leaving)
        { return printNested("leave", leaving); });
}

TextCase::TextCase(std::string_view notation)
    : _text(makeText(notation))
    , _mirror(std::make_shared<MirrorObserver>(
          _text, DOM::NodeAddressUtils::makeAddress<DOM::NativeDOMNodeType::BlockCollection>()))
{
    auto adapter = std::make_shared<DOMCollaboration::BlocksAdapterWithNodeAdapter>(
        _text, _document.getStyles(), nullptr, nullptr, nullptr, nullptr, _document.getSharedObjectFactory());
    _executor = std::make_unique<DOMCollaboration::DocumentOperationExecutor>(
        std::move(adapter), std::make_shared<DOMCollaboration::DocumentOperationTransformer>(), _mirror);
    checkText();
}

TextCase::~TextCase() = default;

TextCase& TextCase::after(OperationUPtr operation)
{
    const DOM::TextWithTombstones before = _text;
    OperationUPtr changedOp;
    _isChanged = _executor->executeAndChangeIfNeeded(*operation, changedOp);
    EXPECT_EQ(_isChanged, static_cast<bool>(changedOp));
    _happened = _isChanged ? std::move(changedOp) : std::move(operation);
    checkText();
    checkReversal(before);
    return *this;
}

TextCase& TextCase::is(std::string_view notation)
{
    EXPECT_EQ(normalize(notation), print(_text));
    return *this;
}

TextCase& TextCase::isUnchanged()
{
    EXPECT_FALSE(_isChanged) << "changed to " << print(*_happened);
    return *this;
}

TextCase& TextCase::isChangedTo(std::string_view operation)
{
    EXPECT_TRUE(_isChanged);
    EXPECT_EQ(operation, print(*_happened));
    return *this;
}

TextCase& TextCase::isRefused()
{
    return isChangedTo("empty");
}

void TextCase::checkReversal(const DOM::TextWithTombstones& before)
{
    const DOM::TextWithTombstones afterwards = _text;
    _executor->reverse(*_happened);
    EXPECT_TRUE(before == _text) << "taken back to " << print(_text) << ", not to " << print(before) << ": "
                                 << print(*_happened);
    checkText();
    OperationUPtr changedOp;
    EXPECT_FALSE(_executor->executeAndChangeIfNeeded(*_happened, changedOp)) << print(*changedOp);
    EXPECT_TRUE(afterwards == _text) << "done again to " << print(_text) << ", not to " << print(afterwards);
    checkText();
}

void TextCase::checkText() const
{
    EXPECT_EQ("", _mirror->findDifferences()) << print(_text);
    EXPECT_TRUE(DOM::checkInvariants(_text).empty()) << DOM::checkInvariants(_text).front();
    EXPECT_TRUE(DOM::textFromJson(DOM::toJson(_text)) == _text) << print(_text);
}

} // namespace Zem::TestSupport

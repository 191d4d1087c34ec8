#include "Sharing/CS_ContentAdmission.h"

#include "DClb_NodeTypes.h"
#include "DClb_PropertyValues.h"
#include "DClb_RowColumnProps.h"
#include "DOM_Blocks.h"
#include "DOM_CheckInvariants.h"
#include "DOM_Image.h"
#include "DOM_Runs.h"

#include "Util_BoolOpt.h"
#include "Util_Cast.h"
#include "Util_Fields.h"
#include "Util_UUIDable.h"

#include <cmath>
#include <map>
#include <type_traits>
#include <utility>

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;
using namespace DOMCollaboration;

namespace
{

template<class Style>
using LineProps = SimpleDataValue<RowColumnProps<DOM::SharedStyleConstIPtr<Style>>>;
using CellValue = SimpleDataValue<DOM::CellUPtr>;

template<class T>
concept HasLastEnumerator = requires(T value)
{
    getLastEnumerator(value);
};

} // namespace

/// Goes through one value and all that lies in it, by the lists of fields of its classes.
class ContentAdmission::Inspection
{
public:
    Inspection(const AdmissionLimits& limits, AdmissionBudget& budget)
        : _limits(limits)
        , _budget(budget)
        , _valueBytes(limits._valueBytes, OperationFault::ValueTooBig)
    {
    }

    // Numbers and the like.

    template<class T>
    requires std::is_enum_v<T>
    void inspect(const T& value)
    {
        static_assert(HasLastEnumerator<T>);
        spendBytes(sizeof(T));
        requireSound(value <= getLastEnumerator(value), OperationFault::InvalidEnumerator);
    }

    template<class T>
    requires std::is_arithmetic_v<T>
    void inspect(const T& value)
    {
        spendBytes(sizeof(T));
        if constexpr (std::is_floating_point_v<T>)
        {
            requireSound(std::isfinite(value), OperationFault::NumberNotFinite);
        }
    }

    template<class T, class Tag>
    void inspect(const TaggedValue<T, Tag>& value)
    {
        inspect(value.get());
    }

    void inspect(const UUID&)
    {
        spendBytes(sizeof(UUID));
    }

    void inspect(const BoolOpt&)
    {
        spendBytes(sizeof(BoolOpt));
    }

    void inspect(const CellIndex&)
    {
        spendBytes(sizeof(CellIndex));
    }

    void inspect(const TableRange& range)
    {
        spendBytes(sizeof(TableRange));
        const bool isIncreasing = range._beginRow < range._endRow && range._beginColumn < range._endColumn;
        requireSound(isIncreasing, OperationFault::BrokenContent);
    }

    void inspect(const std::string& text)
    {
        spendBytes(sizeof(std::string));
        spendBytes(text.size());
    }

    // What holds others.

    template<class T>
    void inspect(const boost::optional<T>& value)
    {
        spendBytes(1);
        if (value)
        {
            inspect(*value);
        }
    }

    template<class First, class Second>
    void inspect(const std::pair<First, Second>& pair)
    {
        inspect(pair.first);
        inspect(pair.second);
    }

    template<class T>
    void inspect(const std::vector<T>& values)
    {
        spendBytes(sizeof(std::vector<T>));
        for (const auto& value : values)
        {
            inspect(value);
        }
    }

    template<class Key, class Value>
    void inspect(const std::map<Key, Value>& values)
    {
        spendBytes(sizeof(std::map<Key, Value>));
        for (const auto& [key, value] : values)
        {
            inspect(key);
            inspect(value);
        }
    }

    template<class... Types>
    void inspect(const boost::variant<Types...>& value)
    {
        spendBytes(1);
        boost::apply_visitor([this](const auto& held) { this->inspect(held); }, value);
    }

    template<class T>
    void inspect(const std::shared_ptr<T>& pointer)
    {
        inspectIfThere(pointer.get());
    }

    template<class T>
    void inspect(const std::unique_ptr<T>& pointer)
    {
        inspectIfThere(pointer.get());
    }

    template<class T>
    void inspect(const boost::intrusive_ptr<T>& pointer)
    {
        inspectIfThere(pointer.get());
    }

    void inspect(const std::unique_ptr<DOM::Block>& block)
    {
        inspectNotNull(block.get());
    }

    void inspect(const std::unique_ptr<DOM::Run>& run)
    {
        inspectNotNull(run.get());
    }

    void inspect(const DOM::FrameUPtr& frame)
    {
        inspectNotNull(frame.get());
    }

    void inspect(const DOM::ConditionalFormatUPtr& format)
    {
        inspectNotNull(format.get());
    }

    template<class T>
    void inspect(const DOM::SharedStyle<T>& style)
    {
        inspect(style.get());
    }

    template<HasFields T>
    void inspect(const T& value)
    {
        spendBytes(1);
        forEachField<T>([&](const auto& row) { inspect(value.*row._member); });
    }

    void inspect(const DOM::GraphicalObject& object)
    {
        const auto* image = cast<DOM::Image>(&object);
        const auto* chart = cast<DOM::ChartSpace>(&object);
        requireSound(image || chart, OperationFault::BrokenContent);
        image ? inspect(*image) : inspect(*chart);
    }

    // Content of a document.

    void inspect(const DOM::Block& block)
    {
        _budget._elements.spend(1);
        DOM::visitBlock(
            block, [this](const DOM::Paragraph& paragraph) { inspectParagraph(paragraph); },
            [this](const DOM::Table& table) { inspectDeeper([&] { inspectTable(table); }); },
            [this](const DOM::SectionTag& tag) { inspect(tag.getSectionProps()); },
            [this](const DOM::Shape& shape) { inspectDeeper([&] { inspectShape(shape); }); },
            [this](const DOM::FieldBlock& field)
            { forEachField<DOM::FieldBlock>([&](const auto& row) { inspect(field.*row._member); }); });
    }

    void inspect(const DOM::Run& run)
    {
        _budget._elements.spend(1);
        inspect(run.getSharedStyle());
        DOM::visitRun(
            run, [this](const DOM::TextRun& text) { inspectText(text); }, [this](const DOM::TabRun&) { spendBytes(1); },
            [this](const DOM::BreakRun& lineBreak) { inspect(lineBreak.getType()); },
            [this](const DOM::DrawingRun& drawing) { inspect(drawing.getFrame()); },
            [this](const DOM::BookmarkRun& bookmark)
            {
                inspect(bookmark.getName());
                inspect(bookmark.getEdge());
            },
            [this](const DOM::FieldRun& field)
            {
                inspect(field.getType());
                inspect(field.getFormat());
            },
            [this](const DOM::AnchorRun& anchor) { inspect(anchor.getNoteUUID()); });
    }

    void inspect(const DOM::TextWithTombstones& text)
    {
        inspect(text.getBlocks());
        inspectTombstones(text.getTombstones());
        requireInvariants(text);
    }

    void inspect(const DOM::Cell& cell)
    {
        _budget._elements.spend(1);
        inspect(cell.getSharedStyle());
        const DOM::CellMergeProps& merge = cell.getMergeProps();
        inspect(merge);
        const bool isCountable =
            merge.getCapturedRowsCount() <= _limits._tableLines && merge.getCapturedColsCount() <= _limits._tableLines;
        requireSound(isCountable, OperationFault::IndexTooHigh);
        inspect(cell.getTextWithTombstones());
        if (const auto pivot = cell.getPivotTable())
        {
            inspect(*pivot);
        }
    }

private:
    template<class T>
    void inspectIfThere(const T* value)
    {
        spendBytes(sizeof(value));
        if (value)
        {
            inspect(*value);
        }
    }

    template<class T>
    void inspectNotNull(const T* value)
    {
        requireSound(value, OperationFault::MissingElement);
        inspectIfThere(value);
    }

    template<class Inspect>
    void inspectDeeper(const Inspect& inspectContent)
    {
        requireSound(_depth < _limits._contentDepth, OperationFault::ContentTooDeep);
        ++_depth;
        inspectContent();
        --_depth;
    }

    void inspectParagraph(const DOM::Paragraph& paragraph)
    {
        // Its mark.
        _budget._elements.spend(1);
        inspect(paragraph.getSharedStyle());
        inspect(paragraph.getSharedParaMarkStyle());
        inspect(paragraph.getNumRef());
        inspect(paragraph.getRuns());
    }

    void inspectText(const DOM::TextRun& run)
    {
        _budget._elements.spend(run.getText().size());
        inspect(run.getText());
    }

    void inspectShape(const DOM::Shape& shape)
    {
        inspect(shape.getGeometry());
        inspect(shape.getSize());
        inspect(shape.getTextWithTombstones());
    }

    void inspectTable(const DOM::Table& table)
    {
        const unsigned long rowsCount = table.getAllRowsCount().get();
        const unsigned long columnsCount = table.getAllColsCount().get();
        const bool isCountable = rowsCount <= _limits._tableLines && columnsCount <= _limits._tableLines;
        requireSound(isCountable, OperationFault::IndexTooHigh);
        _budget._elements.spend(rowsCount);
        _budget._elements.spend(columnsCount);
        inspect(table.getName());
        inspect(table.getSharedStyle());
        inspect(table.getFilterInfo());
        inspect(table.getHeaderRowsCols());
        inspect(table.getTableSettings());
        inspectCollection(table.getConditionalFormats());
        inspectCollection(table.getFrames());
        inspectLines<RowIndex>(table, table.getLiveRowsCount().get());
        inspectLines<ColumnIndex>(table, table.getLiveColsCount().get());
        inspectCells(table);
        requireSound(checkInvariants(table).empty(), OperationFault::BrokenContent);
    }

    template<class Collection>
    void inspectCollection(const Collection& collection)
    {
        inspect(collection.getElements());
        inspectTombstones(collection.getTombstones());
    }

    template<class Index>
    void inspectLines(const DOM::Table& table, unsigned long count)
    {
        for (unsigned long line = 0; line < count; ++line)
        {
            inspect(table.getSharedStyle(Index(line)));
        }
    }

    void inspectCells(const DOM::Table& table)
    {
        const RowIndex rowsCount(table.getLiveRowsCount().get());
        const ColumnIndex columnsCount(table.getLiveColsCount().get());
        if (table.getCellsCount() == 0)
        {
            return;
        }
        auto [cell, end] = table.getRangeIterators(TableRange(RowIndex(0), ColumnIndex(0), rowsCount, columnsCount));
        for (; !(cell == end); ++cell)
        {
            inspect(derefPtr(*cell));
        }
    }

    void inspectTombstones(const CollaborationUtils::TombstonesStorage& tombstones)
    {
        _budget._elements.spend(tombstones.getTombstonesCount());
    }

    /// Only of the outermost text, since that looks at those inside of it.
    void requireInvariants(const DOM::TextWithTombstones& text)
    {
        if (_depth <= 1)
        {
            requireSound(checkInvariants(text).empty(), OperationFault::BrokenContent);
        }
    }

    void spendBytes(unsigned long count)
    {
        _valueBytes.spend(count);
        _budget._bytes.spend(count);
    }

    const AdmissionLimits& _limits;
    AdmissionBudget& _budget;
    Allowance _valueBytes;
    unsigned long _depth = 0;
};

ContentAdmission::ContentAdmission(const AdmissionLimits& limits, AdmissionBudget& budget)
    : _limits(limits)
    , _budget(budget)
{
}

void ContentAdmission::requireProperty(unsigned long propertyId, const DataValue* value)
{
    requireSound(value, OperationFault::MissingData);
    const auto inspectAs = [&]<PropertyId id>(std::integral_constant<PropertyId, id>)
    {
        const auto* typed = cast<MapPropertyIdToSimpleDataValue<id>>(value);
        requireSound(typed, OperationFault::WrongData);
        Inspection(_limits, _budget).inspect(typed->getValue());
    };
    switch (static_cast<PropertyId>(propertyId))
    {
#define ZEM_INSPECT_PROPERTY(number, name, ...)                                                                        \
    case PropertyId::name:                                                                                             \
        return inspectAs(std::integral_constant<PropertyId, PropertyId::name>());
        ZEM_PROPERTIES(ZEM_INSPECT_PROPERTY)
#undef ZEM_INSPECT_PROPERTY
    }
    throw InvalidOperationError(OperationFault::UnknownProperty);
}

void ContentAdmission::requireLook(const DOM::SharedStyleConstIPtr<DOM::RunStyle>& look)
{
    Inspection(_limits, _budget).inspect(look);
}

void ContentAdmission::requireEntry(unsigned long nodeType, const DataValue* value)
{
    requireSound(value, OperationFault::MissingData);
    // Scripts are the entries that operations bring so far.
    const bool areScripts = nodeType == convertOperationNodeType(OperationDOMNodeType::ScriptCollection);
    const auto* script = areScripts ? cast<SimpleDataValue<std::string>>(value) : nullptr;
    requireSound(script, OperationFault::WrongData);
    Inspection(_limits, _budget).inspect(script->getValue());
}

void ContentAdmission::requireElements(const TextWithTombstonesElementVector& elements)
{
    for (const TextWithTombstonesElement& element : elements)
    {
        _budget._elements.spend(1);
        if (const auto* block = boost::get<SharedConstPtr<DOM::Block>>(&element))
        {
            requireSound(static_cast<bool>(*block), OperationFault::MissingElement);
            const auto* paragraph = cast<DOM::Paragraph>(block->get());
            requireSound(!paragraph || paragraph->getRuns().empty(), OperationFault::ElementWithChildren);
            Inspection(_limits, _budget).inspect(**block);
        }
        else if (const auto* run = boost::get<SharedConstPtr<DOM::Run>>(&element))
        {
            requireSound(static_cast<bool>(*run), OperationFault::MissingElement);
            const auto* text = cast<DOM::TextRun>(run->get());
            requireSound(!text || text->getText().empty(), OperationFault::ElementWithChildren);
            Inspection(_limits, _budget).inspect(**run);
        }
        else if (const auto* byte = boost::get<short>(&element))
        {
            requireSound(std::in_range<signed char>(*byte), OperationFault::InvalidByte);
        }
    }
    _budget._bytes.spend(elements.size() * sizeof(TextWithTombstonesElement));
}

void ContentAdmission::requireLineProps(const DataValue* props, RowTag)
{
    requireSound(props, OperationFault::MissingData);
    const auto* typed = cast<LineProps<DOM::RowStyle>>(props);
    requireSound(typed, OperationFault::WrongData);
    Inspection(_limits, _budget).inspect(typed->getValue().style);
}

void ContentAdmission::requireLineProps(const DataValue* props, ColumnTag)
{
    requireSound(props, OperationFault::MissingData);
    const auto* typed = cast<LineProps<DOM::ColumnStyle>>(props);
    requireSound(typed, OperationFault::WrongData);
    Inspection(_limits, _budget).inspect(typed->getValue().style);
}

void ContentAdmission::requireCell(const DataValue* cell)
{
    requireSound(cell, OperationFault::MissingData);
    const auto* typed = cast<CellValue>(cell);
    requireSound(typed, OperationFault::WrongData);
    Inspection(_limits, _budget).inspect(typed->getValue());
}

unsigned long getLineID(const DataValue& props)
{
    const auto* row = cast<LineProps<DOM::RowStyle>>(&props);
    return row ? row->getValue().id : cast<LineProps<DOM::ColumnStyle>>(props).getValue().id;
}

} // namespace Zem::CollaborationSession

#pragma once

/// Random values of properties, from few possibilities each, so that they are often equal, and clash.

#include "Random.h"

#include "CE_DataValue.h"
#include "DClb_PropertyValues.h"
#include "DOM_FieldBlock.h"
#include "DOM_Paragraph.h"
#include "DOM_ParagraphStyle.h"
#include "DOM_Run.h"
#include "DOM_RunStyle.h"

namespace ZemFarm
{

/// A property with the value that an element has, and a new one.
struct PropertyChange
{
    Zem::DOMCollaboration::PropertyId _property;
    Zem::SharedConstPtr<Zem::CollaborationEngine::DataValue> _oldValue;
    Zem::SharedConstPtr<Zem::CollaborationEngine::DataValue> _newValue;
};

template<Zem::DOMCollaboration::PropertyId id>
PropertyChange makeChange(Zem::DOMCollaboration::PropertyValueType<id> oldValue,
                          Zem::DOMCollaboration::PropertyValueType<id> newValue)
{
    using Value = Zem::DOMCollaboration::MapPropertyIdToSimpleDataValue<id>;
    return {id, Zem::makeSharedConst<Value>(std::move(oldValue)), Zem::makeSharedConst<Value>(std::move(newValue))};
}

/// Nil now and then.
Zem::UUID makeUUID(Random& random);

/// Null now and then, as all pointers here.
Zem::DOM::RunPropsConstPtr makeRunProps(Random& random);
Zem::DOM::ParaPropsConstPtr makeParaProps(Random& random);
Zem::DOM::HyperlinkConstPtr makeHyperlink(Random& random);

Zem::DOM::SectionProps makeSectionProps(Random& random);

/// A table of contents.
Zem::DOM::FieldBlock::FieldInfo makeContentsInfo(Random& random);

/// A formula or a value, for cells.
Zem::DOM::FieldBlock::FieldInfo makeCellInfo(Random& random);

Zem::DOM::RunStyle makeRunStyle(Random& random);
Zem::DOM::ParagraphStyle makeParagraphStyle(Random& random);

PropertyChange changeRun(Random& random, const Zem::DOM::Run& run);
PropertyChange changeParagraph(Random& random, const Zem::DOM::Paragraph& paragraph);
PropertyChange changeFieldBlock(Random& random, const Zem::DOM::FieldBlock& block);

/// A few words with characters of one byte and of several, without line breaks.
std::string makeWords(Random& random, unsigned long maxCharactersCount);

} // namespace ZemFarm

#pragma once

/// What one setting of a look means: a field of the properties of runs or paragraphs, and what it becomes. Everything
/// else stays as it is, so that two users who set different things of one word both get what they want.
///
///     LookChange::setField(&DOM::RunProps::_weight, DOM::FontWeight::Bold)
///     LookChange::clearField(&DOM::ParaProps::_alignment)
///     LookChange::setLink(nullptr)
///     LookChange::addComment(uuid)
///
/// Operations set whole values; a `LookChange` says which value an element gets in place of the one that it has.

#include "CE_DataValue.h"
#include "DClb_PropertyId.h"
#include "DOM_Hyperlink.h"
#include "DOM_ParaProps.h"
#include "DOM_RunProps.h"

#include "Util_Assert.h"
#include "Util_Export.h"
#include "Util_SharedConstPtr.h"
#include "Util_UUID.h"

#include <bitset>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace Zem::CollaborationSession
{

/// Fields of a property, by their rows in the list of fields of its bundle. Bundles are the properties of runs
/// (`RunPropertyId`, `ParagraphRunPropertyId`) and of paragraphs (`ParaPropertyId`). Every other property is one field,
/// that of row 0: a link, a parent, a numbering, and a tracked change, which belongs as a whole to the one who made it.
using LookFields = std::bitset<64>;

enum class LookChangeKind : unsigned char
{
    SetFields,
    AddComment,
    RemoveComment
};

/// Whose look it is. Properties of runs mean the mark of a paragraph.
enum class LookTarget : unsigned char
{
    Runs,
    Paragraphs
};

class ZEM_EXPORT LookChange
{
public:
    using PropertyId = DOMCollaboration::PropertyId;
    using Value = SharedConstPtr<CollaborationEngine::DataValue>;

    /// Sets fields of a property to what they are in `value`, of which nothing else counts; a field that has no value
    /// there is cleared. Where that leaves a bundle without any field set, it is null if `value` is.
    /// Fails: `InvalidEditError` for a property that neither a run nor a paragraph has, a value of another type than
    /// the property's, no field, and a field that the property hasn't.
    static LookChange setFields(PropertyId propertyId, const LookFields& fields, const Value& value);

    /// Sets those fields of a bundle that have a value in it. One that has none clears all fields. A property that is
    /// no bundle is set to `value`. Fails: as `setFields`.
    static LookChange setProperty(PropertyId propertyId, const Value& value);

    /// Sets a field of a bundle, that of the runs or paragraphs themselves if no property is named.
    /// Fails: as `setFields`.
    template<class Props, class Member, class FieldValue>
    static LookChange setField(Member Props::*member, FieldValue&& value)
    {
        return setField(getOwnPropertyId(static_cast<const Props*>(nullptr)), member, std::forward<FieldValue>(value));
    }

    template<class Props, class Member, class FieldValue>
    static LookChange setField(PropertyId propertyId, Member Props::*member, FieldValue&& value)
    {
        auto props = std::make_shared<Props>();
        props.get()->*member = Member(std::forward<FieldValue>(value));
        return setFieldsOf(propertyId, findField(member), std::move(props));
    }

    /// Takes a field of a bundle its value, so that it is inherited. Fails: as `setFields`.
    template<class Props, class Member>
    static LookChange clearField(Member Props::*member)
    {
        return clearField(getOwnPropertyId(static_cast<const Props*>(nullptr)), member);
    }

    template<class Props, class Member>
    static LookChange clearField(PropertyId propertyId, Member Props::*member)
    {
        return setFieldsOf(propertyId, findField(member), std::shared_ptr<const Props>());
    }

    /// Null for no link.
    static LookChange setLink(DOM::HyperlinkConstPtr link);

    /// Adds a comment to whatever comments there are, or takes one out. Lists stay in the order of ids, so that it
    /// makes no difference which comment came first.
    static LookChange addComment(const UUID& uuid);
    static LookChange removeComment(const UUID& uuid);

    LookChangeKind getKind() const
    {
        return _kind;
    }

    PropertyId getPropertyId() const
    {
        return _propertyId;
    }

    const LookFields& getFields() const
    {
        return _fields;
    }

    /// What the fields become; in a bundle, no other field is set. A list of the one comment to add or to remove.
    const Value& getValue() const
    {
        return _value;
    }

    /// The names of the fields, in their order; none if the property is no bundle.
    std::vector<std::string_view> getFieldNames() const;

    /// The opposite of `getFieldNames`. Fails: `InvalidEditError` for a name that the property has no field of.
    static LookFields findFields(PropertyId propertyId, const std::vector<std::string>& names);

    /// What becomes of a value of the property. Fails: `std::bad_cast` for a value of another type, as `holds`.
    Value apply(const CollaborationEngine::DataValue& current) const;

    /// Whether the change is there already. `holds(*apply(current))` is true of every value without a NaN in it.
    bool holds(const CollaborationEngine::DataValue& current) const;

    /// Whether both set some field. Different comments are different fields; a whole list of comments is all of them.
    bool setsSameFieldAs(const LookChange& other) const;

    /// The part of this change that sets what `other` sets, too, or that sets what `other` doesn't. Empty if there is
    /// none. A list of comments isn't parted.
    std::optional<LookChange> getPartAlsoSetBy(const LookChange& other) const;
    std::optional<LookChange> getPartNotSetBy(const LookChange& other) const;

    /// The change that sets the fields of this one back to what they are in `oldValue`, a value of the property.
    /// Fails: as `setFields`; `std::bad_cast` for a list of comments that isn't one.
    LookChange makeReversal(const Value& oldValue) const;

    /// By content. A null bundle and one without any field set differ.
    friend ZEM_EXPORT bool operator==(const LookChange& left, const LookChange& right);

private:
    LookChange(LookChangeKind kind, PropertyId propertyId, const LookFields& fields, Value value);

    static constexpr PropertyId getOwnPropertyId(const DOM::RunProps*)
    {
        return PropertyId::RunPropertyId;
    }

    static constexpr PropertyId getOwnPropertyId(const DOM::ParaProps*)
    {
        return PropertyId::ParaPropertyId;
    }

    template<class Props, class Member>
    static LookFields findField(Member Props::*member)
    {
        LookFields fields;
        std::size_t row = 0;
        forEachField<Props>(
            [&](const auto& candidate)
            {
                if constexpr (std::is_same_v<std::remove_cvref_t<decltype(candidate._member)>, Member Props::*>)
                {
                    fields.set(row, candidate._member == member);
                }
                ++row;
            });
        ZEM_ASSERT(fields.any());
        return fields;
    }

    static LookChange setFieldsOf(PropertyId propertyId, const LookFields& fields, DOM::RunPropsConstPtr props);
    static LookChange setFieldsOf(PropertyId propertyId, const LookFields& fields, DOM::ParaPropsConstPtr props);
    static LookChange makeCommentChange(LookChangeKind kind, const UUID& uuid);

    std::optional<LookChange> getPart(const LookFields& fields) const;
    bool isOfOneComment() const;

    LookChangeKind _kind;
    PropertyId _propertyId;
    LookFields _fields;
    Value _value;
};

} // namespace Zem::CollaborationSession

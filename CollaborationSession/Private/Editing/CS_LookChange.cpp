#include "Editing/CS_LookChange.h"

#include "Editing/CS_InvalidEditError.h"
#include "Editing/CS_StyleProperties.h"

#include <algorithm>

namespace Zem::CollaborationSession
{

using CollaborationEngine::DataValue;
using CollaborationEngine::getSimpleDataValue;
using CollaborationEngine::SimpleDataValue;
using DOMCollaboration::PropertyId;
using Comments = std::vector<UUID>;

namespace
{

template<class Value>
SharedConstPtr<DataValue> makeValue(Value value)
{
    return makeSharedConst<SimpleDataValue<Value>>(std::move(value));
}

/// Calls `onBundle` with the bundle that a value holds, or `onOther` if it holds something else.
template<class OnBundle, class OnOther>
auto visitBundle(const DataValue& value, OnBundle onBundle, OnOther onOther)
{
    if (const auto* runProps = cast<SimpleDataValue<DOM::RunPropsConstPtr>>(&value))
    {
        return onBundle(runProps->getValue());
    }
    if (const auto* paraProps = cast<SimpleDataValue<DOM::ParaPropsConstPtr>>(&value))
    {
        return onBundle(paraProps->getValue());
    }
    return onOther();
}

/// The class of the bundle that a pointer points at.
template<class PropsConstPtr>
using PropsOf = std::remove_const_t<typename PropsConstPtr::element_type>;

/// Calls `callable` with the number of each row of the bundle's list, and with the row.
template<class Props, class Callable>
void forEachRow(Callable callable)
{
    std::size_t number = 0;
    forEachField<Props>([&](const auto& row) { callable(number++, row); });
}

template<class Props>
LookFields getAllFields()
{
    LookFields fields;
    forEachRow<Props>([&](std::size_t number, const auto&) { fields.set(number); });
    return fields;
}

template<class PropsConstPtr>
LookFields getFieldsWithValue(const PropsConstPtr& props)
{
    LookFields fields;
    if (props)
    {
        forEachRow<PropsOf<PropsConstPtr>>([&](std::size_t number, const auto& row)
                                           { fields.set(number, static_cast<bool>(props.get()->*(row._member))); });
    }
    return fields;
}

/// `current` with `fields` as they are in `changed`. Null counts as properties with no field set.
template<class PropsConstPtr>
PropsConstPtr setFieldsIn(const PropsConstPtr& current, const PropsConstPtr& changed, const LookFields& fields)
{
    using Props = PropsOf<PropsConstPtr>;
    const Props defaults{};
    const Props& source = changed ? *changed : defaults;
    auto result = std::make_shared<Props>(current ? *current : defaults);
    forEachRow<Props>(
        [&](std::size_t number, const auto& row)
        {
            if (fields.test(number))
            {
                result.get()->*(row._member) = source.*(row._member);
            }
        });
    return changed || getFieldsWithValue(result).any() ? result : nullptr;
}

/// The bundle without what isn't one of `fields`.
template<class PropsConstPtr>
PropsConstPtr keepFields(const PropsConstPtr& props, const LookFields& fields)
{
    const bool isKeptWhole = (getFieldsWithValue(props) & ~fields).none();
    return isKeptWhole ? props : setFieldsIn(PropsConstPtr(), props, fields);
}

template<class PropsConstPtr>
bool areFieldsEqual(const PropsConstPtr& left, const PropsConstPtr& right, const LookFields& fields)
{
    using Props = PropsOf<PropsConstPtr>;
    const Props defaults{};
    bool areEqual = true;
    forEachRow<Props>(
        [&](std::size_t number, const auto& row)
        {
            areEqual = areEqual && (!fields.test(number) || areDeeplyEqual((left ? *left : defaults).*(row._member),
                                                                           (right ? *right : defaults).*(row._member)));
        });
    return areEqual;
}

LookFields getAllFields(const DataValue& value)
{
    return visitBundle(
        value, []<class PropsConstPtr>(const PropsConstPtr&) { return getAllFields<PropsOf<PropsConstPtr>>(); },
        [] { return LookFields(1); });
}

/// Also says whether a property is one of a look at all: all of these are properties of paragraphs.
SharedConstPtr<DataValue> getDefaultValue(PropertyId propertyId)
{
    return getParagraphProperty(DOM::Paragraph(), propertyId);
}

bool hasComment(const DataValue& comments, const UUID& uuid)
{
    const Comments& list = getSimpleDataValue<Comments>(comments);
    return std::find(list.begin(), list.end(), uuid) != list.end();
}

} // namespace

LookChange::LookChange(LookChangeKind kind, PropertyId propertyId, const LookFields& fields, Value value)
    : _kind(kind)
    , _propertyId(propertyId)
    , _fields(fields)
    , _value(std::move(value))
{
}

LookChange LookChange::setFields(PropertyId propertyId, const LookFields& fields, const Value& value)
{
    requireSameType(value, *getDefaultValue(propertyId));
    if (fields.none() || (fields & ~getAllFields(*value)).any())
    {
        throw InvalidEditError("Property " + std::to_string(DOMCollaboration::convertPropertyId(propertyId)) +
                               " hasn't the fields to set");
    }
    Value kept = visitBundle(
        *value, [&](const auto& props) { return makeValue(keepFields(props, fields)); }, [&] { return value; });
    return LookChange(LookChangeKind::SetFields, propertyId, fields, std::move(kept));
}

LookChange LookChange::setProperty(PropertyId propertyId, const Value& value)
{
    requireSameType(value, *getDefaultValue(propertyId));
    const LookFields fields = visitBundle(
        *value, [](const auto& props) { return getFieldsWithValue(props); }, [] { return LookFields(1); });
    return setFields(propertyId, fields.any() ? fields : getAllFields(*value), value);
}

LookChange LookChange::setFieldsOf(PropertyId propertyId, const LookFields& fields, DOM::RunPropsConstPtr props)
{
    return setFields(propertyId, fields, makeValue(std::move(props)));
}

LookChange LookChange::setFieldsOf(PropertyId propertyId, const LookFields& fields, DOM::ParaPropsConstPtr props)
{
    return setFields(propertyId, fields, makeValue(std::move(props)));
}

LookChange LookChange::setLink(DOM::HyperlinkConstPtr link)
{
    return setProperty(PropertyId::HyperlinkId, makeValue(std::move(link)));
}

LookChange LookChange::addComment(const UUID& uuid)
{
    return makeCommentChange(LookChangeKind::AddComment, uuid);
}

LookChange LookChange::removeComment(const UUID& uuid)
{
    return makeCommentChange(LookChangeKind::RemoveComment, uuid);
}

LookChange LookChange::makeCommentChange(LookChangeKind kind, const UUID& uuid)
{
    return LookChange(kind, PropertyId::CommentUUIDsId, LookFields(1), makeValue(Comments{uuid}));
}

std::vector<std::string_view> LookChange::getFieldNames() const
{
    std::vector<std::string_view> names;
    visitBundle(
        *_value,
        [&]<class PropsConstPtr>(const PropsConstPtr&)
        {
            forEachRow<PropsOf<PropsConstPtr>>(
                [&](std::size_t number, const auto& row)
                {
                    if (_fields.test(number))
                    {
                        names.push_back(row._name);
                    }
                });
        },
        [] {});
    return names;
}

LookFields LookChange::findFields(PropertyId propertyId, const std::vector<std::string>& names)
{
    const Value value = getDefaultValue(propertyId);
    const LookChange whole(LookChangeKind::SetFields, propertyId, getAllFields(*value), value);
    const std::vector<std::string_view> allNames = whole.getFieldNames();
    if (allNames.empty() && names.empty())
    {
        return whole._fields;
    }
    LookFields fields;
    for (const std::string& name : names)
    {
        const auto found = std::find(allNames.begin(), allNames.end(), name);
        if (found == allNames.end())
        {
            throw InvalidEditError("Property " + std::to_string(DOMCollaboration::convertPropertyId(propertyId)) +
                                   " has no field \"" + name + '"');
        }
        fields.set(static_cast<std::size_t>(found - allNames.begin()));
    }
    return fields;
}

LookChange::Value LookChange::apply(const DataValue& current) const
{
    if (!isOfOneComment())
    {
        return visitBundle(
            *_value,
            [&]<class PropsConstPtr>(const PropsConstPtr& changed)
            { return makeValue(setFieldsIn(getSimpleDataValue<PropsConstPtr>(current), changed, _fields)); },
            [&] { return _value; });
    }
    Comments comments = getSimpleDataValue<Comments>(current);
    const UUID& uuid = getSimpleDataValue<Comments>(*_value).front();
    std::erase(comments, uuid);
    if (_kind == LookChangeKind::AddComment)
    {
        const auto isBehind = [&](const UUID& comment) { return uuid < comment; };
        comments.insert(std::find_if(comments.begin(), comments.end(), isBehind), uuid);
    }
    return makeValue(std::move(comments));
}

bool LookChange::holds(const DataValue& current) const
{
    if (isOfOneComment())
    {
        const bool isThere = hasComment(current, getSimpleDataValue<Comments>(*_value).front());
        return isThere == (_kind == LookChangeKind::AddComment);
    }
    if (_fields == getAllFields(*_value))
    {
        return *_value == current;
    }
    return visitBundle(
        *_value,
        [&]<class PropsConstPtr>(const PropsConstPtr& changed)
        { return areFieldsEqual(getSimpleDataValue<PropsConstPtr>(current), changed, _fields); },
        [] { return false; });
}

bool LookChange::setsSameFieldAs(const LookChange& other) const
{
    const bool areOfOneComment = isOfOneComment() && other.isOfOneComment();
    return _propertyId == other._propertyId && (_fields & other._fields).any() &&
           (!areOfOneComment || *_value == *other._value);
}

std::optional<LookChange> LookChange::getPartAlsoSetBy(const LookChange& other) const
{
    return setsSameFieldAs(other) ? getPart(_fields & other._fields) : std::nullopt;
}

std::optional<LookChange> LookChange::getPartNotSetBy(const LookChange& other) const
{
    return setsSameFieldAs(other) ? getPart(_fields & ~other._fields) : *this;
}

std::optional<LookChange> LookChange::getPart(const LookFields& fields) const
{
    if (fields.none())
    {
        return std::nullopt;
    }
    return fields == _fields ? *this : setFields(_propertyId, fields, _value);
}

LookChange LookChange::makeReversal(const Value& oldValue) const
{
    if (!isOfOneComment())
    {
        return setFields(_propertyId, _fields, oldValue);
    }
    const UUID& uuid = getSimpleDataValue<Comments>(*_value).front();
    return hasComment(*oldValue, uuid) ? addComment(uuid) : removeComment(uuid);
}

bool LookChange::isOfOneComment() const
{
    return _kind != LookChangeKind::SetFields;
}

bool operator==(const LookChange& left, const LookChange& right)
{
    return left._kind == right._kind && left._propertyId == right._propertyId && left._fields == right._fields &&
           *left._value == *right._value;
}

} // namespace Zem::CollaborationSession

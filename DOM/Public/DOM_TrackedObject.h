#pragma once

/// Tracked changes: who changed something, when, and what.

#include "DOM_TimeZone.h"

#include "Util_Export.h"
#include "Util_TaggedValue.h"
#include "Util_TypeList.h"
#include "Util_UUID.h"

#include <boost/optional.hpp>

#include <memory>
#include <string>
#include <utility>

namespace Zem::DOM
{

/// What a tracked change did to a stretch of text; `None` once the change is settled.
enum class TrackChangesType : unsigned char
{
    None,
    Insertion,
    Deletion,
    MoveFrom,
    MoveTo
};

constexpr TrackChangesType getLastEnumerator(TrackChangesType)
{
    return TrackChangesType::MoveTo;
}

/// A user as others see them.
class ZEM_EXPORT UserInfo
{
public:
    UserInfo() = default;

    UserInfo(std::string name, std::string email)
        : _name(std::move(name))
        , _email(std::move(email))
    {
    }

    const std::string& getName() const
    {
        return _name;
    }

    const std::string& getEmail() const
    {
        return _email;
    }

    static constexpr auto fields()
    {
        return std::make_tuple(field("_name", &UserInfo::_name), field("_email", &UserInfo::_email));
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    std::string _name;
    std::string _email;
};

struct DateTimeTag
{
};

using Year = TaggedValue<unsigned short, TypeUtils::ValueTag<DateTimeTag, 0>>;
using Month = TaggedValue<unsigned char, TypeUtils::ValueTag<DateTimeTag, 1>>;
using Day = TaggedValue<unsigned char, TypeUtils::ValueTag<DateTimeTag, 2>>;
using Hours = TaggedValue<unsigned char, TypeUtils::ValueTag<DateTimeTag, 3>>;
using Minutes = TaggedValue<unsigned char, TypeUtils::ValueTag<DateTimeTag, 4>>;
using Seconds = TaggedValue<unsigned char, TypeUtils::ValueTag<DateTimeTag, 5>>;

/// A moment as the clock of its time zone shows it. Months and days count from 1.
struct ZEM_EXPORT DateTime
{
    Year _year{1970};
    Month _month{1};
    Day _day{1};
    Hours _hours;
    Minutes _minutes;
    Seconds _seconds;
    TimeZone _timeZone;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_year", &DateTime::_year), field("_month", &DateTime::_month),
                               field("_day", &DateTime::_day), field("_hours", &DateTime::_hours),
                               field("_minutes", &DateTime::_minutes), field("_seconds", &DateTime::_seconds),
                               field("_timeZone", &DateTime::_timeZone));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

/// Who made a change, and when.
struct ZEM_EXPORT TrackChangesInfo
{
    boost::optional<UserInfo> _userInfo;
    boost::optional<DateTime> _dateTime;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_userInfo", &TrackChangesInfo::_userInfo),
                               field("_dateTime", &TrackChangesInfo::_dateTime));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

/// A value with its tracked change, such as the properties that a stretch of text had before somebody changed them.
template<class T>
struct TrackedObject
{
    TrackedObject() = default;

    explicit TrackedObject(T value, boost::optional<TrackChangesInfo> info = TrackChangesInfo())
        : _info(std::move(info))
        , _value(std::move(value))
    {
    }

    boost::optional<TrackChangesInfo> _info = TrackChangesInfo();
    T _value{};

    static constexpr auto fields()
    {
        return std::make_tuple(field("_info", &TrackedObject::_info), field("_value", &TrackedObject::_value));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

using TrackedActionConstPtr = std::shared_ptr<const TrackedObject<TrackChangesType>>;
using TrackedTextStyleConstPtr = std::shared_ptr<const TrackedObject<UUID>>;

} // namespace Zem::DOM

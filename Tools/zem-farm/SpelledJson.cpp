#include "SpelledJson.h"

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <map>
#include <stdexcept>

namespace ZemFarm
{

namespace
{

using Value = rapidjson::Value;
using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

/// Set in the id where what it stands for follows.
constexpr unsigned int firstTime = 0x80000000U;

/// Writes a value again. An object that has an "id" stands for what is in its other members, or was in those of the
/// first one with this id; 0 stands for nothing.
class Speller
{
public:
    std::string spell(const Value& value)
    {
        write(value);
        return {_buffer.GetString(), _buffer.GetSize()};
    }

private:
    void write(const Value& value)
    {
        if (value.IsArray())
        {
            _writer.StartArray();
            for (const Value& element : value.GetArray())
            {
                write(element);
            }
            _writer.EndArray();
        }
        else if (value.IsObject())
        {
            const auto id = value.FindMember("id");
            writeMembers(id != value.MemberEnd() && id->value.IsUint() ? resolve(value, id->value.GetUint()) : value);
        }
        else
        {
            value.Accept(_writer);
        }
    }

    const Value& resolve(const Value& value, unsigned int id)
    {
        if ((id & firstTime) != 0)
        {
            _shared[id & ~firstTime] = &value;
            return value;
        }
        if (id == 0)
        {
            return value;
        }
        const auto found = _shared.find(id);
        if (found == _shared.end())
        {
            throw std::runtime_error("the JSON of a document refers to nothing by the id " + std::to_string(id));
        }
        return *found->second;
    }

    void writeMembers(const Value& value)
    {
        _writer.StartObject();
        for (const auto& member : value.GetObject())
        {
            if (member.name != "id")
            {
                member.name.Accept(_writer);
                write(member.value);
            }
        }
        _writer.EndObject();
    }

    rapidjson::StringBuffer _buffer;
    Writer _writer{_buffer};
    std::map<unsigned int, const Value*> _shared;
};

} // namespace

std::string spellOut(const std::string& json)
{
    rapidjson::Document document;
    document.Parse(json.data(), json.size());
    if (document.HasParseError())
    {
        throw std::runtime_error("the JSON of a document can't be read at byte " +
                                 std::to_string(document.GetErrorOffset()));
    }
    return Speller().spell(document);
}

} // namespace ZemFarm

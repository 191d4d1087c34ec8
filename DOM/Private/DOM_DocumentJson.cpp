#include "DOM_DocumentJson.h"
#include "DOM_InterningArchive.h"
#include "DOM_Json.h"
#include "DOM_Table.h"

#include "Util_JsonText.h"

#include <sstream>

namespace Zem::DOM
{

ZEM_JSON_OF_FIELDS(Scripts)
ZEM_JSON_OF_FIELDS(Theme)
ZEM_JSON_OF_FIELDS(ColorMap)
ZEM_JSON_OF_FIELDS(Document)

namespace
{

/// Writes equal values alike.
template<class T>
std::string toEqualJson(const T& value)
{
    return dropSignsOfZeros(Zem::toJson<T, JsonDetails::InterningOutputArchive>(value));
}

} // namespace

std::string toJson(const Document& document)
{
    return toEqualJson(document);
}

Document fromJson(std::string_view text)
{
    std::istringstream stream(Zem::JsonDetails::makeOnlyMember(text));
    Document document;
    JsonDetails::InterningInputArchive archive(stream, document.getSharedObjectFactory());
    archive(document);
    return document;
}

std::string toJson(const TextWithTombstones& text)
{
    return toEqualJson(text);
}

TextWithTombstones textFromJson(std::string_view text)
{
    return Zem::fromJson<TextWithTombstones>(text);
}

std::string toJson(const Table& table)
{
    return toEqualJson(table);
}

Table tableFromJson(std::string_view text)
{
    return Zem::fromJson<Table>(text);
}

} // namespace Zem::DOM

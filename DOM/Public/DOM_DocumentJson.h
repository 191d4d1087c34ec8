#pragma once

/// Documents and their parts as JSON text.

#include "DOM_Document.h"

#include "Util_Export.h"

#include <string>
#include <string_view>

namespace Zem::DOM
{

class Table;

/// In one line. Equal documents may differ in it: a style or bundle of properties that several elements share stands in
/// it once, equal ones that they do not share stand in it each.
/// Fails: `std::runtime_error` on a document whose texts lie so deep in each other that it couldn't be read.
ZEM_EXPORT std::string toJson(const Document& document);

/// Equal styles of the document become one object, made by its own factory.
/// Fails: `std::runtime_error`, quoting what is wrong, on a text that isn't a document's form, or whose document would
/// break an invariant; "_begin < _end" on a range of tombstones that doesn't increase.
ZEM_EXPORT Document fromJson(std::string_view text);

/// The same for a part of a document. Its styles are shared within the part as they were when it was written, and
/// belong to no factory.
ZEM_EXPORT std::string toJson(const TextWithTombstones& text);
ZEM_EXPORT TextWithTombstones textFromJson(std::string_view text);
ZEM_EXPORT std::string toJson(const Table& table);
ZEM_EXPORT Table tableFromJson(std::string_view text);

} // namespace Zem::DOM

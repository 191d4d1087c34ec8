#pragma once

/// Documents and their parts as JSON text.

#include "DOM_Document.h"

#include "Util_Export.h"

#include <string>
#include <string_view>

namespace Zem::DOM
{

class Table;

/// In one line. Equal documents have equal JSON, byte for byte: a style or bundle of properties stands in it once, even
/// if several equal objects hold it, and what equals nothing, such as a default style, is written as nothing.
/// Cost: beside the writing, the content of each shared object is hashed and compared once, however often it is met.
/// Fails: `std::runtime_error` on a document whose texts lie so deep in each other that it couldn't be read.
ZEM_EXPORT std::string toJson(const Document& document);

/// Equal styles of the document become one object, made by its own factory.
/// Fails: `std::runtime_error`, quoting what is wrong, on a text that isn't a document's form, or whose document would
/// break an invariant; "_begin < _end" on a range of tombstones that doesn't increase.
ZEM_EXPORT Document fromJson(std::string_view text);

/// The same for a part of a document. What is read shares its styles as the text does; they belong to no factory.
ZEM_EXPORT std::string toJson(const TextWithTombstones& text);
ZEM_EXPORT TextWithTombstones textFromJson(std::string_view text);
ZEM_EXPORT std::string toJson(const Table& table);
ZEM_EXPORT Table tableFromJson(std::string_view text);

} // namespace Zem::DOM

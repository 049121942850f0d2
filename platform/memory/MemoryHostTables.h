// The host's tables, queries and document selection of the in-memory stand-in.
#pragma once

#include <string_view>

#include "platform/memory/MemoryHost.h"

namespace qva {

/// The table of a book: "Book", "GLAccountSet" and "REFBankAccountRole" (which is empty) are there; null for
/// any other name.
ObjectPtr MakeHostTable(MemoryHost& host, std::u16string_view book_code, std::u16string_view name);

/// The query, condition-builder and document-selection objects by their programmatic identifiers; null for
/// any other one.
ObjectPtr MakeHostQueryObject(MemoryHost& host, std::u16string_view programmatic_identifier);

}  // namespace qva

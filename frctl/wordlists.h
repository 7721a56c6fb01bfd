#pragma once

#include "namedvalue.h"

#include <QString>

#include <span>

namespace frctl {

/// One of the tables of words that a receipt may have.
struct WordList
{
    /// "taxes"
    const char* name;
    /// The field that takes the words: "items[].tax.type".
    const char* field;
    /// Where the schema of the receipts tells what they mean.
    const char* definition;
    /// The parser's own table.
    std::span<const receipt::NamedValue> (*words)();
};

std::span<const WordList> wordLists();
/// What the schema says of a word; empty for one that it does not allow.
QString meaningOf(const WordList& list, const receipt::NamedValue& word);

} // namespace frctl

// What the texts of a firm are like: most as anybody writes them, some as somebody does in the end. Quotes, scripts of
// all kinds, blanks at the ends, columns that are full to the last character, and nothing at all.
//
// Lengths are in characters.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "samples/firm/Dice.h"
#include "samples/firm/Rows.h"

namespace twqb::firm {

// The text in some shape, cut to what the column holds; never blank, and no blanks at its ends.
[[nodiscard]] std::string SomeText(Dice& dice, std::string_view text, std::size_t longest);
// The same, or NULL, empty, blanks alone, or with blanks at the ends.
[[nodiscard]] Text AnyText(Dice& dice, std::string_view text, std::size_t longest);
// The same for what runs over several lines.
[[nodiscard]] Text AnyMemo(Dice& dice, std::string_view text);

// People, places, work. Never empty; whoever has a column for them cuts them to it.
[[nodiscard]] std::string FirstName(Dice& dice);
[[nodiscard]] std::string LastName(Dice& dice);
[[nodiscard]] std::string CompanyWords(Dice& dice);
[[nodiscard]] std::string Street(Dice& dice);
[[nodiscard]] std::string City(Dice& dice);
[[nodiscard]] std::string PostalCode(Dice& dice);
[[nodiscard]] std::string Task(Dice& dice);
[[nodiscard]] std::string Place(Dice& dice);
// As BillingDb has it: any country's, or none.
[[nodiscard]] Text State(Dice& dice);
[[nodiscard]] Text Salutation(Dice& dice);
// In one of the ways in which people write them; at most 30 characters, with more digits or fewer than it should have.
[[nodiscard]] Text Phone(Dice& dice);

// Of a tax, in hundredths of a percent; of most there is none, for what taxes come to stands on the invoice.
[[nodiscard]] std::int64_t AnyTaxRate(Dice& dice);

// A key of BillingDb: capitals out of the text, and the number, which makes it the only one of its kind.
[[nodiscard]] std::string KeyOf(std::string_view text, std::int64_t number);

}  // namespace twqb::firm

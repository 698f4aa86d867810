#include "samples/firm/Shapes.h"

#include <fmt/format.h>

#include <array>
#include <cctype>

#include "platform/Text.h"

namespace twqb::firm {

namespace {

using Words = std::string_view;

constexpr std::array kFirstNames = {
    Words("Ann"),    Words("Ben"),      Words("Céline"), Words("Dale"), Words("Ewa"),   Words("Françoise"),
    Words("George"), Words("Hà"),       Words("Ian"),    Words("João"), Words("Karin"), Words("Lou"),
    Words("Maud"),   Words("Noël"),     Words("Ola"),    Words("Per"),  Words("Rui"),   Words("Søren"),
    Words("Tess"),   Words("Ulla-Maj"), Words("Vera"),   Words("Wim"),  Words("Ольга"), Words("直美")};
constexpr std::array kLastNames = {
    Words("Abbott"), Words("Bell"),   Words("Côté"),    Words("Dubois"),       Words("Evans"), Words("Foss"),
    Words("Grant"),  Words("Hale"),   Words("Ives"),    Words("Jørgensen"),    Words("Kane"),  Words("Lee"),
    Words("Mori"),   Words("Nguyễn"), Words("O'Brien"), Words("Öström"),       Words("Park"),  Words("Quist"),
    Words("Reyes"),  Words("Santos"), Words("Trask"),   Words("van der Meer"), Words("Yoder"), Words("渡辺")};
constexpr std::array kTrades = {Words("Concrete"), Words("Marina"),  Words("Bottling"), Words("Timber"),
                                Words("Orchards"), Words("Dental"),  Words("Title"),    Words("Bakery"),
                                Words("Realty"),   Words("Masonry"), Words("Quarry"),   Words("Église Saint-Luc"),
                                Words("Gewürze"),  Words("Верфь"),   Words("造園")};
constexpr std::array kForms = {Words("Inc."), Words("& Sons"), Words("LLC"),   Words("Partners"),
                               Words("Co."),  Words("GmbH"),   Words("Trust"), Words("of New England")};
constexpr std::array kStreets = {Words("Harbor Road"),     Words("Quay Street"), Words("Saint John's Street"),
                                 Words("rue des Érables"), Words("Åvägen"),      Words("Farm to Market Road"),
                                 Words("Elm Court")};
constexpr std::array kCities = {Words("Portland"), Words("Camden"),  Words("St. Johnsbury"),    Words("Lévis"),
                                Words("Göteborg"), Words("Kittery"), Words("West Springfield"), Words("仙台市")};
constexpr std::array kPostalCodes = {Words("04101"),  Words("03801-4455"), Words("G6V 3A1"),
                                     Words("412 50"), Words("SW1A 1AA"),   Words("980-0014")};
constexpr std::array kTasks = {Words("Boundary survey"),
                               Words("Wind on the deck"),
                               Words("Cross sections"),
                               Words("Registry of deeds"),
                               Words("Review of the owner's drawings"),
                               Words("Pile loads"),
                               Words("Levels"),
                               Words("Délimitation, deux bornes"),
                               Words("Report, first draft"),
                               Words("Called on the town's engineer"),
                               Words("Stone walls"),
                               Words("Проверка")};
constexpr std::array kPlaces = {Words("Pier"),    Words("Roof"),
                                Words("Culvert"), Words("Depot"),
                                Words("Lobby"),   Words("Bridge over the Saco"),
                                Words("École"),   Words("North Yard"),
                                Words("Mill"),    Words("Water tower No. 2"),
                                Words("駅前")};
constexpr std::array kStates = {Words("ME"),
                                Words("NH"),
                                Words("MA"),
                                Words("QC"),
                                Words("Kent"),
                                Words("NSW"),
                                Words("Newfoundland and Labrador")};
constexpr std::array kSalutations = {Words("Mr."), Words("Ms."),  Words("Mrs."),
                                     Words("Dr."), Words("Mlle"), Words("Ms")};

// All characters that a statement, a document or a name could stumble over.
constexpr std::array kOddEnds = {Words(" \"as built\""), Words(" <A & B>"),      Words(", O'Dowd's"),
                                 Words("; -- %_*?[]"),   Words(" \\ / | {} $1"), Words(" #7 @ 50%"),
                                 Words("  two  blanks"), Words(" ''quoted''"),   Words(" Ωmega ß ﬁ"),
                                 Words(" 你好 שלום"),    Words(" 🙂 𝔾"),    Words(" e\xCC\x81t\xC3\xA9"),
                                 Words(" &amp; &#65;"),  Words(" ]]>"),          Words(" (not: this)")};

// Characters of one, two, three and four bytes, so that a full column is cut right or not at all.
constexpr std::array kFillings = {Words("abcdefghij "), Words("éàüñçøåß"), Words("測量と設計"), Words("𝔸𝔹ℂ x")};

std::string Filled(std::string_view text, std::string_view filling, std::size_t longest) {
  std::string full(text);
  while (CharacterCount(full) < longest) full += filling;
  return Left(full, longest);
}

std::string Fitting(std::string_view text, std::size_t longest) { return Trim(Left(text, longest)); }

std::string Odd(Dice& dice, std::string_view text, std::size_t longest) {
  const auto end = dice.OneOf(kOddEnds);
  const auto room = longest > CharacterCount(end) ? longest - CharacterCount(end) : 0;
  return Fitting(Left(text, room) + std::string(end), longest);
}

}  // namespace

std::string SomeText(Dice& dice, std::string_view text, std::size_t longest) {
  std::string shaped;
  if (const auto shape = dice.Of(0, 99); shape < 80) {
    shaped = Fitting(text, longest);
  } else if (shape < 94) {
    shaped = Odd(dice, text, longest);
  } else {
    // A blank at the end would be one less than full.
    shaped = Filled(text, dice.OneOf(kFillings), longest);
    if (shaped.ends_with(' ')) shaped.back() = '.';
  }
  return shaped.empty() ? Fitting(text, longest) : shaped;
}

Text AnyText(Dice& dice, std::string_view text, std::size_t longest) {
  switch (dice.Of(0, 24)) {
    case 0:
    case 1:
      return std::nullopt;
    case 2:
      return std::string();
    case 3:
      return "  ";
    case 4:
      return Left(fmt::format(" {} ", Left(text, longest - 2)), longest);
    default:
      return SomeText(dice, text, longest);
  }
}

Text AnyMemo(Dice& dice, std::string_view text) {
  constexpr std::size_t kLong = 1'000;
  switch (dice.Of(0, 19)) {
    case 0:
      return fmt::format("{}\r\nSecond line, \"of two\"", text);
    case 1:
      return Filled(text, kFillings[1], kLong);
    default:
      return AnyText(dice, text, kLong);
  }
}

std::string FirstName(Dice& dice) { return std::string(dice.OneOf(kFirstNames)); }
std::string LastName(Dice& dice) { return std::string(dice.OneOf(kLastNames)); }
std::string Street(Dice& dice) {
  const auto number = dice.Of(1, 900);
  return fmt::format("{} {}", number, dice.OneOf(kStreets));
}
std::string City(Dice& dice) { return std::string(dice.OneOf(kCities)); }
std::string PostalCode(Dice& dice) { return std::string(dice.OneOf(kPostalCodes)); }
std::string Task(Dice& dice) { return std::string(dice.OneOf(kTasks)); }
std::string Place(Dice& dice) { return std::string(dice.OneOf(kPlaces)); }

std::string CompanyWords(Dice& dice) {
  const auto name = dice.OneOf(kLastNames);
  const auto trade = dice.OneOf(kTrades);
  return fmt::format("{} {} {}", name, trade, dice.OneOf(kForms));
}

Text State(Dice& dice) {
  if (dice.OnceIn(6)) return std::nullopt;
  if (dice.OnceIn(12)) return dice.OnceIn(2) ? "" : "   ";
  return std::string(dice.OneOf(kStates));
}

Text Salutation(Dice& dice) {
  if (dice.OnceIn(4)) return std::nullopt;
  if (dice.OnceIn(8)) return dice.OnceIn(2) ? "" : "  ";
  return std::string(dice.OneOf(kSalutations));
}

Text Phone(Dice& dice) {
  const auto last = dice.Of(100, 199);
  switch (dice.Of(0, 11)) {
    case 0:
      return std::nullopt;
    case 1:
      return "";
    case 2:
      return fmt::format("207.555.0{}", last);
    case 3:
      return fmt::format("(207) 555-0{} ext. 17", last);
    case 4:
      return fmt::format("+46 31 555 0{}", last);
    case 5:
      return fmt::format("555-0{}", last);
    case 6:
      return "call the office";
    case 7:
      return fmt::format("1-207-555-0{}, evenings", last);
    case 8:
      return "4";
    default:
      return fmt::format("(207) 555-0{}", last);
  }
}

std::int64_t AnyTaxRate(Dice& dice) { return dice.OnceIn(6) ? dice.Of(1, 9) * 125 : 0; }

std::string KeyOf(std::string_view text, std::int64_t number) {
  std::string letters;
  for (const char c : text) {
    if (std::isalpha(static_cast<unsigned char>(c)) != 0 && static_cast<unsigned char>(c) < 0x80) letters += c;
  }
  return fmt::format("{}{}", UpperCase(Left(letters.empty() ? "X" : letters, 8)), number);
}

}  // namespace twqb::firm

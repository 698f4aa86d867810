// Texts from outside: conversions, settings files, connection strings, SQL on its way to the engine, cuts, answers and
// faults files. Nothing may crash, and what a rule promises of its result must hold.

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "adapters/faults/FaultScript.h"
#include "adapters/scripted/Answers.h"
#include "adapters/sqlite/SqlTranslator.h"
#include "adapters/sqlite/SqliteProvider.h"
#include "adapters/system/ProfileText.h"
#include "platform/Date.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"
#include "platform/Value.h"
#include "services/Conversions.h"

namespace {

using namespace twqb;

void Require(bool holds) {
  if (!holds) std::abort();
}

template <typename Body>
void MayRaise(Body body) {
  try {
    body();
  } catch (const PlatformError&) {
  }
}

void Cuts(std::string_view text, std::size_t count) {
  const auto cut = Left(text, count);
  Require(text.starts_with(cut));
  Require(CharacterCount(cut) <= count);
  Require(Left(cut, count) == cut);
  Require(CharacterCount(UpperCase(text)) == CharacterCount(text));
  Require(FoldCase(FoldCase(text)) == FoldCase(text));
}

void Conversions(std::string_view text) {
  Require(ReplaceJunkChars(text).find_first_of(",#;:'") == std::string::npos);
  Require(ReplaceJunkChars(text).size() == text.size());
  Require(CleanPhoneFromQB(CleanPhoneFromQB(text)) == CleanPhoneFromQB(text));
  Require(CleanPhoneFromQB(FormatPhoneForQB(text)).find_first_not_of("0123456789") == std::string::npos);
  Require(ReplaceAll(DoubleQuotes(text), "''", "'") == text);
  (void)StripRichText(text);
  (void)ValidateSIN(text);
}

void Values(std::string_view text) {
  if (const auto date = ParseDate(text)) {
    Require(ParseDate(IsoDate(*date)) == date);
    (void)FormatSQLDate(*date, DateForm::WithTime);
  }
  MayRaise([&] { (void)TextToBoolean(text); });
  MayRaise([&] { (void)TextToInteger(text); });
  MayRaise([&] { (void)NumberToText(TextToNumber(text)); });
}

// What a settings file gives back is what was written to it, and nothing else in it changes.
void Settings(std::string_view text) {
  const ProfileText profile{std::string(text)};
  for (const auto& entry : profile.Entries()) Require(profile.Find(entry.section, entry.key) == entry.value);
  if (const auto written = profile.With("GENERAL", "QBDBPath", text)) {
    Require(ProfileText(*written).Find("general", "qbdbpath") == text);
  }
  if (const auto written = profile.With(text, "Key", "value")) {
    Require(ProfileText(*written).Find(text, "key") == "value");
  }
}

void Files(std::string_view text) {
  try {
    (void)ParseAnswers(text);
  } catch (const AnswersError&) {
  }
  try {
    (void)ParseFaults(text);
  } catch (const FaultsError&) {
  }
  (void)sqlite::TranslateSql(text);
  MayRaise([&] {
    auto connection = SqliteProvider().CreateConnection();
    connection->SetConnectionString(std::string(text));
    (void)connection->Provider();
  });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
  Cuts(text, data[0]);
  Conversions(text);
  Values(text);
  Settings(text);
  Files(text);
  return 0;
}

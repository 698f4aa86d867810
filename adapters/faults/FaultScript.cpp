#include "adapters/faults/FaultScript.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <optional>

#include "platform/Text.h"

namespace twqb {

namespace {

constexpr std::string_view kBlanks = " \t\r";

// What may stand behind the text of a point's line.
enum class Rest : std::uint8_t { Nothing, Free, Settings, Word };

struct PointRow {
  std::string_view word;
  FaultPoint point;
  Rest rest = Rest::Nothing;
  std::array<std::string_view, 4> words = {};  // of Rest::Word; empty ones are none
};

constexpr std::array kPoints = {
    PointRow{"CreateTransport", FaultPoint::CreateTransport},
    PointRow{"GetVersion", FaultPoint::GetVersion},
    PointRow{"OpenConnection", FaultPoint::OpenConnection},
    PointRow{"BeginSession", FaultPoint::BeginSession},
    PointRow{"GetCurrentCompanyFileName", FaultPoint::GetCurrentCompanyFileName},
    PointRow{"DoRequests", FaultPoint::DoRequests},
    PointRow{"DoSubscriptionRequests", FaultPoint::DoSubscriptionRequests},
    PointRow{"EndSession", FaultPoint::EndSession},
    PointRow{"CloseConnection", FaultPoint::CloseConnection},
    PointRow{"sql", FaultPoint::Sql, Rest::Free},
    PointRow{"connect", FaultPoint::Connect},
    PointRow{"row", FaultPoint::Row, Rest::Free},
    PointRow{"settings", FaultPoint::Settings, Rest::Settings},
    PointRow{"log", FaultPoint::Log, Rest::Free},
    PointRow{"file", FaultPoint::File},
    PointRow{"copy", FaultPoint::Copy},
    PointRow{"guid", FaultPoint::Guid},
    PointRow{"box", FaultPoint::Box, Rest::Free},
    PointRow{"form", FaultPoint::Form, Rest::Word, {"show", "update", "unload", "vendor"}},
    PointRow{"callback", FaultPoint::Callback, Rest::Word, {"create", "mode", "text"}},
};

constexpr std::array<std::string_view, 3> kSeverities = {"Info", "Warn", "Error"};

std::string KnownNames() {
  std::string names = "a request element (CustomerAddRq)";
  for (const auto& row : kPoints) names.append(", ").append(row.word);
  return names;
}

std::string_view TrimBlanks(std::string_view text) {
  const auto first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// One line, read from left to right.
class LineReader {
 public:
  LineReader(std::size_t number, std::string_view line) : number_(number), line_(line), rest_(line) {}

  [[noreturn]] void Refuse(std::string_view found, std::string_view allowed) const {
    const auto shown = found.empty() ? std::string("nothing") : fmt::format("\"{}\"", found);
    throw FaultsError(number_,
                      fmt::format("line {}: {}: {} stands where {} is allowed", number_, line_, shown, allowed));
  }

  std::string_view Word() {
    const auto word = rest_.substr(0, rest_.find_first_of(kBlanks));
    rest_ = TrimBlanks(rest_.substr(word.size()));
    return word;
  }

  std::size_t Count() {
    const auto word = Word();
    const auto count = WholeNumber(word, 10);
    if (!count || *count < 1) Refuse(word, "the count of the call, from 1,");
    return static_cast<std::size_t>(*count);
  }

  ErrorNumber Number() {
    const auto word = Word();
    const bool hex = word.starts_with("0x") || word.starts_with("0X");
    const auto number = hex ? WholeNumber(word.substr(2), 16) : WholeNumber(word, 10);
    // In decimal the numbers of the platform are signed as often as not.
    constexpr std::int64_t kLeast = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t kGreatest = std::numeric_limits<ErrorNumber>::max();
    if (!number || *number < (hex ? 0 : kLeast) || *number > kGreatest) {
      Refuse(word, "an error number of 32 bits, 0x80040416 or decimal,");
    }
    return static_cast<ErrorNumber>(*number);
  }

  int StatusCode() {
    const auto word = Word();
    const auto code = WholeNumber(word, 10);
    if (!code || *code < 0 || *code > std::numeric_limits<int>::max()) Refuse(word, "a status code");
    return static_cast<int>(*code);
  }

  // A text in quotes when one stands here.
  std::optional<std::string> Quoted() {
    if (!rest_.starts_with('"')) return std::nullopt;
    std::string text;
    for (std::size_t i = 1; i < rest_.size(); ++i) {
      if (rest_[i] == '"') {
        if (!rest_.substr(i + 1).starts_with('"')) {
          rest_ = TrimBlanks(rest_.substr(i + 1));
          return text;
        }
        ++i;
      }
      text.push_back(rest_[i]);
    }
    Refuse(rest_, "a text with its closing quote");
  }

  [[nodiscard]] std::string_view Remainder() const { return rest_; }
  void ExpectEnd() const {
    if (!rest_.empty()) Refuse(rest_, "the end of the line");
  }

 private:
  static std::optional<std::int64_t> WholeNumber(std::string_view digits, int base) {
    std::int64_t value = 0;
    const auto* const last = digits.data() + digits.size();
    const auto [end, failure] = std::from_chars(digits.data(), last, value, base);
    if (failure != std::errc{} || end != last || digits.empty()) return std::nullopt;
    return value;
  }

  std::size_t number_;
  std::string_view line_;
  std::string_view rest_;
};

void ReadWhat(LineReader& reader, const PointRow& row, RaiseFault& fault) {
  switch (row.rest) {
    case Rest::Nothing:
      return reader.ExpectEnd();
    case Rest::Free:
      break;
    case Rest::Settings: {
      auto copy = reader;
      const auto word = copy.Word();
      if (SameName(word, "read") || SameName(word, "write")) {
        fault.access = word;
        reader = copy;
      }
      break;
    }
    case Rest::Word: {
      const auto word = reader.Remainder();
      const bool known = std::ranges::find_if(row.words, [&](auto w) { return SameName(w, word); }) != row.words.end();
      if (!word.empty() && !known) {
        const auto end = std::ranges::find(row.words, std::string_view());
        reader.Refuse(word, Join(std::vector<std::string_view>(row.words.begin(), end), ", "));
      }
      break;
    }
  }
  fault.what = reader.Remainder();
}

RaiseFault ReadRaise(LineReader& reader, const PointRow& row) {
  RaiseFault fault{.point = row.point, .nth = reader.Count()};
  const auto verb = reader.Word();
  if (verb != "raise" && verb != "raise-after") reader.Refuse(verb, "raise or raise-after");
  fault.timing = verb == "raise" ? FaultTiming::Before : FaultTiming::After;
  fault.number = reader.Number();
  fault.description = reader.Quoted().value_or("");
  if (fault.description.empty()) fault.description = FaultDescription(fault.number);
  ReadWhat(reader, row, fault);
  return fault;
}

StatusFault ReadStatus(LineReader& reader, std::string_view request) {
  StatusFault fault{.request = std::string(request), .nth = reader.Count()};
  const auto verb = reader.Word();
  if (verb != "status") reader.Refuse(verb, "status");
  fault.code = reader.StatusCode();
  const auto severity = reader.Word();
  if (std::ranges::find(kSeverities, severity) == kSeverities.end()) {
    reader.Refuse(severity, Join(std::vector<std::string_view>(kSeverities.begin(), kSeverities.end()), ", "));
  }
  fault.severity = severity;
  fault.message = reader.Quoted().value_or("");
  reader.ExpectEnd();
  return fault;
}

}  // namespace

std::string FaultDescription(ErrorNumber number) {
  const auto published = ErrorText(number);
  return published.empty() ? fmt::format("The call failed with error {}.", HexNumber(number)) : std::string(published);
}

FaultScript ParseFaults(std::string_view text) {
  FaultScript script;
  std::size_t number = 0;
  for (const auto& whole : Split(text, '\n')) {
    ++number;
    const auto line = TrimBlanks(whole);
    if (line.empty() || line.starts_with('#')) continue;
    LineReader reader(number, line);
    const auto name = reader.Word();
    const auto* const row = std::ranges::find_if(kPoints, [&](const auto& r) { return SameName(r.word, name); });
    if (row != kPoints.end()) {
      script.raises.push_back(ReadRaise(reader, *row));
    } else if (name.size() > 2 && name.ends_with("Rq")) {
      script.statuses.push_back(ReadStatus(reader, name));
    } else {
      reader.Refuse(name, KnownNames());
    }
  }
  return script;
}

}  // namespace twqb

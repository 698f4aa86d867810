// A connected house in which one table is read, with answers made by hand.
//
// For the tests of the record reader. An answer that is given by hand comes instead of the company file's own.
#pragma once

#include <fmt/core.h>

#include <string>
#include <string_view>
#include <vector>

#include "engine/RecordReader.h"
#include "platform/MsgFormTexts.h"
#include "tests/engine/SpiedHouse.h"
#include "tests/support/TablesByNumber.h"
#include "twqb/enTables.h"

namespace twqb {

// A table, or a kind of the expense log, as the reader is called for it and as it stands on the wire.
struct ReadCase {
  std::string_view name;
  std::int32_t table;
  std::size_t expenseLogKind = enChecks;
  std::string_view message;  // "CustomerQuery"
  std::string_view record;   // "CustomerRet"
};

// One answer of a set: status and records.
struct CannedAnswer {
  std::string_view message;
  std::string records = {};
  int status = 0;
  std::string_view severity = "Info";
  std::string_view text = "Status OK";
};

class ReaderHouse : public SpiedHouse {
 public:
  explicit ReaderHouse(std::int32_t table = enClients, std::string_view faults = {})
      : ReaderHouse(ReadCase{.name = {}, .table = table, .message = {}, .record = {}}, faults) {}
  explicit ReaderHouse(const ReadCase& read, std::string_view faults = {}) : SpiedHouse({}, faults), read_(read) {
    Connect();
  }

  bool Read(const ReadFilters& filters = {}) {
    return ApplyQBFiltersAndReadRecords(read_.table, records, Session(), filters, read_.expenseLogKind);
  }
  // The next set is answered so.
  void AnswerWith(const std::vector<CannedAnswer>& answers) {
    std::string xml = "<?xml version=\"1.0\" ?><QBXML><QBXMLMsgsRs>";
    int id = 0;
    for (const auto& answer : answers) {
      xml += fmt::format(
          "<{0}Rs requestID=\"{1}\" statusCode=\"{2}\" statusSeverity=\"{3}\" statusMessage=\"{4}\">{5}</{0}Rs>",
          answer.message, ++id, answer.status, answer.severity, answer.text, answer.records);
    }
    traffic.canned.push_back(xml + "</QBXMLMsgsRs></QBXML>");
  }
  // The document of the last read, made with those filters and answered with no records.
  std::string DocumentOf(const ReadFilters& filters) {
    AnswerWith({{.message = read_.message, .status = 1, .text = "Nothing."}});
    (void)Read(filters);
    return traffic.documents.back();
  }
  // What that document must be: one request with these insides.
  [[nodiscard]] std::string Document(std::string_view insides) const {
    return fmt::format(
        "<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq onError=\"continueOnError\">"
        "<{0}Rq requestID=\"1\">{1}</{0}Rq></QBXMLMsgsRq></QBXML>",
        read_.message, insides);
  }
  // The values of that field of the records read, each with a blank behind it.
  [[nodiscard]] std::string FieldOfAll(std::string_view field) const {
    std::string values;
    for (const auto& record : records) values += record[field].GetValue() + " ";
    return values;
  }
  [[nodiscard]] std::string Names() const { return FieldOfAll("Name"); }
  // The positions that the bar took under that text, in order, each once.
  [[nodiscard]] std::vector<std::string> PositionsUnder(std::string_view text) const {
    std::vector<std::string> positions;
    for (const auto& event : desk.FormEvents()) {
      const auto position = CountText(event.state.position.value());
      if (event.state.action == text && event.kind == FormEventKind::Update &&
          (positions.empty() || positions.back() != position)) {
        positions.push_back(position);
      }
    }
    return positions;
  }

  RecordList records;

 private:
  ReadCase read_;
};

// Names a parametrised test after its table.
inline std::string NameOfCase(const testing::TestParamInfo<ReadCase>& info) { return std::string(info.param.name); }

}  // namespace twqb

#include "cli/runs/ReportFile.h"

#include <string_view>
#include <vector>

#include "adapters/transcript/TranscriptWriter.h"
#include "cli/options/TableArgument.h"
#include "cli/workplace/RunFiles.h"
#include "services/Errors.h"

namespace twqb::cli {

namespace {

constexpr RecordKind kReport = {.called = "report", .option = "--report", .beginning = R"({"twqb":")"};
constexpr std::string_view kFirst = "twqb";  // as it begins

// What the run reads or writes, its transcript among it.
std::vector<RunFile> FilesBeside(const Options& options, Machine& machine) {
  std::vector<std::string> read;
  for (const auto& file : {options.answers, options.faults}) {
    if (!file.empty()) read.push_back(file);
  }
  auto files = FilesOfRun(WorkplaceOf(options), machine, read);
  if (!options.transcript.empty())
    files.push_back({.path = options.transcript, .called = "the transcript of this run"});
  return files;
}

std::string_view DirectionWord(Direction direction) { return direction == Direction::Send ? "send" : "get"; }

void AddTable(EventFields& fields, const TableInHand& table) {
  fields["table"] = TypedName(static_cast<enTables>(table.number));
  fields["direction"] = DirectionWord(table.direction);
}

}  // namespace

ReportFile::ReportFile(const std::string& path, const Options& options, Machine& machine)
    : file_(path, kReport, FilesBeside(options, machine)) {}

void ReportFile::Write(const RecordAccount& record) { WriteLine(AccountFields(kFirst, record)); }
void ReportFile::Write(const ErrorAccount& error) { WriteLine(AccountFields(kFirst, error)); }

void ReportFile::WriteLine(const EventFields& fields) {
  constexpr int kAtOnce = 100;
  file_.Stream() << JsonLine(fields) << '\n';
  if (++waiting_ < kAtOnce) return;
  waiting_ = 0;
  Flush();
}

EventFields AccountFields(std::string_view first, const RecordAccount& record) {
  EventFields fields = {{std::string(first), record.standing == Standing::Record ? "record" : "line"}};
  AddTable(fields, record.table);
  fields["key"] = record.key;
  fields["identifier"] = record.identifier;
  fields["done"] = FateWord(record.fate);
  fields["why"] = record.why;
  if (!record.former.empty()) fields["former"] = record.former;
  return fields;
}

EventFields AccountFields(std::string_view first, const ErrorAccount& error) {
  EventFields fields = {{std::string(first), "error"}};
  if (error.table) AddTable(fields, *error.table);
  fields["key"] = error.key;
  fields["identifier"] = error.identifier;
  fields["routine"] = error.routine;
  fields["number"] = std::int64_t{SignedNumber(error.number)};
  fields["text"] = error.text;
  return fields;
}

std::string_view FateWord(Fate fate) {
  switch (fate) {
    case Fate::Added:
      return "added";
    case Fate::Changed:
      return "changed";
    case Fate::LeftAsItWas:
      return "left as it was";
    case Fate::PassedOver:
      return "passed over";
    case Fate::Refused:
      return "refused";
    case Fate::Failed:
      return "failed";
  }
  return "";
}

}  // namespace twqb::cli

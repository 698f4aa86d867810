#include "Firm.h"

#include <sstream>

namespace twqb::cli {

namespace {

// Empty fields count, at the end as well.
std::vector<std::string> Fields(const std::string& line) {
  std::vector<std::string> fields(1);
  for (const char c : line) {
    if (c == '\t') {
      fields.emplace_back();
    } else {
      fields.back() += c;
    }
  }
  return fields;
}

}  // namespace

Firm::Firm(std::string country) : country_(std::move(country)) {
  folder_.Done({"init", "--sample", "--country", country_, "--clock", "2008-03-05T10:00:00"});
  folder_.Write("yes.txt", "default yes\n");
}

Ended Firm::Run(const std::string& verb, const std::string& table, int hour,
                const std::vector<std::string>& options) const {
  std::vector<std::string> command = {verb,
                                      table,
                                      "--no-progress",
                                      "--answers",
                                      "yes.txt",
                                      "--transcript",
                                      verb + std::to_string(hour) + ".jsonl",
                                      "--clock",
                                      "2008-03-05T" + std::to_string(hour) + ":00:00"};
  command.insert(command.end(), options.begin(), options.end());
  return folder_.Twqb(command);
}

void Firm::Transfer(const std::string& verb, int hour) const {
  const auto ended = Run(verb, "all", hour);
  EXPECT_EQ(ended.status, 0) << ended.err;
}

std::string Firm::Transcript(const std::string& verb, int hour) const {
  return folder_.Read(verb + std::to_string(hour) + ".jsonl");
}

std::vector<std::vector<std::string>> Firm::Rows(const std::string& statement) const {
  std::istringstream lines(folder_.Done({"billing", "run", "-e", statement}));
  std::string line;
  std::getline(lines, line);  // the names of the columns
  std::vector<std::vector<std::string>> rows;
  while (std::getline(lines, line)) rows.push_back(Fields(line));
  return rows;
}

std::string Firm::AnswerOfQuickBooks(const std::string& request) const {
  const auto form = country_ == "CA" || country_ == "UK" ? country_ + "3.0" : std::string("3.0");
  folder_.Write("query.xml", "<?xml version=\"1.0\"?><?qbxml version=\"" + form +
                                 "\"?><QBXML><QBXMLMsgsRq onError=\"stopOnError\">" + request +
                                 "</QBXMLMsgsRq></QBXML>");
  return folder_.Done({"company", "run", "query.xml"});
}

}  // namespace twqb::cli

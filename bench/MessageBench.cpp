// The message objects alone: building a request and reading a record, each against pugixml doing the same by hand.
//
// Both sides make the same text and read the same values, or the benchmark ends. What counts is processor time: the
// least of several rounds in turn, so that what else the machine does shows little. Prints a table for
// docs/performance.md. Exit status 1 when building takes more than 1.2 times as long as pugixml, or reading 1.5 times.

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <ctime>
#include <functional>
#include <limits>
#include <pugixml.hpp>
#include <stdexcept>
#include <string>
#include <string_view>

#include "bench/CommandLine.h"
#include "bench/Report.h"
#include "quickbooks/RequestModel.h"
#include "quickbooks/ResponseModel.h"

namespace twqb {
namespace {

constexpr double kGoalBuilding = 1.2;
constexpr double kGoalReading = 1.5;
constexpr int kRounds = 25;
constexpr int kRequests = 2'000;  // of a round
constexpr int kRecords = 100;     // of the answer that is read
constexpr int kReadings = 20;     // of a round

struct FieldAndValue {
  std::string_view aggregate;  // empty: the field stands in the record itself
  std::string_view field;
  std::string_view value;
};

// What a client comes to, in the order of the wire.
constexpr std::array kFields = {
    FieldAndValue{"", "Name", "Dale Boulder Consulting (D000001)"},
    FieldAndValue{"", "CompanyName", "Dale Boulder Consulting"},
    FieldAndValue{"", "Salutation", "Ms."},
    FieldAndValue{"", "FirstName", "Josephine"},
    FieldAndValue{"", "MiddleName", "M"},
    FieldAndValue{"", "LastName", "Boulder"},
    FieldAndValue{"BillAddress", "Addr1", "Dale Boulder Consulting"},
    FieldAndValue{"BillAddress", "Addr2", "1200 North Sepulveda Road"},
    FieldAndValue{"BillAddress", "City", "Middlefield"},
    FieldAndValue{"BillAddress", "State", "CA"},
    FieldAndValue{"BillAddress", "PostalCode", "94306"},
    FieldAndValue{"", "Phone", "650-555-0117"},
    FieldAndValue{"", "AltPhone", "650-555-0118"},
    FieldAndValue{"", "Fax", "650-555-0119"},
    FieldAndValue{"", "Email", "office@dale-boulder.example"},
};

constexpr std::string_view kBefore =
    "<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq onError=\"stopOnError\">";
constexpr std::string_view kBehind = "</QBXMLMsgsRq></QBXML>";

double ProcessorSeconds() {
  timespec now = {};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

struct Measured {
  double library = std::numeric_limits<double>::max();  // seconds of a round
  double bare = std::numeric_limits<double>::max();
};

Measured InTurn(const std::function<void()>& library, const std::function<void()>& bare) {
  const auto measure = [](double& least, const std::function<void()>& body) {
    const double begin = ProcessorSeconds();
    body();
    least = std::min(least, ProcessorSeconds() - begin);
  };
  Measured measured;
  for (int i = 0; i < kRounds; ++i) {
    measure(measured.library, library);
    measure(measured.bare, bare);
  }
  return measured;
}

// --- Building --------------------------------------------------------------------------------------------------------

std::string Built() {
  MsgSetRequest set({.country = messages::Country::US, .version = {3, 0}}, messages::MessageSet::Company);
  const auto customer = set.Append("CustomerAddRq");
  for (const auto& [aggregate, field, value] : kFields) {
    if (aggregate.empty()) {
      customer[field].SetValue(value);
    } else {
      customer[aggregate][field].SetValue(value);
    }
  }
  return set.ToXMLString();
}

class TextWriter : public pugi::xml_writer {
 public:
  void write(const void* data, std::size_t size) override { text.append(static_cast<const char*>(data), size); }
  std::string text;
};

std::string BuiltByHand() {
  pugi::xml_document document;
  auto xml = document.append_child(pugi::node_declaration);
  xml.set_name("xml");
  xml.append_attribute("version").set_value("1.0");
  auto instruction = document.append_child(pugi::node_pi);
  instruction.set_name("qbxml");
  instruction.set_value("version=\"3.0\"");
  auto messages = document.append_child("QBXML").append_child("QBXMLMsgsRq");
  messages.append_attribute("onError").set_value("stopOnError");
  auto request = messages.append_child("CustomerAddRq");
  request.append_attribute("requestID").set_value("1");
  auto customer = request.append_child("CustomerAdd");
  for (const auto& [aggregate, field, value] : kFields) {
    auto parent = customer;
    if (!aggregate.empty()) {
      parent = customer.child(aggregate.data());
      if (!parent) parent = customer.append_child(aggregate.data());
    }
    parent.append_child(field.data()).text().set(value.data());
  }
  TextWriter writer;
  document.save(writer, "", pugi::format_raw);
  return std::move(writer.text);
}

Measured MeasureBuilding() {
  if (Built() != BuiltByHand()) throw std::runtime_error("two texts:\n" + Built() + "\n" + BuiltByHand());
  std::size_t size = 0;
  const auto all = [&size](std::string (*build)()) {
    for (int i = 0; i < kRequests; ++i) size += build().size();
  };
  const auto measured = InTurn([&] { all(Built); }, [&] { all(BuiltByHand); });
  if (size == 0) throw std::runtime_error("nothing built");
  return measured;
}

// --- Reading ---------------------------------------------------------------------------------------------------------

// Customers as QuickBooks answers them, with what stands between the fields that are read.
std::string Answer() {
  std::string customers;
  for (int i = 0; i < kRecords; ++i) {
    customers += fmt::format(
        "<CustomerRet><ListID>{0:X}-1204700000</ListID><TimeCreated>2008-03-05T12:00:00-05:00</TimeCreated>"
        "<TimeModified>2008-03-05T12:00:00-05:00</TimeModified><EditSequence>1204700000</EditSequence>",
        i + 1);
    std::string_view open;
    for (const auto& [aggregate, field, value] : kFields) {
      if (open != aggregate && !open.empty()) customers += fmt::format("</{}>", open);
      if (open != aggregate && !aggregate.empty()) customers += fmt::format("<{}>", aggregate);
      open = aggregate;
      customers += fmt::format("<{0}>{1}</{0}>", field, value);
      if (field == "Name") {
        customers += fmt::format("<FullName>{}</FullName><IsActive>true</IsActive><Sublevel>0</Sublevel>", value);
      }
    }
    customers += "<Balance>0.00</Balance><TotalBalance>0.00</TotalBalance><JobStatus>None</JobStatus></CustomerRet>";
  }
  return fmt::format(
      "<?xml version=\"1.0\"?><QBXML><QBXMLMsgsRs><CustomerQueryRs requestID=\"1\" statusCode=\"0\" "
      "statusSeverity=\"Info\" statusMessage=\"Status OK\">{}</CustomerQueryRs></QBXMLMsgsRs></QBXML>",
      customers);
}

std::string Read(const Record& customer, const FieldAndValue& wanted) {
  return wanted.aggregate.empty() ? customer[wanted.field].GetValueOrEmpty()
                                  : customer[wanted.aggregate][wanted.field].GetValueOrEmpty();
}

std::string ReadByHand(pugi::xml_node customer, const FieldAndValue& wanted) {
  return wanted.aggregate.empty() ? customer.child(wanted.field.data()).text().get()
                                  : customer.child(wanted.aggregate.data()).child(wanted.field.data()).text().get();
}

Measured MeasureReading() {
  const auto text = Answer();
  const MsgSetResponse answer(text);
  const auto records = answer.GetAt(0).Details();
  pugi::xml_document document;
  if (!document.load_buffer(text.data(), text.size())) throw std::runtime_error("no answer");
  const auto byHand = document.child("QBXML").child("QBXMLMsgsRs").child("CustomerQueryRs").children();

  auto other = records.begin();
  for (const auto customer : byHand) {
    for (const auto& field : kFields) {
      if (Read(*other, field) != field.value || ReadByHand(customer, field) != field.value) {
        throw std::runtime_error(std::string(field.field));
      }
    }
    ++other;
  }
  std::size_t size = 0;
  const auto measured = InTurn(
      [&] {
        for (int i = 0; i < kReadings; ++i) {
          for (const auto& customer : records) {
            for (const auto& field : kFields) size += Read(customer, field).size();
          }
        }
      },
      [&] {
        for (int i = 0; i < kReadings; ++i) {
          for (const auto customer : byHand) {
            for (const auto& field : kFields) size += ReadByHand(customer, field).size();
          }
        }
      });
  if (size == 0) throw std::runtime_error("nothing read");
  return measured;
}

bool Print(std::string_view what, int count, const Measured& measured, double goal) {
  constexpr double kMicro = 1e6;
  const double ratio = measured.library / measured.bare;
  PrintLine({std::string(what), fmt::format("{:.2f}", measured.library / count * kMicro),
             fmt::format("{:.2f}", measured.bare / count * kMicro), fmt::format("{:.2f}", ratio),
             fmt::format("{:.1f}", goal)});
  return ratio <= goal;
}

Goals Main() {
  fmt::print("\n### message objects\n\n");
  PrintHead({"each of 15 fields", "library, µs", "pugixml by hand, µs", "ratio", "goal"});
  bool met = Print("a request built and written", kRequests, MeasureBuilding(), kGoalBuilding);
  met = Print("a record read", kRecords * kReadings, MeasureReading(), kGoalReading) && met;
  return met ? Goals::Met : Goals::Missed;
}

}  // namespace
}  // namespace twqb

int main(int argc, char** argv) {
  CLI::App app("Measures the message objects against pugixml by hand.");
  app.add_flag_callback(
      "--all", [] {}, "the same: there is one size of it");
  return twqb::RunBench(app, argc, argv, [] { return twqb::Main(); });
}

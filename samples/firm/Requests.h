// Requests of qbXML that add records to a company file, gathered into documents of many.
//
// Records refer to each other by full names, and transactions by macros, which last as long as the company file is
// open.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace twqb::firm {

// A document in the form of the United States, version 3.0, as those of samples/company.
using TakeDocument = std::function<void(const std::string& document)>;

class Request {
 public:
  // `kind` is "Customer". A macro stands for the identifier of a transaction in requests behind it.
  explicit Request(std::string_view kind, std::string_view macro = {});

  // Texts that are empty are left out.
  Request& Put(std::string_view field, std::string_view text);
  Request& Money(std::string_view field, std::int64_t cents);
  // `digits` with so many of them behind the point.
  Request& Number(std::string_view field, std::int64_t digits, int decimals = 0);
  Request& Ref(std::string_view field, std::string_view fullName);
  Request& Use(std::string_view field, std::string_view macro);
  Request& Open(std::string_view field);
  Request& Close();

  [[nodiscard]] std::string Text() const;

 private:
  std::string kind_;
  std::string text_;
  std::vector<std::string> open_;
};

class Requests {
 public:
  explicit Requests(TakeDocument take) : take_(std::move(take)) {}
  void Add(const Request& request);
  // What is still gathered.
  void Flush();

 private:
  TakeDocument take_;
  std::string gathered_;
  int count_ = 0;
};

}  // namespace twqb::firm

// A company file on disk that answers qbXML as QuickBooks does: text in, text out.
//
// It knows nothing of who asks, and takes no lock: sessions with open modes are CompanyTransport's. Several processes
// may have the same file open; each document is one transaction. It never repairs a wrong request.
#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/companyfile/CompanyConditions.h"
#include "adapters/companyfile/CompanyOptions.h"
#include "platform/Currency.h"
#include "platform/machine.h"

namespace twqb::company {

// Makes a company file at `path` that holds what QuickBooks puts into a new one: the tax codes of the country (US: Tax,
// Non; AU: those and E; CA: E, G, H, P, S, Z, NON; UK: E, O, S, Z, NON) and payment methods. Accounts that QuickBooks
// makes itself come when a transaction needs them first. Raises, and changes nothing, when something is there already
// (75) or the folder is missing (76). An empty `options.accepts` becomes the country's own form. `machine` tells the
// time of making.
void CreateCompanyFile(const std::string& path, const CompanyOptions& options, Machine& machine);

class CompanyStore;
enum class LineBilling : std::uint8_t;
struct ProgramSession;

// What a company file holds.
struct CompanySummary {
  // Of the list records of one type ("Bank"), or of the whole kind.
  struct Part {
    std::string type;
    std::int64_t records = 0;
    Currency balance;  // of their own, without what stands below them
  };
  struct Kind {
    std::string name;  // "Customer"
    std::int64_t records = 0;
    // Of a kind with balances: each type that there is, in the order of the alphabet; of a kind without types, one
    // part.
    std::vector<Part> balances;
  };
  CompanyOptions options;
  std::int64_t created = 0;  // when the file was made: Unix seconds
  std::vector<Kind> kinds;
};

class CompanyFile {
 public:
  // Opens a company file; one of an earlier format is brought to today's. Raises 0x80040403 when it is missing, is
  // none, or has a newer format. `machine` must outlive the object; times and identifiers come from its clock. `mode`
  // is what the host record tells. Sets that carry identifiers are remembered for the program of the name
  // `application`.
  CompanyFile(const std::string& path, Machine& machine, FileMode mode = FileMode::MultiUser,
              std::string_view application = {});
  ~CompanyFile();
  CompanyFile(CompanyFile&&) noexcept;
  CompanyFile& operator=(CompanyFile&&) noexcept;

  // Answers a document of requests (UTF-8). What it changed is durable when it returns. Raises 0x80040400 for a
  // document that is refused as a whole, 0x80040423 for one in a version or form that the file does not take,
  // 0x80040413 for one that is to be taken back after an error, 0x80040307 for one with a bill that comes to nothing,
  // and 0x80040402 when the storage fails; nothing is changed then. The macros that it defines last as long as the
  // object.
  [[nodiscard]] std::string Process(std::string_view document);
  // The same for a document of subscription requests.
  [[nodiscard]] std::string ProcessSubscription(std::string_view document);
  // The same for a document of either kind of requests.
  [[nodiscard]] std::string ProcessAny(std::string_view document);

  // Lets an invoice take up a billable line of a check, charge or bill, as somebody at QuickBooks does (LineBilling.h).
  // Durable when it returns.
  [[nodiscard]] LineBilling BillLine(std::string_view invoiceId, std::string_view lineId);

  [[nodiscard]] CompanySummary Summary();

  // Identifiers of transactions that were added here to what was read from another QuickBooks, and of which it is not
  // known what they would come to there: see TxnLines.h.
  [[nodiscard]] std::vector<std::string> UnknownAmounts();
  // Identifiers of what has sums that these are in: see UnknownSums.h.
  [[nodiscard]] std::set<std::string, std::less<>> UnknownSums();

  // How programs are met that want a session, as it stands in the file now.
  [[nodiscard]] CompanyConditions GetConditions();
  // Durable when it returns. Sessions that have begun go on. Raises 0x80040402, with nothing changed, when the storage
  // fails.
  void SetConditions(const CompanyConditions& conditions);

 private:
  std::unique_ptr<CompanyStore> store_;
  Machine* machine_;
  FileMode mode_;
  std::unique_ptr<ProgramSession> session_;
};

}  // namespace twqb::company

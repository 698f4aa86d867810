// The get of bills and of estimates: a document becomes a row, and each of its lines another one in a table of its
// kind.
//
// The row of a document that is here moves as the rule says, and where it stays as it is, its lines do, too; a new one
// of which no line is stored goes again. What a document belongs to, what its row holds and its lines are the table's
// own.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "engine/RecordWalk.h"
#include "platform/ado.h"
#include "quickbooks/ResponseModel.h"
#include "transactions/CostLines.h"

namespace twqb {

// Whether a document's row was there ahead of its record.
enum class Before : std::uint8_t { New, Known };

// The record in hand.
struct CostDocument {
  const Record& record;
  ado::Connection& connection;
  std::string txnId;
  Before before = Before::New;
  std::string key = {};   // of its row; of a new one, once that is written
  bool hasLines = false;  // that make a new document worth its row
};

struct CostTable {
  std::string_view table;
  std::string_view keyColumn;
  std::string_view routine;  // errors end the run in a box under this name
  std::string_view shown;    // on the form,
  std::string_view numbers;  // and there ahead of a document's number
};

class CostGet : public RecordWork {
 public:
  // What is given must outlive the object.
  CostGet(const CostTable& table, const GetCall& call) : table_(table), call_(call) {}

  // Walks over the documents of the call.
  void TakeAll();

  [[nodiscard]] std::optional<std::string> ShownOf(const Record& record) const override;
  RecordEnd TakeRecord(RecordWalk& walk, const Record& record) override;

 protected:
  // Looks up what the document belongs to. False: it is passed over.
  virtual bool Begin(CostDocument& document) = 0;
  // Fills the row in hand; a new one has nothing yet, not even its key.
  virtual void FillHeader(ado::Recordset& row, const CostDocument& document) = 0;
  virtual void TakeLines(CostDocument& document) = 0;
  // Behind the lines of a new document.
  virtual void EndNew(const CostDocument& /*document*/) {}

  [[nodiscard]] TwinRule Rule() const { return call_.rule; }

 private:
  bool WriteHeader(ado::Recordset& rows, CostDocument& document);

  const CostTable& table_;
  const GetCall& call_;
};

}  // namespace twqb

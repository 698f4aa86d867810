// Access to BillingDb: the shared connection with its count of open requests, connections of a routine's own, and the
// close helper.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

#include "platform/ado.h"
#include "services/Run.h"
#include "services/Sql.h"

namespace twqb {

// Opens (True) or releases (False) the shared connection. The count goes up only when it is open afterwards; the
// connection closes with the last request. A failure goes to ErrorHandler.
void gp_cnGlobal80(bool blnOpen);

// Releases and opens once more, for a table behind each row that it wrote: what reads next, a dependent pull too, sees
// the row.
void ReopenGlobalConnection();

// The shared connection, open or not; raises 91 when it could not even be made.
[[nodiscard]] ado::Connection& GlobalConnection();

// Runs `body` between an open and a release of the shared connection; releases on every way out.
template <typename Body>
auto WithGlobalConnection(Body&& body);

// Sets the connection up and opens it, unless it has a connection string already. With `rs` it then opens the table
// into it, for writing. A failure goes to ErrorHandler.
void OpenConnection(ado::Connection& cn, std::unique_ptr<ado::Recordset>* rs, std::string_view strTable);

// Statements on a connection that are all done, or none of them: none unless `Commit` was called. Raises any error.
class WholeOrNot {
 public:
  explicit WholeOrNot(ado::Connection& connection);
  ~WholeOrNot();
  WholeOrNot(const WholeOrNot&) = delete;
  WholeOrNot& operator=(const WholeOrNot&) = delete;

  void Commit();

 private:
  ado::Connection& connection_;
  bool isOpen_ = true;
};

// The first field of the current row as text; "" at the end.
[[nodiscard]] std::string FirstField(const ado::Recordset& rs);

// The first field of the first row as text; "" when there is none, and on any error.
[[nodiscard]] std::string GetScalarFromSQL(const Sql& strSQL);
// The same for a caller with a handler of its own: raises on any error.
[[nodiscard]] std::string RequireScalarFromSQL(const Sql& strSQL);

// What stands for the date of a row that has none: 1 January 1901.
[[nodiscard]] Date NeverUpdated();

// When a row last changed, local time: field 1 (UTC) turned into local time; if NULL, field 2 as it stands; if both are
// NULL, NeverUpdated. An error goes to ErrorHandler and gives nothing: no record may be overwritten on a date that
// nobody could read.
[[nodiscard]] std::optional<Date> GetTWDateOfUpdation(const ado::Recordset& rs, std::string_view strField1,
                                                      std::string_view strField2);

// "SQL" when the first three letters of the provider's name are exactly these, else "JET".
[[nodiscard]] std::string DbKindOf(std::string_view provider);

enum class FormToo : bool { Leave, Unload };

// Ignoring errors: takes the form down, if asked to and neither LeaveMsgBoxOpen nor a run over all tables keeps it, and
// closes and releases the objects given. Each may be nullptr or hold nothing.
void CloseObjects(const Run& run, FormToo form, std::unique_ptr<ado::Recordset>* rs1,
                  std::unique_ptr<ado::Recordset>* rs2, std::unique_ptr<ado::Connection>* cn);

template <typename Body>
auto WithGlobalConnection(Body&& body) {
  gp_cnGlobal80(true);
  const auto run = [&] {
    try {
      return body();
    } catch (...) {
      gp_cnGlobal80(false);
      throw;
    }
  };
  if constexpr (std::is_void_v<decltype(body())>) {
    run();
    gp_cnGlobal80(false);
  } else {
    auto result = run();
    gp_cnGlobal80(false);
    return result;
  }
}

}  // namespace twqb

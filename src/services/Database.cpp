#include "services/Database.h"

#include "services/Conversions.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/msgForm.h"

namespace twqb {

namespace {

constexpr int kGlobalConnectionTimeout = 59;       // seconds
constexpr std::int64_t kNeverUpdatedSerial = 367;  // 1 January 1901: loses to every real date

void SetUpAndOpen(ado::Connection& cn) {
  cn.SetMode(ado::ConnectMode::ReadWrite);
  cn.SetCursorLocation(ado::CursorLocation::Client);
  cn.SetConnectionString(Vars().g_ConnectString);
  cn.Open();
}

}  // namespace

void gp_cnGlobal80(bool blnOpen) {
  RunAs("gp_cnGlobal80", [&] {
    auto& cn = Vars().g_cnGlobal;
    auto& count = Vars().g_CnRefCount;
    if (blnOpen) {
      if (!cn) cn = Vars().platform.database->CreateConnection();
      if (cn->State() == ado::ObjectState::Closed) {
        cn->SetConnectionTimeout(kGlobalConnectionTimeout);
        SetUpAndOpen(*cn);
      }
      ++count;
    } else {
      // The count goes first: it balances whatever fails behind it.
      const bool isLast = count <= 1;
      count = isLast ? std::int16_t{0} : static_cast<std::int16_t>(count - 1);
      if (cn && cn->State() != ado::ObjectState::Closed) {
        if (isLast) cn->Close();
      } else {
        count = 0;
      }
    }
    TheDesk().PumpMessages();
  });
}

void ReopenGlobalConnection() {
  gp_cnGlobal80(false);
  gp_cnGlobal80(true);
}

ado::Connection& GlobalConnection() {
  if (!Vars().g_cnGlobal) throw PlatformError(error::kObjectNothing);
  return *Vars().g_cnGlobal;
}

void OpenConnection(ado::Connection& cn, std::unique_ptr<ado::Recordset>* rs, std::string_view strTable) {
  RunAs("OpenConnection", [&] {
    if (cn.ConnectionString().empty()) SetUpAndOpen(cn);
    if (rs != nullptr) {
      *rs = cn.OpenRecordset("SELECT * FROM " + std::string(strTable) + ";", ado::CursorType::Static,
                             ado::LockType::Optimistic);
    }
  });
}

// In the words that each of the databases knows.
WholeOrNot::WholeOrNot(ado::Connection& connection) : connection_(connection) {
  connection_.Execute("BEGIN TRANSACTION;", nullptr);
}

WholeOrNot::~WholeOrNot() {
  if (isOpen_) IgnoreErrors([&] { connection_.Execute("ROLLBACK TRANSACTION;", nullptr); });
}

void WholeOrNot::Commit() {
  connection_.Execute("COMMIT TRANSACTION;", nullptr);
  isOpen_ = false;
}

std::string FirstField(const ado::Recordset& rs) { return rs.Eof() ? std::string() : ToText(rs.FieldAt(0)); }

std::string GetScalarFromSQL(const Sql& strSQL) {
  return WithGlobalConnection([&] {
    std::string result;
    IgnoreErrors([&] {
      const auto rs = GlobalConnection().Execute(strSQL, nullptr);
      result = ToText(rs->FieldAt(0));
    });
    return result;
  });
}

std::string RequireScalarFromSQL(const Sql& strSQL) {
  return WithGlobalConnection([&] { return FirstField(*GlobalConnection().Execute(strSQL, nullptr)); });
}

Date NeverUpdated() { return Date::FromMilliseconds(kNeverUpdatedSerial * Date::kDay); }

std::optional<Date> GetTWDateOfUpdation(const ado::Recordset& rs, std::string_view strField1,
                                        std::string_view strField2) {
  return RunAs("GetTWDateOfUpdation", std::optional<Date>{}, [&] {
    std::optional<Date> date = NeverUpdated();
    if (const auto changed = rs.Field(strField1); !IsNull(changed)) {
      date = UTCToLocal(ToDate(changed));
    } else if (const auto fallback = rs.Field(strField2); !IsNull(fallback)) {
      date = ToDate(fallback);
    }
    return date;
  });
}

std::string DbKindOf(std::string_view provider) { return provider.substr(0, 3) == "SQL" ? "SQL" : "JET"; }

void CloseObjects(const Run& run, FormToo form, std::unique_ptr<ado::Recordset>* rs1,
                  std::unique_ptr<ado::Recordset>* rs2, std::unique_ptr<ado::Connection>* cn) {
  if (form == FormToo::Unload && !run.g_LeaveMsgBoxOpen && !run.g_AllTablesRun) {
    IgnoreErrors([] { UnloadMsgForm(); });
  }
  const auto close = [](auto* object) {
    if (object == nullptr || !*object) return;
    IgnoreErrors([&] {
      if ((*object)->State() == ado::ObjectState::Open) (*object)->Close();
    });
    object->reset();
  };
  close(rs1);
  close(rs2);
  close(cn);
}

}  // namespace twqb

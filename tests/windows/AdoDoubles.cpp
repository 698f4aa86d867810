// The doubles of ADODB.Connection and ADODB.Recordset on the embedded engine: client-side, and as strict as the real
// ones about rows that are not there.

#include <memory>

#include "adapters/sqlite/ConnectionText.h"
#include "adapters/sqlite/SqliteProvider.h"
#include "adapters/windows/ado/AdoValues.h"
#include "tests/windows/Doubles.h"

namespace twqb::doubles {

namespace {

using windows::Variant;

constexpr ErrorNumber kNoCurrentRecord = 0x800A0BCD;
constexpr long kLimitedText = 202;
constexpr long kLongText = 203;
constexpr long kNoLimit = 0x3FFFFFFF;

Variant Number(std::int64_t number) { return Variant(static_cast<long>(number)); }

using Rows = std::shared_ptr<ado::Recordset>;

class FieldDouble : public Double<FieldDouble> {
 public:
  FieldDouble(Rows rows, std::string name) : rows_(std::move(rows)), name_(std::move(name)) {}

 protected:
  [[nodiscard]] const Table& Members() const override {
    static const Table members = {
        {"name", [](const FieldDouble& own, const Arguments&) { return Variant(std::string_view(own.name_)); }},
        {"value",
         [](const FieldDouble& own, const Arguments&) { return windows::VariantOf(own.rows_->Field(own.name_)); }},
        {"type",
         [](const FieldDouble& own, const Arguments&) {
           return Number(own.rows_->DefinedSize(own.name_) > 0 ? kLimitedText : kLongText);
         }},
        {"definedsize", [](const FieldDouble& own, const Arguments&) {
           const auto size = own.rows_->DefinedSize(own.name_);
           return Number(size > 0 ? size : kNoLimit);
         }}};
    return members;
  }
  void SetMember(const std::string& name, const Variant& value) override {
    if (!SameName(name, "Value")) return Double::SetMember(name, value);
    rows_->SetField(name_, windows::ValueOf(value));
  }

 private:
  Rows rows_;
  std::string name_;
};

class FieldsDouble : public Double<FieldsDouble> {
 public:
  explicit FieldsDouble(Rows rows) : rows_(std::move(rows)) {}

 protected:
  [[nodiscard]] const Table& Members() const override {
    static const Table members = {
        {"count", [](const FieldsDouble& own, const Arguments&) { return Number(own.rows_->FieldCount()); }},
        {"item", [](const FieldsDouble& own, const Arguments& given) {
           const auto& which = given.at(0);
           auto name =
               which.Value().vt == VT_BSTR ? which.Text() : own.rows_->FieldName(static_cast<int>(which.Number()));
           static_cast<void>(own.rows_->DefinedSize(name));  // raises for a name that is none
           return ObjectVariant(new FieldDouble(own.rows_, std::move(name)));
         }}};
    return members;
  }

 private:
  Rows rows_;
};

class ConnectionDouble : public Double<ConnectionDouble> {
 public:
  [[nodiscard]] ado::Connection& Inner() const { return *connection_; }

 protected:
  [[nodiscard]] const Table& Members() const override;
  void SetMember(const std::string& name, const Variant& value) override {
    if (SameName(name, "ConnectionString")) {
      text_ = value.Text();
      connection_->SetConnectionString("Provider=SQLITE;Data Source=" + sqlite::ParseConnectionText(text_).dataSource);
    } else if (SameName(name, "Mode")) {
      connection_->SetMode(static_cast<ado::ConnectMode>(value.Number()));
    } else if (SameName(name, "CursorLocation")) {
      connection_->SetCursorLocation(static_cast<ado::CursorLocation>(value.Number()));
    } else if (SameName(name, "ConnectionTimeout")) {
      connection_->SetConnectionTimeout(static_cast<int>(value.Number()));
    } else {
      Double::SetMember(name, value);
    }
  }

 private:
  static SqliteProvider& Engine() {
    static SqliteProvider engine;
    return engine;
  }

  std::string text_;
  std::unique_ptr<ado::Connection> connection_ = Engine().CreateConnection();
};

class RecordsetDouble : public Double<RecordsetDouble> {
 public:
  RecordsetDouble() = default;
  explicit RecordsetDouble(Rows rows) { Take(std::move(rows)); }

 protected:
  [[nodiscard]] const Table& Members() const override {
    static const Table members = {
        {"open",
         [](const RecordsetDouble& own, const Arguments& given) {
           const auto& connection = static_cast<const ConnectionDouble&>(*given.at(1).Value().pdispVal);
           own.Take(connection.Inner().OpenRecordset(given.at(0).Text(),
                                                     static_cast<ado::CursorType>(given.at(2).Number()),
                                                     static_cast<ado::LockType>(given.at(3).Number())));
           return Variant();
         }},
        {"state", [](const RecordsetDouble& own,
                     const Arguments&) { return Number(own.rows_ ? static_cast<long>(own.rows_->State()) : 0); }},
        {"bof", [](const RecordsetDouble& own, const Arguments&) { return Variant(own.isEmpty_ && own.rows_->Eof()); }},
        {"eof", [](const RecordsetDouble& own, const Arguments&) { return Variant(own.rows_->Eof()); }},
        {"recordcount", [](const RecordsetDouble& own, const Arguments&) { return Number(own.rows_->RecordCount()); }},
        {"fields",
         [](const RecordsetDouble& own, const Arguments&) { return ObjectVariant(new FieldsDouble(own.rows_)); }},
        {"editmode",
         [](const RecordsetDouble& own, const Arguments&) {
           const auto mode = own.rows_->EditState();
           if (mode == ado::EditMode::None && own.rows_->Eof()) throw PlatformError(kNoCurrentRecord);
           return Number(static_cast<long>(mode));
         }},
        {"movefirst",
         [](const RecordsetDouble& own, const Arguments&) {
           if (own.isEmpty_) throw PlatformError(kNoCurrentRecord);
           own.rows_->MoveFirst();
           return Variant();
         }},
        {"movenext",
         [](const RecordsetDouble& own, const Arguments&) {
           own.rows_->MoveNext();
           return Variant();
         }},
        {"find",
         [](const RecordsetDouble& own, const Arguments& given) {
           if (own.rows_->Eof()) throw PlatformError(kNoCurrentRecord);
           own.rows_->Find(given.at(0).Text());
           return Variant();
         }},
        {"addnew",
         [](const RecordsetDouble& own, const Arguments&) {
           own.rows_->AddNew();
           return Variant();
         }},
        {"update",
         [](const RecordsetDouble& own, const Arguments&) {
           own.rows_->Update();
           own.isEmpty_ = false;
           return Variant();
         }},
        {"cancelupdate",
         [](const RecordsetDouble& own, const Arguments&) {
           own.rows_->CancelUpdate();
           return Variant();
         }},
        {"close", [](const RecordsetDouble& own, const Arguments&) {
           own.rows_->Close();
           return Variant();
         }}};
    return members;
  }

 private:
  void Take(Rows rows) const {
    rows_ = std::move(rows);
    isEmpty_ = rows_->State() == ado::ObjectState::Open && rows_->Eof();
  }

  mutable Rows rows_;
  mutable bool isEmpty_ = false;
};

const ConnectionDouble::Table& ConnectionDouble::Members() const {
  static const Table members = {
      {"mode", nullptr},
      {"cursorlocation", nullptr},
      {"connectiontimeout", nullptr},
      {"state", [](const ConnectionDouble& own,
                   const Arguments&) { return Number(static_cast<long>(own.connection_->State())); }},
      {"connectionstring",
       [](const ConnectionDouble& own, const Arguments&) { return Variant(std::string_view(own.text_)); }},
      {"provider",
       [](const ConnectionDouble& own, const Arguments&) {
         return Variant(std::string_view(sqlite::ParseConnectionText(own.text_).provider));
       }},
      {"open",
       [](const ConnectionDouble& own, const Arguments&) {
         own.connection_->Open();
         return Variant();
       }},
      {"close",
       [](const ConnectionDouble& own, const Arguments&) {
         own.connection_->Close();
         return Variant();
       }},
      {"execute", [](const ConnectionDouble& own, const Arguments& given) {
         std::int64_t affected = 0;
         Rows rows = own.connection_->Execute(given.at(0).Text(), &affected);
         static_cast<void>(own.GiveByReference(1, Number(affected)));  // it may be left out
         return ObjectVariant(new RecordsetDouble(std::move(rows)));
       }}};
  return members;
}

}  // namespace

IDispatch* MakeConnection() { return new ConnectionDouble; }
IDispatch* MakeRecordset() { return new RecordsetDouble; }

}  // namespace twqb::doubles

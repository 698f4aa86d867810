#include "adapters/windows/ado/AdoProvider.h"

#include <array>
#include <string>

#include "adapters/windows/ado/AdoValues.h"
#include "adapters/windows/late/LateObject.h"
#include "platform/PlatformError.h"

namespace twqb::windows {

namespace {

constexpr long kText = 1;  // what is executed, or opened, is a statement
constexpr long kIsOpen = 1;

template <typename... Arguments>
std::vector<Variant> List(Arguments&&... arguments) {
  std::vector<Variant> list;
  (list.push_back(std::forward<Arguments>(arguments)), ...);
  return list;
}

bool IsTrue(const Variant& flag) { return flag.Number() != 0; }

ado::ObjectState StateOf(LateObject& object) {
  return (object.Get("State").Number() & kIsOpen) != 0 ? ado::ObjectState::Open : ado::ObjectState::Closed;
}

class AdoRecordset : public ado::Recordset {
 public:
  explicit AdoRecordset(LateObject object) : object_(std::move(object)) {}
  ~AdoRecordset() override {
    try {
      if (State() == ado::ObjectState::Closed) return;
      // An edit that is pending must not be written, and would keep it from closing.
      if (EditState() != ado::EditMode::None) object_.Call("CancelUpdate");
      object_.Call("Close");
    } catch (const PlatformError&) {
      // Its connection has gone.
    }
  }
  AdoRecordset(const AdoRecordset&) = delete;
  AdoRecordset& operator=(const AdoRecordset&) = delete;

  ado::ObjectState State() const override { return StateOf(object_); }
  void Close() override {
    RequireNoEdit();
    object_.Call("Close");
  }

  bool Eof() const override { return IsTrue(object_.Get("EOF")); }
  void MoveFirst() override {
    RequireNoEdit();
    if (!IsEmpty()) object_.Call("MoveFirst");
  }
  void MoveNext() override {
    RequireNoEdit();
    object_.Call("MoveNext");
  }
  std::int64_t RecordCount() const override { return object_.Get("RecordCount").Number(); }
  void Find(std::string_view criterion) override {
    RequireNoEdit();
    // A set without a row has none to begin at, and nothing that could be found.
    if (!IsEmpty() && !Eof()) object_.Call("Find", List(Variant(criterion)));
  }

  int FieldCount() const override { return static_cast<int>(Fields().Get("Count").Number()); }
  std::string FieldName(int index) const override { return Item(Variant(static_cast<long>(index))).Get("Name").Text(); }
  Value Field(std::string_view name) const override { return ValueOf(Item(Variant(name)).Get("Value")); }
  Value FieldAt(int index) const override { return ValueOf(Item(Variant(static_cast<long>(index))).Get("Value")); }
  int DefinedSize(std::string_view name) const override {
    auto field = Item(Variant(name));
    // char, wide char, and both of varying length; the long ones have no limit that anyone keeps.
    constexpr std::array<long, 4> kLimited = {129, 130, 200, 202};
    const auto type = field.Get("Type").Number();
    for (const auto limited : kLimited) {
      if (type == limited) return static_cast<int>(field.Get("DefinedSize").Number());
    }
    return 0;
  }

  ado::EditMode EditState() const override {
    try {
      return static_cast<ado::EditMode>(object_.Get("EditMode").Number());
    } catch (const PlatformError&) {
      return ado::EditMode::None;  // without a current row it is an error to ask
    }
  }
  void AddNew() override {
    RequireNoEdit();
    object_.Call("AddNew");
  }
  void SetField(std::string_view name, Value value) override { Item(Variant(name)).Put("Value", VariantOf(value)); }
  void Update() override { object_.Call("Update"); }
  void CancelUpdate() override { object_.Call("CancelUpdate"); }

 private:
  [[nodiscard]] LateObject Fields() const { return object_.GetObject("Fields"); }
  [[nodiscard]] LateObject Item(Variant which) const { return Fields().GetObject("Item", List(std::move(which))); }
  [[nodiscard]] bool IsEmpty() const { return IsTrue(object_.Get("BOF")) && Eof(); }
  // Moving off a row saves it without a word.
  void RequireNoEdit() const {
    if (EditState() != ado::EditMode::None) throw PlatformError(error::kEditPending);
  }

  mutable LateObject object_;
};

class AdoConnection : public ado::Connection {
 public:
  explicit AdoConnection(LateObject object) : object_(std::move(object)) {}

  ado::ObjectState State() const override { return StateOf(object_); }
  void SetMode(ado::ConnectMode mode) override { object_.Put("Mode", Variant(static_cast<long>(mode))); }
  void SetCursorLocation(ado::CursorLocation location) override {
    object_.Put("CursorLocation", Variant(static_cast<long>(location)));
  }
  void SetConnectionTimeout(int seconds) override {
    object_.Put("ConnectionTimeout", Variant(static_cast<long>(seconds)));
  }
  std::string ConnectionString() const override { return object_.Get("ConnectionString").Text(); }
  void SetConnectionString(std::string text) override {
    object_.Put("ConnectionString", Variant(std::string_view(text)));
  }
  std::string Provider() const override { return object_.Get("Provider").Text(); }

  void Open() override { object_.Call("Open"); }
  void Close() override { object_.Call("Close"); }

  std::unique_ptr<ado::Recordset> Execute(std::string_view statement, std::int64_t* rowsAffected) override {
    Variant affected;
    Variant reference;
    reference.Get()->vt = VT_BYREF | VT_VARIANT;
    reference.Get()->pvarVal = affected.Get();
    auto rows = object_.CallObject("Execute", List(Variant(statement), std::move(reference), Variant(kText)));
    if (rowsAffected != nullptr) *rowsAffected = affected.Number();
    return std::make_unique<AdoRecordset>(std::move(rows));
  }

  std::unique_ptr<ado::Recordset> OpenRecordset(std::string_view statement, ado::CursorType cursor,
                                                ado::LockType lock) override {
    auto rows = LateObject::Create("ADODB.Recordset");
    rows.Call("Open", List(Variant(statement), object_.AsVariant(), Variant(static_cast<long>(cursor)),
                           Variant(static_cast<long>(lock)), Variant(kText)));
    return std::make_unique<AdoRecordset>(std::move(rows));
  }

 private:
  mutable LateObject object_;
};

}  // namespace

std::unique_ptr<ado::Connection> AdoProvider::CreateConnection() {
  return std::make_unique<AdoConnection>(LateObject::Create("ADODB.Connection"));
}

}  // namespace twqb::windows

#include <fmt/core.h>

#include <memory>

#include "engine/FreeKey.h"
#include "engine/ListTable.h"
#include "engine/PairMoves.h"
#include "services/Conversions.h"
#include "services/ModuleVariables.h"
#include "services/RecordInHand.h"
#include "services/Sql.h"

namespace twqb {

namespace {

class ListGetWork final : public RecordWork {
 public:
  ListGetWork(const ListTable& list, const GetCall& call) : list_(list), get_(list.get), rule_(call.rule) {}

  void Prepare(RecordWalk& /*walk*/) override {
    if (get_.begin != nullptr) state_ = get_.begin();
  }

  [[nodiscard]] std::optional<std::string> ShownOf(const Record& record) const override {
    return record[get_.progressField].GetValueOrEmpty();
  }

  RecordEnd TakeRecord(RecordWalk& walk, const Record& record) override {
    GetRecord inHand{
        .record = record, .dependent = walk.IsDependent(), .connection = walk.Connection(), .ownerKey = {}};
    if (const auto admission = get_.admit == nullptr ? Admission::Admitted : get_.admit(inHand);
        admission != Admission::Admitted) {
      if (IsObserved()) NoteIdentifier(record["ListID"].GetValueOrEmpty());
      if (admission == Admission::PassedOver) NoteFateAtLast(Fate::PassedOver, "the table does not take such records");
      return admission == Admission::Lacking ? RecordEnd::Lacking : RecordEnd::Done;
    }
    const auto listId = record["ListID"].GetValue();
    NoteIdentifier(listId);
    OpenLookup(walk, listId);
    const bool known = !lookup_->Eof();
    if (known ? !FindRow(walk, record, listId) : !AddRow(walk, inHand)) return RecordEnd::Done;
    auto& rows = walk.Rows();
    NoteKeyOf(rows, list_.keyColumn);
    WriteColumns(get_, rows, record);
    rows.SetField("QBLinkID", listId);
    rows.SetField("LastUpdated", LocalToUTC(TheMachine().Now()));
    rows.Update();
    NoteFate(known ? Fate::Changed : Fate::Added);
    if (get_.afterUpdate != nullptr) get_.afterUpdate();
    return RecordEnd::Done;
  }

  void Abandon() override { lookup_.reset(); }

 private:
  // Positions on the twin; False when it is to stay as it is.
  bool FindRow(RecordWalk& walk, const Record& record, const std::string& listId) {
    walk.Name(record[get_.nameField].GetValue());
    CloseLookup();
    if (rule_ == TwinRule::LeaveAlone) {
      NoteFate(Fate::LeftAsItWas, kNeverChanged);
      return false;
    }
    const bool moves = FindRowToChange(walk.Rows(), listId, rule_, record, list_.fallbackDateColumn);
    if (!moves) NoteKeyOf(walk.Rows(), list_.keyColumn);
    return moves;
  }

  // A new row under a key that is free: the name, with a counter behind it where it is taken.
  bool AddRow(RecordWalk& walk, GetRecord& record) {
    CloseLookup();
    walk.Name(record.record[get_.nameField].GetValue());
    auto& rows = walk.Rows();
    if (get_.addRow != nullptr) {
      get_.addRow(rows, record);
      return true;
    }
    const auto base = ReplaceJunkChars(walk.Name());
    // The cut stands behind the appending and ahead of the lookup.
    const auto key = FreeKey(
        walk.Connection(), {.table = list_.tableName, .column = list_.keyColumn}, walk.Name(), [&](int counter) {
          return CutTo(rows, list_.keyColumn, counter == 0 ? base : fmt::format("{}{}", base, counter));
        });
    rows.AddNew();
    rows.SetField(list_.keyColumn, key);
    if (get_.startRow != nullptr) get_.startRow(rows, record.record, state_.get());
    return true;
  }

  // Identifiers hold no quote.
  void OpenLookup(RecordWalk& walk, std::string_view listId) {
    lookup_ = walk.Connection().OpenRecordset(
        Sql("SELECT QBLinkID from {} WHERE {}QBLinkID = '{}';", list_.tableName, get_.linkCondition, listId),
        ado::CursorType::Static, ado::LockType::ReadOnly);
  }
  void CloseLookup() {
    lookup_->Close();
    lookup_.reset();
  }

  const ListTable& list_;
  const ListGet& get_;
  const TwinRule rule_;
  std::unique_ptr<ado::Recordset> lookup_;
  std::unique_ptr<GetState> state_;
};

}  // namespace

void GetList(const ListTable& list, const GetCall& call) {
  ListGetWork work(list, call);
  RecordWalk(list.get.texts, list.tableName, call).Walk(list.get.progressFrom, work);
}

}  // namespace twqb

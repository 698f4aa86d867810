// The box of an error inside a record, naming the record: the library's box says what broke, and where in the program.
//
// Stands next to the person, so that transcript and faults see the box as the library shows it.
#pragma once

#include <fmt/core.h>

#include <string>
#include <utility>

#include "cli/options/TableArgument.h"
#include "platform/Forwarding.h"
#include "services/RunObserver.h"

namespace twqb::cli {

class NamingDesk : public ForwardingDesk {
 public:
  using ForwardingDesk::ForwardingDesk;

  // The box that is shown next is about this record.
  void NameInNextBox(std::string record) { record_ = std::move(record); }

  BoxAnswer ShowMessageBox(const MessageBox& box) override {
    if (record_.empty()) return ForwardingDesk::ShowMessageBox(box);
    auto named = box;
    named.text += fmt::format("\r\n\r\nIn {}.", std::exchange(record_, {}));
    return ForwardingDesk::ShowMessageBox(named);
  }

 private:
  std::string record_;
};

// Hears of an error ahead of its box, and hands everything on. A box that comes behind the record is about another.
class NamingObserver final : public RunObserver {
 public:
  // Both must outlive the object.
  NamingObserver(RunObserver& inner, NamingDesk& desk) : inner_(inner), desk_(desk) {}

  void RecordTold(const RecordAccount& record) override {
    desk_.NameInNextBox({});
    inner_.RecordTold(record);
  }
  void ErrorTold(const ErrorAccount& error) override {
    const auto& name = error.key.empty() ? error.identifier : error.key;
    const bool isNamed = error.table && error.toldBy == ToldBy::Box && !name.empty();
    desk_.NameInNextBox(isNamed ? RecordName(static_cast<enTables>(error.table->number), name) : std::string());
    inner_.ErrorTold(error);
  }
  void WalkEnded(const TableInHand& table, const Extent& extent) override { inner_.WalkEnded(table, extent); }
  void LostLinkTold(const LostLinkAccount& link) override { inner_.LostLinkTold(link); }
  void LikelyTwinsTold(const LikelyTwinsAccount& twins) override { inner_.LikelyTwinsTold(twins); }
  void TableSkipped(const TableInHand& table) override { inner_.TableSkipped(table); }
  void TableEnded(const TableInHand& table, std::string_view narrowed) override {
    desk_.NameInNextBox({});
    inner_.TableEnded(table, narrowed);
  }

 private:
  RunObserver& inner_;
  NamingDesk& desk_;
};

}  // namespace twqb::cli

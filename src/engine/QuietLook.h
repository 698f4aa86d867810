// For as long as it stands, what the library does is a look that nobody is to notice: boxes are not shown but kept,
// pauses are not made, and no observer hears of it.
//
// For looks that go a part of a transfer's way. It keeps nothing from being written; who looks writes nothing.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/Forwarding.h"
#include "services/ModuleVariables.h"

namespace twqb {

class QuietLook {
 public:
  QuietLook()
      : platform_(Vars().platform),
        run_(Vars()),
        observer_(std::exchange(Vars().observer, nullptr)),
        inHand_(std::exchange(Vars().inHand, nullptr)),
        tableInHand_(std::exchange(Vars().tableInHand, nullptr)),
        newLink_(Vars().g_NewQBLinkID),
        desk_(*platform_.desk),
        machine_(*platform_.machine) {
    Vars().platform.desk = &desk_;
    Vars().platform.machine = &machine_;
  }
  ~QuietLook() {
    Vars().platform = platform_;
    static_cast<Run&>(Vars()) = run_;
    Vars().observer = observer_;
    Vars().inHand = inHand_;
    Vars().tableInHand = tableInHand_;
    Vars().g_NewQBLinkID = newLink_;
  }
  QuietLook(const QuietLook&) = delete;
  QuietLook& operator=(const QuietLook&) = delete;

  // The texts of the boxes since this was last asked.
  [[nodiscard]] std::vector<std::string> TakeBoxes() { return std::exchange(desk_.boxes, {}); }

 private:
  class KeepingDesk : public ForwardingDesk {
   public:
    using ForwardingDesk::ForwardingDesk;
    BoxAnswer ShowMessageBox(const MessageBox& box) override {
      boxes.push_back(box.text);
      switch (box.buttons) {
        case BoxButtons::YesNo:
          return BoxAnswer::No;
        case BoxButtons::RetryCancel:
          return BoxAnswer::Cancel;
        case BoxButtons::Ok:
          break;
      }
      return BoxAnswer::Ok;
    }
    std::optional<std::string> PickVendor(const std::string& /*message*/,
                                          const std::vector<std::string>& /*choices*/) override {
      return std::nullopt;
    }
    std::vector<std::string> boxes;
  };
  // A pause is for QuickBooks, which gets nothing; and what a look meets is no matter for the log.
  class HurryingMachine : public ForwardingMachine {
   public:
    using ForwardingMachine::ForwardingMachine;
    void Sleep(std::int64_t /*milliseconds*/) override {}
    void AppendLine(const std::string& /*path*/, std::string_view /*line*/) override {}
  };

  Platform platform_;
  Run run_;
  RunObserver* observer_;
  RecordInHand* inHand_;
  const TableInHand* tableInHand_;
  std::string newLink_;
  KeepingDesk desk_;
  HurryingMachine machine_;
};

}  // namespace twqb

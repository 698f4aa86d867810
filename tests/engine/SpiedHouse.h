// A test house whose wire and statements are written down, and whose calls can be made to fail.
//
// For the tests of the engine and of the layers above it. The spies stand next to the library, scripted faults behind
// them: a document or statement counts as sent even when a fault strikes it.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/faults/Faults.h"
#include "platform/Text.h"
#include "quickbooks/QBSessionManager.h"
#include "services/ModuleVariables.h"
#include "tests/support/TestHouse.h"

namespace twqb {

// What crossed a seam, in order.
struct Traffic {
  std::vector<std::string> documents;
  std::vector<std::string> statements;
  std::deque<std::string> canned;  // answers given instead of QuickBooks' own, first come first served
};

class SpiedHouse : public TestHouse {
 public:
  // `faults` is the text of a faults file.
  explicit SpiedHouse(HouseOptions options = {}, std::string_view faults = {});
  ~SpiedHouse();

  // The seams that the library is composed with.
  [[nodiscard]] Platform Spied();
  void EnterSpied();
  [[nodiscard]] FaultPlatform& Faults();

  // A session as after a found edition, without the questions of a first run.
  void Connect(std::string_view country = "US");
  [[nodiscard]] static QBSessionManager& Session();

  void Setting(std::string_view section, std::string_view key, std::string_view value);
  [[nodiscard]] std::string SettingOf(std::string_view section, std::string_view key);

  // Adds a customer with its fields in wire order, names included; its ListID.
  std::string AddCustomer(std::string_view fields, std::string_view tag = "3.0");
  // Adds a job below a customer; its ListID.
  std::string AddJob(std::string_view name, std::string_view parentId);
  // The value of an element of the customer with that identifier; "(none)" when it has none.
  std::string CustomerField(std::string_view listId, std::string_view element, std::string_view tag = "3.0");

  // The insides of all requests of that name that went over the wire, in order.
  [[nodiscard]] std::vector<std::string> Requests(std::string_view name) const;
  [[nodiscard]] static std::vector<std::string> RequestsOf(std::string_view document, std::string_view name);
  // The text of the first element of that name; "(none)" without one.
  [[nodiscard]] static std::string TextOf(std::string_view xml, std::string_view element);

  // The actions that the progress form was shown with.
  [[nodiscard]] std::vector<std::string> FormTexts() const;

  Traffic traffic;

 private:
  struct Spies;
  std::unique_ptr<Spies> spies_;
};

// What ErrorHandler shows for an error of the general kind.
[[nodiscard]] std::string ErrorBoxEnd(std::string_view routine);
// QuickBooks' refusal in the common words.
[[nodiscard]] std::string RefusalText(std::string_view message, int code, std::string_view severity);

}  // namespace twqb

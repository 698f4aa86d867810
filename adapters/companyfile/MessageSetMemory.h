// What becomes of a message set that carries an identifier, so that a program can learn after a crash whether its set
// was carried out, and a set that comes again does nothing twice.
//
// How QuickBooks takes this is settled in the main, and open in places. There the file takes the reading that is harder
// for a program (RecoveryReading::Strict), so that one that gets along with it gets along with either; the condition
// "recovery" sets the other one. At what moment an answer is stored is a question of its own (RecoveryReading::Late):
// where that is behind the work, a program that gets along with it has to do without QuickBooks' memory. What the
// readings are stands at each place in the source.
#pragma once

#include <optional>
#include <string>

#include "adapters/companyfile/CompanyConditions.h"
#include "adapters/companyfile/CompanyStore.h"
#include "adapters/companyfile/MessageSetStore.h"
#include "adapters/companyfile/RequestSet.h"
#include "platform/machine.h"

namespace twqb::company {

// The answer to a set: what stands inside its element, and what its element carries.
struct SetAnswer {
  std::string elements;
  std::string newId;        // newMessageSetID; empty: it has none
  std::optional<int> code;  // messageSetStatusCode
};

class MessageSetMemory {
 public:
  // What is given must outlive the object. Nothing is looked up for a set without attributes of recovery. Raises
  // `error::kParse` for attributes that the version of the set does not have.
  MessageSetMemory(CompanyStore& store, const std::string& application, const RequestSet& set, Machine& machine);

  // The answer to a set that is not to be carried out: one that came before, one that only asks or clears, or one whose
  // attributes are wrong. Nothing for one that is to be carried out; what it replaces is gone then. Inside the
  // transaction that the set is carried out in.
  [[nodiscard]] std::optional<SetAnswer> AnswerWithoutRunning();

  // Makes `elements`, the answers of a set that was carried out, its answer, and remembers it where that becomes
  // durable together with what the set did.
  [[nodiscard]] SetAnswer Finish(std::string elements);
  // The same where it is remembered afterwards, in a transaction of its own. What the set did is durable already, so a
  // failure is told in the answer.
  void RememberAfterwards(SetAnswer& answer);

 private:
  [[nodiscard]] bool IsStrict() const { return reading_ != RecoveryReading::Lenient; }
  [[nodiscard]] SetAnswer Coded(int code, std::string elements = {}) const;
  [[nodiscard]] SetAnswer AnswerStatusCheck();
  [[nodiscard]] std::optional<SetAnswer> AnswerOldAlone();
  [[nodiscard]] std::string Remembered(const StoredSet& set) const;
  void Put(const std::optional<std::string>& answer);
  [[nodiscard]] bool IsSameContent(const StoredSet& set) const;

  CompanyStore& store_;
  const RequestSet& set_;
  const SetAttributes& attributes_;
  MessageSetStore sets_;
  Machine& machine_;
  RecoveryReading reading_ = RecoveryReading::Strict;
  // Of the set in each reading, so that the condition can change under a set that is stored.
  std::string strictChecksum_;
  std::string lenientChecksum_;
};

}  // namespace twqb::company

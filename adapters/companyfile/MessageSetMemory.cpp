#include "adapters/companyfile/MessageSetMemory.h"

#include <fmt/core.h>

#include <pugixml.hpp>

#include "adapters/companyfile/CompanyClock.h"
#include "adapters/companyfile/RefusedDocument.h"
#include "adapters/companyfile/XmlText.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"

namespace twqb::company {

namespace {

constexpr int kInOrder = 0;
constexpr int kNothingStored = 600;  // under the old identifier; it can mean that another company file is open now
constexpr int kOtherContent = 9001;
constexpr int kNoStoredAnswer = 9002;  // the set may have run
constexpr int kIdTooLong = 9004;
constexpr int kAnswerNotStored = 9005;  // though the set has run

constexpr std::string_view kClearAll = "ClearAllMessageSets";
constexpr messages::Version kFirstVersion = {2, 0};
constexpr char kAndLeniently = '/';  // between the two checksums of a set

// Whether identifiers of 24 characters are taken is not settled.
constexpr std::size_t LongestId(RecoveryReading reading) { return reading == RecoveryReading::Lenient ? 24 : 23; }

std::string ChecksumOf(std::string_view text) { return fmt::format("{:016x}-{}", HashOf(text), text.size()); }

// The answers with their statuses, without the records in them.
std::string WithoutRecords(const std::string& elements) {
  pugi::xml_document answers;
  answers.load_buffer(elements.data(), elements.size(),
                      pugi::parse_minimal | pugi::parse_escapes | pugi::parse_fragment, pugi::encoding_utf8);
  std::string text;
  for (const auto answer : answers.children()) {
    text.append("<").append(answer.name());
    for (const auto attribute : answer.attributes()) AppendAttribute(text, attribute.name(), attribute.value());
    text.append(">");
    AppendCloseTag(text, answer.name());
  }
  return text;
}

}  // namespace

MessageSetMemory::MessageSetMemory(CompanyStore& store, const std::string& application, const RequestSet& set,
                                   Machine& machine)
    : store_(store), set_(set), attributes_(set.Attributes()), sets_(store.Database(), application), machine_(machine) {
  if (!attributes_.written) return;
  reading_ = store.ReadConditions().recovery;
  // The published schemas with these attributes begin with version 2.0; older documents are said to have had them too.
  if (IsStrict() && set.GetForm().version < kFirstVersion) {
    RefuseDocument("The attributes of the set are not known in this message version.");
  }
  if (attributes_.newId.empty()) return;
  // What a checksum is of is not settled: all that decides what is done, to the letter, or what the requests say.
  strictChecksum_ = ChecksumOf(fmt::format("{} {} {}", messages::FormTag(set.GetForm()),
                                           set.GetOnError() == OnError::Stop ? "stop" : "continue", set.ContentText()));
  lenientChecksum_ = ChecksumOf(set.ParsedContent());
}

std::optional<SetAnswer> MessageSetMemory::AnswerWithoutRunning() {
  const auto& newId = attributes_.newId;
  const auto& oldId = attributes_.oldId;
  if (newId.empty() && oldId.empty()) return std::nullopt;
  const auto longest = LongestId(reading_);
  if (CharacterCount(newId) > longest || CharacterCount(oldId) > longest) return Coded(kIdTooLong);
  if (newId.empty()) return AnswerOldAlone();
  if (newId == oldId && set_.Requests().empty()) return AnswerStatusCheck();
  if (const auto stored = sets_.Find(newId)) {
    if (!stored->answer || !IsSameContent(*stored)) return Coded(kOtherContent);
    return Coded(kInOrder, Remembered(*stored));
  }
  if (!oldId.empty()) sets_.Remove(oldId);
  return std::nullopt;
}

SetAnswer MessageSetMemory::AnswerStatusCheck() {
  const auto stored = sets_.Find(attributes_.newId);
  if (stored && stored->answer) return Coded(kInOrder, Remembered(*stored));
  // Whether an identifier that is not known is told as one that never came or as one that has no answer is not settled,
  // nor whether asking takes the identifier, so that no set can come under it any more.
  if (!IsStrict()) return Coded(kNothingStored);
  if (!stored) Put({});
  return Coded(kNoStoredAnswer);
}

std::optional<SetAnswer> MessageSetMemory::AnswerOldAlone() {
  const bool asksOnly = set_.Requests().empty();
  if (asksOnly && attributes_.oldId == kClearAll) {
    sets_.Clear();
    return Coded(kInOrder);
  }
  const auto stored = sets_.Find(attributes_.oldId);
  if (!stored) return Coded(kNothingStored);
  sets_.Remove(attributes_.oldId);
  if (!asksOnly) return std::nullopt;
  // What a clear hands out of what it cleared is not settled.
  return Coded(kInOrder, IsStrict() ? std::string{} : Remembered(*stored));
}

SetAnswer MessageSetMemory::Finish(std::string elements) {
  SetAnswer answer{.elements = std::move(elements), .newId = {}, .code = {}};
  if (!attributes_.Any()) return answer;
  if (attributes_.data == ResponseData::IncludeNone) answer.elements = WithoutRecords(answer.elements);
  // Whether a set that runs for the first time is answered with its identifier and a code is not settled.
  if (!IsStrict()) {
    answer.newId = attributes_.newId;
    answer.code = kInOrder;
  }
  // At what moment the answer is stored is not settled. Where it is stored behind what the set did, QuickBooks can end
  // between the two: then the identifier is not known, and the work is done all the same.
  if (!attributes_.newId.empty() && reading_ != RecoveryReading::Late) Put(answer.elements);
  return answer;
}

void MessageSetMemory::RememberAfterwards(SetAnswer& answer) {
  if (attributes_.newId.empty() || reading_ != RecoveryReading::Late) return;
  try {
    auto transaction = store_.Begin(SqliteTransaction::Purpose::Write);
    Put(answer.elements);
    transaction.Commit();
  } catch (const PlatformError&) {
    answer = Coded(kAnswerNotStored);
  }
}

SetAnswer MessageSetMemory::Coded(int code, std::string elements) const {
  return {.elements = std::move(elements), .newId = attributes_.newId, .code = code};
}

// What is told of a set beside the statuses of its requests is not settled.
std::string MessageSetMemory::Remembered(const StoredSet& set) const {
  const auto answer = set.answer.value_or(std::string{});
  return IsStrict() || attributes_.data == ResponseData::IncludeNone ? WithoutRecords(answer) : answer;
}

void MessageSetMemory::Put(const std::optional<std::string>& answer) {
  sets_.Put(attributes_.newId, {.checksum = strictChecksum_ + kAndLeniently + lenientChecksum_, .answer = answer},
            ReadClock(machine_).now);
}

bool MessageSetMemory::IsSameContent(const StoredSet& set) const {
  const auto between = set.checksum.find(kAndLeniently);
  // Files of the third format have one checksum, of the reading that was set then, without version and onError.
  if (between == std::string::npos) {
    return set.checksum == ChecksumOf(set_.ContentText()) || set.checksum == lenientChecksum_;
  }
  const std::string_view checksums = set.checksum;
  return IsStrict() ? checksums.substr(0, between) == strictChecksum_
                    : checksums.substr(between + 1) == lenientChecksum_;
}

}  // namespace twqb::company

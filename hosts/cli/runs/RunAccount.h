// What a transfer came to, counted: the host's ear on a run of the library.
//
// It counts, hands each record on to the report, and writes errors that no log knows of into the log. What is printed
// of it is the command's.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "cli/options/Options.h"
#include "cli/runs/ReportFile.h"
#include "cli/runs/Transfers.h"
#include "platform/machine.h"
#include "services/RunObserver.h"

namespace twqb::cli {

class RunAccount final : public RunObserver {
 public:
  // The log is that of `machine`.
  explicit RunAccount(Machine& machine) : machine_(machine) {}

  // From here on each record and error goes into `report`, which must outlive the run.
  void ReportTo(ReportFile& report) { report_ = &report; }

  // The tables that the run is to move, in their order.
  void Expect(std::vector<std::int32_t> tables) { expected_ = std::move(tables); }

  void RecordTold(const RecordAccount& record) override;
  void ErrorTold(const ErrorAccount& error) override;
  void WalkEnded(const TableInHand& table, const Extent& extent) override;
  void CountLostLink(const LostLinkAccount& link);
  void LostLinkTold(const LostLinkAccount& link) override;
  void LikelyTwinsTold(const LikelyTwinsAccount& twins) override;
  void TableSkipped(const TableInHand& table) override;
  void TableEnded(const TableInHand& table, std::string_view narrowed) override;

  // What of the log could not be written, by the library or here; the library's is to be put in.
  [[nodiscard]] LogOfRun& Log() { return log_; }
  // A line for each table that had records, each with its end, that the settings skip, or that a run which came to some
  // table did not reach; of a transfer of one table without any, why.
  [[nodiscard]] std::string Summary(const TransferRequest& request) const;
  // Errors that were told, and records that were refused, in words: "1 error was told"; empty where there were none.
  [[nodiscard]] std::string Troubles() const;

 private:
  static constexpr std::size_t kFates = 6;
  using Counts = std::array<std::int64_t, kFates>;

  struct Tally {
    std::int32_t table = 0;
    Counts records = {};
    Counts lines = {};
    std::int64_t nameInUse = 0;   // of the added: once more, for that reason
    std::int64_t linkUnread = 0;  //
    std::int64_t notReached = 0;
    bool broke = false;  // an error was told
    bool skipped = false;
    bool ended = false;
    std::string narrowed = {};

    [[nodiscard]] bool HasRecords() const;
  };

  [[nodiscard]] Tally& TallyOf(std::int32_t table);
  // A line that can't be written is lost, as those of the library are.
  void Append(const std::string& line);
  static std::string CountsText(const Counts& counts);
  static std::string LineOf(const Tally& tally);
  static std::string WhyNothing(const Tally& tally, const TransferRequest& request);

  Machine& machine_;
  ReportFile* report_ = nullptr;
  LogOfRun log_ = LogOfRun::Whole;
  std::vector<std::int32_t> expected_;
  std::vector<Tally> tallies_;  // in the order in which the tables were met
  std::int64_t errors_ = 0;
  std::int64_t refused_ = 0;
};

}  // namespace twqb::cli

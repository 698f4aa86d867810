#include "cli/runs/Checks.h"

#include <fmt/core.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include "adapters/companyfile/CompanyFile.h"
#include "adapters/system/FileReplacement.h"
#include "adapters/transcript/Masking.h"
#include "cli/options/ExitStatus.h"
#include "cli/options/SystemSides.h"
#include "cli/workplace/Surroundings.h"
#include "cli/workplace/TransferLock.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"

namespace twqb::cli {

namespace {

// BillingDb for as long as it is looked at.
class OpenBilling {
 public:
  explicit OpenBilling(const Workplace& place) {
    connection_->SetConnectionString(place.billing);
    connection_->Open();
  }
  ado::Connection* operator->() const { return connection_.get(); }

 private:
  std::unique_ptr<ado::Provider> provider_ = MakeBillingProvider();
  std::unique_ptr<ado::Connection> connection_ = provider_->CreateConnection();
};

bool IsThere(const std::string& path) {
  std::error_code failure;
  // Where that can't be told, opening the file will tell why.
  return std::filesystem::exists(path, failure) || failure;
}

// By the words of the storage that both sides stand on.
bool IsLocked(const PlatformError& failure) {
  return failure.description().find("database is locked") != std::string::npos;
}

[[noreturn]] void RefuseLocked(std::string_view called, const std::string& file) {
  throw UsageError(fmt::format(
      "{} {} is locked: another program is writing to it and has not let go of it in time.\nStart again when "
      "it is through.",
      called, file));
}

}  // namespace

void CheckBilling(const Workplace& place) {
  try {
    OpenBilling(place)->Close();
  } catch (const PlatformError& failure) {
    if (IsLocked(failure)) RefuseLocked("BillingDb", BillingFileOf(place));
    throw UsageError(fmt::format("BillingDb: {}\nRun \"twqb init\" in this folder, or name a database with --billing.",
                                 MaskPasswords(failure.description())));
  }
}

void CheckCompany(const Workplace& place) {
  if (!IsThere(place.company)) return;
  const auto machine = MakeMachine(place, std::nullopt);
  try {
    company::CompanyFile(place.company, *machine);
  } catch (const PlatformError& failure) {
    if (IsLocked(failure)) RefuseLocked("The company file", place.company);
    throw UsageError(
        fmt::format("{} can't be used. {}\nName a company file with --company, or make one with \"twqb init\".",
                    place.company, failure.description()));
  }
}

void RequireCompany(const Workplace& place) {
  if (!IsThere(place.company)) RefuseMissingCompany(place.company);
  CheckCompany(place);
}

void CheckSettings(const Workplace& place) {
  const auto refuse = [&](std::string_view doing) {
    throw UsageError(fmt::format(
        "The settings file {} can't be {}: {}.\nName another one with --settings. It need not exist, but its folder "
        "must, and must take files.",
        place.settings, doing, std::generic_category().message(errno)));
  };
  std::error_code ignored;
  if (std::filesystem::is_directory(place.settings, ignored)) {
    errno = EISDIR;
    refuse("read");
  }
  if (IsThere(place.settings) && !OpenForReading(place.settings)) refuse("read");
  if (!FileReplacement::Begin(place.settings)) refuse("written");
}

void CheckSettingsTable(const Workplace& place) {
  if (const auto missing = MissingTables(place, {"TWSTable"}); !missing.empty()) throw UsageError(MissingText(missing));
}

std::vector<std::string_view> MissingTables(const Workplace& place, const std::vector<std::string_view>& tables) {
  std::vector<std::string_view> missing;
  try {
    const OpenBilling connection(place);
    for (const auto name : tables) {
      try {
        connection->Execute(fmt::format("SELECT 1 FROM {} WHERE 1 = 0", name), nullptr);
      } catch (const PlatformError& failure) {
        const bool isNew = std::ranges::find(missing, name) == missing.end();
        if (failure.number() == error::kNoSuchTable && isNew) missing.push_back(name);
      }
    }
  } catch (const PlatformError&) {
    return {};  // it could be opened before: this is about something else
  }
  return missing;
}

std::string MissingText(const std::vector<std::string_view>& missing) {
  return fmt::format("This database has no table {}. \"twqb init\" makes one with all tables.", Join(missing, ", "));
}

}  // namespace twqb::cli

// Makes the four files of a working folder, all of them or none.
//
// It stands under `init` and `demo`. Nothing that is there is ever overwritten.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "adapters/companyfile/CompanyOptions.h"
#include "platform/machine.h"
#include "samples/firm/FirmPlan.h"

namespace twqb::cli {

// The sample firm is the one of samples/billing and samples/company, with all that stands in its books, or with nothing
// booked in QuickBooks yet; others are made by a plan.
enum class Content : std::uint8_t { Empty, Sample, SampleWithoutBookings, Firm };

struct FolderPlan {
  company::CompanyOptions company;
  Content content = Content::Empty;
  firm::FirmPlan firm = {};  // without a fault
};

// Makes billing.db with its tables, company.twq, twqb.ini and registry.ini in `folder`, a full path; with a firm on
// both sides when the plan says so. Raises UsageError, and leaves the folder as it was, when one of the four is there
// already or can't be made, and EndedBySignal likewise. What a making that was killed has left in the folder goes
// first. `machine` tells the time of making.
void MakeFolder(const std::filesystem::path& folder, const FolderPlan& plan, Machine& machine);

}  // namespace twqb::cli

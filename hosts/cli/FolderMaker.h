// Makes the four files of a working folder, all of them or none.
//
// It stands under `init` and `demo`. Nothing that is there is ever overwritten.
#pragma once

#include <filesystem>
#include <string>

#include "adapters/companyfile/CompanyOptions.h"
#include "platform/machine.h"

namespace twqb::cli {

// The sample firm with all that stands in its books, or with nothing booked in QuickBooks yet.
enum class Content : std::uint8_t { Empty, Sample, SampleWithoutBookings };

struct FolderPlan {
  company::CompanyOptions company;
  Content content = Content::Empty;
};

// Makes billing.db with its tables, company.twq, twqb.ini and registry.ini in `folder`, a full path; with the sample
// firm on both sides when the plan says so. Raises UsageError, and leaves the folder as it was, when one of the four is
// there already or can't be made, and EndedBySignal likewise. What a making that was killed has left in the folder goes
// first. `machine` tells the time of making.
void MakeFolder(const std::filesystem::path& folder, const FolderPlan& plan, Machine& machine);

}  // namespace twqb::cli

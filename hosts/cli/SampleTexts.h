// The texts of samples/ as they were when the program was built: the tables of BillingDb, the sample firm, and the
// customers that its QuickBooks has already.
//
// The functions are written by the build (EmbedTexts.cmake). Nothing here runs or reads them.
#pragma once

#include <string_view>

namespace twqb::cli {

// CREATE statements of every table.
[[nodiscard]] std::string_view BillingSchema();
// INSERT statements: the firm's clients, behind them what it works with, and the most of its projects.
[[nodiscard]] std::string_view SampleFirm();
[[nodiscard]] std::string_view SampleWork();
[[nodiscard]] std::string_view SampleProjects();
// A qbXML document of the United States form, version 3.0.
[[nodiscard]] std::string_view SampleCustomers();

}  // namespace twqb::cli

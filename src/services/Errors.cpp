#include "services/Errors.h"

#include <fmt/core.h>

#include <cstdint>

#include "platform/Text.h"
#include "services/ModuleVariables.h"
#include "services/RecordInHand.h"

namespace twqb {

namespace {

constexpr ErrorNumber kNoCommunication = 0x8004040C;
constexpr ErrorNumber kNotInstalled = 0x8007007E;

std::string ErrorBoxText(ErrorNumber number, std::string_view description, std::string_view procedure) {
  switch (number) {
    case kNoCommunication:
      return fmt::format(
          "There was a problem in establishing communication with your\r\n"
          "QuickBooks data file. Please make sure you have opened the correct\r\n"
          "file in QuickBooks and assigned proper permission for this application\r\n"
          "to access the data. If the problem continues, please call your \r\n"
          "software vendor.\r\n\r\nError Number: {}\r\n",
          SignedNumber(number));
    case kNotInstalled:
      // The ampersand and the word behind it have always been part of the text; support knows the box by them.
      return fmt::format(
          "There was a problem in establishing communication with your\r\n"
          "QuickBooks data file. It appears that QuickBooks is not installed properly & vbCrLf"
          "on this computer.\r\n\r\nError Number: {}\r\n",
          SignedNumber(number));
    default:
      return fmt::format(
          "Error #: {}({:X}) -- \r\n\r\n{} has occurred in the following procedure: {}. "
          "Please contact Technical Support for assistance.",
          SignedNumber(number), number, description, procedure);
  }
}

}  // namespace

std::int32_t SignedNumber(ErrorNumber number) { return static_cast<std::int32_t>(number); }

void ErrorHandler(ErrorNumber lngNumber, std::string_view strDescription, std::string_view strProcedure) {
  TellErrorToObserver(strProcedure, lngNumber, strDescription);
  IgnoreErrors([&] {
    TheDesk().ShowMessageBox(
        {.text = ErrorBoxText(lngNumber, strDescription, strProcedure), .title = "WARNING", .icon = BoxIcon::Warning});
  });
  IgnoreErrors([] { TheDesk().PumpMessages(); });
  IgnoreErrors([] { TheDesk().Beep(); });
}

void ShowErrorIn(std::string_view strProcedure, const PlatformError& raised) {
  TellErrorToObserver(strProcedure, raised.number(), raised.description());
  IgnoreErrors([&] {
    TheDesk().ShowMessageBox({.text = fmt::format("Error in '{}()' :- {}\r\nError No = {}", strProcedure,
                                                  raised.description(), SignedNumber(raised.number())),
                              .title = "Error"});
  });
}

void ReportError(ErrorReport report, std::string_view strProcedure, const PlatformError& raised) {
  if (report == ErrorReport::OwnBox) {
    ShowErrorIn(strProcedure, raised);
  } else {
    ErrorHandler(raised.number(), raised.description(), strProcedure);
  }
}

std::string LogFile(Machine& machine) {
  const auto today = machine.Now().ToCivil();
  // The month has no leading zero.
  return fmt::format("{}/TWQBLog{}{}.txt", machine.LibraryFolder(), today.year, today.month);
}

void WriteLog(std::string_view strLine) {
  IgnoreErrors([&] { TheMachine().AppendLine(LogFile(TheMachine()), strLine); });
}

void LogError(std::string_view strProcedure, std::string_view strLine, ErrorNumber number) {
  WriteLog(strLine);
  TellErrorToObserver(strProcedure, number, strLine, ToldBy::Log);
}

}  // namespace twqb

#include <gtest/gtest.h>

#include "adapters/faults/FaultScript.h"

namespace twqb {
namespace {

TEST(FaultScript, A_status_line_names_request_count_code_severity_and_text) {
  const auto script = ParseFaults("CustomerAddRq 2 status 3110 Error \"no \"\"State\"\"\"");
  ASSERT_EQ(script.statuses.size(), 1U);
  EXPECT_TRUE(script.raises.empty());
  const auto& fault = script.statuses.front();
  EXPECT_EQ(fault.request, "CustomerAddRq");
  EXPECT_EQ(fault.nth, 2U);
  EXPECT_EQ(fault.code, 3110);
  EXPECT_EQ(fault.severity, "Error");
  EXPECT_EQ(fault.message, "no \"State\"");
}

TEST(FaultScript, A_raise_line_names_point_count_timing_number_text_and_what_it_concerns) {
  const auto script = ParseFaults("sql 1 raise-after 0x80040E14 \"bad\"  UPDATE Client SET ");
  ASSERT_EQ(script.raises.size(), 1U);
  const auto& fault = script.raises.front();
  EXPECT_EQ(fault.point, FaultPoint::Sql);
  EXPECT_EQ(fault.nth, 1U);
  EXPECT_EQ(fault.timing, FaultTiming::After);
  EXPECT_EQ(fault.number, error::kBadSyntax);
  EXPECT_EQ(fault.description, "bad");
  EXPECT_EQ(fault.what, "UPDATE Client SET");
}

TEST(FaultScript, Comments_blank_lines_tabs_and_line_ends_of_both_kinds_are_passed_over) {
  const auto script =
      ParseFaults("# a comment\r\n\r\n\t \n  connect\t1 raise 0x80004005\r\n  # another\ncopy 1 raise 76");
  ASSERT_EQ(script.raises.size(), 2U);
  EXPECT_EQ(script.raises[0].point, FaultPoint::Connect);
  EXPECT_EQ(script.raises[1].point, FaultPoint::Copy);
}

TEST(FaultScript, An_empty_text_is_an_empty_script) {
  EXPECT_TRUE(ParseFaults("").raises.empty());
  EXPECT_TRUE(ParseFaults("").statuses.empty());
}

TEST(FaultScript, An_error_without_a_text_has_the_published_one) {
  const auto script = ParseFaults("copy 1 raise 76\ncopy 2 raise 76 \"\"\nBeginSession 1 raise 0x80040416");
  EXPECT_EQ(script.raises[0].description, "Path not found");
  EXPECT_EQ(script.raises[1].description, "Path not found");
  EXPECT_EQ(script.raises[2].description, "The call failed with error 0x80040416.");
}

TEST(FaultScript, A_statement_may_follow_the_number_without_a_text) {
  EXPECT_EQ(ParseFaults("sql 1 raise 0x80040E14 UPDATE Client").raises[0].what, "UPDATE Client");
}

TEST(FaultScript, A_number_is_hexadecimal_or_decimal_signed_or_not) {
  const auto script = ParseFaults("copy 1 raise 0X8004041a\ncopy 1 raise 2147746842\ncopy 1 raise -2147220454");
  for (const auto& fault : script.raises) EXPECT_EQ(fault.number, 0x8004041AU);
}

TEST(FaultScript, Settings_take_read_or_write_and_a_key) {
  const auto script = ParseFaults(
      "settings 1 raise 75\nsettings 1 raise 75 read\nsettings 1 raise 75 \"x\" write QBDBPath\n"
      "settings 1 raise 75 QBDBPath");
  EXPECT_EQ(script.raises[0].access, "");
  EXPECT_EQ(script.raises[1].access, "read");
  EXPECT_EQ(script.raises[1].what, "");
  EXPECT_EQ(script.raises[2].access, "write");
  EXPECT_EQ(script.raises[2].what, "QBDBPath");
  EXPECT_EQ(script.raises[3].access, "");
  EXPECT_EQ(script.raises[3].what, "QBDBPath");
}

struct Refused {
  std::string_view line;
  std::string_view message;
};
std::ostream& operator<<(std::ostream& out, const Refused& refused) { return out << refused.line; }
class RefusedLine : public testing::TestWithParam<Refused> {};
TEST_P(RefusedLine, Is_named_with_its_number_its_text_and_what_is_allowed) {
  try {
    (void)ParseFaults("# first\n" + std::string(GetParam().line) + "\n");
    FAIL() << "must be refused";
  } catch (const FaultsError& failure) {
    EXPECT_EQ(failure.line(), 2U);
    EXPECT_EQ(std::string(failure.what()).substr(0, GetParam().message.size()), GetParam().message);
  }
}
INSTANTIATE_TEST_SUITE_P(
    Reasons, RefusedLine,
    testing::Values(
        Refused{"sqll 1 raise 1",
                "line 2: sqll 1 raise 1: \"sqll\" stands where a request element (CustomerAddRq), "
                "CreateTransport, GetVersion, "},
        Refused{"sql", "line 2: sql: nothing stands where the count of the call, from 1, is allowed"},
        Refused{"sql 0 raise 1", "line 2: sql 0 raise 1: \"0\" stands where the count"},
        Refused{"sql 1x raise 1", "line 2: sql 1x raise 1: \"1x\" stands where the count"},
        Refused{"sql 1 fail 1", "line 2: sql 1 fail 1: \"fail\" stands where raise or raise-after is allowed"},
        Refused{"sql 1 status 3110 Error", "line 2: sql 1 status 3110 Error: \"status\" stands where raise or"},
        Refused{"sql 1 raise", "line 2: sql 1 raise: nothing stands where an error number of 32 bits"},
        Refused{"sql 1 raise 0x180040E14", "line 2: sql 1 raise 0x180040E14: \"0x180040E14\" stands where an error"},
        Refused{"sql 1 raise 0x-1", "line 2: sql 1 raise 0x-1: \"0x-1\" stands where an error"},
        Refused{"sql 1 raise 4294967296", "line 2: sql 1 raise 4294967296: \"4294967296\" stands where an error"},
        Refused{"sql 1 raise 1 \"open",
                "line 2: sql 1 raise 1 \"open: \"\"open\" stands where a text with its closing"},
        Refused{"connect 1 raise 1 x",
                "line 2: connect 1 raise 1 x: \"x\" stands where the end of the line is allowed"},
        Refused{"form 1 raise 1 hide",
                "line 2: form 1 raise 1 hide: \"hide\" stands where show, update, unload, vendor"},
        Refused{"callback 1 raise 1 x", "line 2: callback 1 raise 1 x: \"x\" stands where create, mode, text is"},
        Refused{"CustomerAddRq 1 raise 1", "line 2: CustomerAddRq 1 raise 1: \"raise\" stands where status is allowed"},
        Refused{"CustomerAddRq 1 status x Error",
                "line 2: CustomerAddRq 1 status x Error: \"x\" stands where a status"},
        Refused{"CustomerAddRq 1 status 1 Bad",
                "line 2: CustomerAddRq 1 status 1 Bad: \"Bad\" stands where Info, Warn, "
                "Error is allowed"},
        Refused{"CustomerAddRq 1 status 1 Info \"x\" y",
                "line 2: CustomerAddRq 1 status 1 Info \"x\" y: \"y\" stands"}));

}  // namespace
}  // namespace twqb

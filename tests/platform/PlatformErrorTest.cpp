#include <gtest/gtest.h>

#include <set>

#include "platform/PlatformError.h"

namespace twqb {
namespace {

// The table's numbers lie in these blocks, and nothing else in them has a text.
constexpr ErrorNumber kBlocks[] = {0x00000000, 0x80040000, 0x800A0000};
constexpr ErrorNumber kBlockSize = 0x10000;

TEST(PlatformError, No_two_numbers_have_the_same_text) {
  std::set<std::string_view> texts;
  for (const auto block : kBlocks) {
    const auto before = texts.size();
    for (auto number = block; number < block + kBlockSize; ++number) {
      const auto text = ErrorText(number);
      EXPECT_TRUE(text.empty() || texts.insert(text).second) << text;
    }
    EXPECT_GT(texts.size(), before) << HexNumber(block);
  }
}

TEST(PlatformError, The_numbers_are_the_published_ones) {
  EXPECT_EQ(error::kBadSyntax, 0x80040E14U);
  EXPECT_EQ(error::kNoSuchTable, 0x80040E37U);
  EXPECT_EQ(error::kConstraint, 0x80040E2FU);
  EXPECT_EQ(error::kNoSuchField, 0x800A0CC1U);
  EXPECT_EQ(error::kAtEof, 0x800A0BCDU);
  EXPECT_EQ(error::kParse, 0x80040400U);
  EXPECT_EQ(error::kRequestIncomplete, 0x80040307U);
  EXPECT_EQ(error::kObjectNothing, 91U);
  EXPECT_EQ(error::kNameUnknown, 438U);
  EXPECT_EQ(error::kDivisionByZero, 11U);
  EXPECT_EQ(error::kConversion, 13U);
  EXPECT_EQ(error::kInvalidNull, 94U);
}

TEST(PlatformError, Texts_that_users_read_are_the_published_ones) {
  EXPECT_EQ(ErrorText(error::kConversion), "Type mismatch");
  EXPECT_EQ(ErrorText(error::kInvalidNull), "Invalid use of Null");
  EXPECT_EQ(ErrorText(error::kDivisionByZero), "Division by zero");
  EXPECT_EQ(ErrorText(error::kFileNotFound), "File not found");
  EXPECT_EQ(ErrorText(error::kParse), "QuickBooks found an error when parsing the provided XML text stream.");
  EXPECT_EQ(ErrorText(error::kNoSuchField),
            "Item cannot be found in the collection corresponding to the requested name or ordinal.");
  EXPECT_EQ(ErrorText(12345), "");
}

TEST(PlatformError, An_error_carries_its_number_with_the_text_given_or_the_tables) {
  const PlatformError own(0x80040416, "No company file is open.");
  EXPECT_EQ(own.number(), 0x80040416U);
  EXPECT_EQ(own.description(), "No company file is open.");
  EXPECT_STREQ(own.what(), "No company file is open.");
  EXPECT_EQ(PlatformError(error::kConversion).description(), "Type mismatch");
  EXPECT_EQ(PlatformError(12345).description(), "");
}

TEST(PlatformError, A_number_in_hexadecimal_has_eight_upper_case_digits) {
  EXPECT_EQ(HexNumber(0x80040e14), "0x80040E14");
  EXPECT_EQ(HexNumber(13), "0x0000000D");
  EXPECT_EQ(HexNumber(0), "0x00000000");
}

}  // namespace
}  // namespace twqb

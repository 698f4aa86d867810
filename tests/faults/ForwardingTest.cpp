#include <gtest/gtest.h>

#include "platform/Forwarding.h"

namespace twqb {
namespace {

TEST(TableOfSelect, Is_the_word_behind_FROM) {
  EXPECT_EQ(ado::TableOfSelect("SELECT * FROM Client;"), "Client");
  EXPECT_EQ(ado::TableOfSelect("select *  from\r\n Client ;"), "Client");
  EXPECT_EQ(ado::TableOfSelect("SELECT * FROM Client WHERE ClientID = 'FROM x'"), "Client");
  EXPECT_EQ(ado::TableOfSelect("SELECT * FROM Client"), "Client");
}

TEST(TableOfSelect, Loses_its_brackets_and_quotes) {
  EXPECT_EQ(ado::TableOfSelect("SELECT * FROM [Time Entry];"), "Time Entry");
  EXPECT_EQ(ado::TableOfSelect("SELECT * FROM \"Client\";"), "Client");
}

TEST(TableOfSelect, Is_empty_without_FROM) {
  EXPECT_EQ(ado::TableOfSelect("UPDATE Client SET x = 1"), "");
  EXPECT_EQ(ado::TableOfSelect("SELECT * FROM"), "");
  EXPECT_EQ(ado::TableOfSelect(""), "");
}

}  // namespace
}  // namespace twqb

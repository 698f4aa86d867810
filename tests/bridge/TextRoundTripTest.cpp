// Any text that a client can hold goes to QuickBooks and comes back as it was: through the statement, the document, the
// company file, the answer and the recordset.

#include <gtest/gtest.h>

#include <array>
#include <random>

#include "services/Conversions.h"
#include "tests/bridge/BridgeHouse.h"

namespace twqb {
namespace {

constexpr int kClients = 60;
constexpr std::size_t kMostPieces = 5;

// What XML, SQL and the conversions take for their own, and characters of one to four bytes.
const auto kPieces = Split(
    "a|B|7| |  |'|\"|<|>|&|&amp;|]]>|<!--|?>|%|\\|{|}|#|;|:|,|=|--|/*|\xC3\x9C|\xE4\xB8\xAD|\xF0\x9F\x93\x9E|True|NULL|"
    "\r\n|\t|\n",
    '|');
constexpr std::array<std::string_view, 7> kColumns = {"ClientFName", "ClientLName", "ClientStreet", "ClientStreet2",
                                                      "ClientCity",  "ClientState", "ClientEmail"};

class Providers : public testing::TestWithParam<std::string> {};

TEST_P(Providers, Keep_every_text_of_a_client_on_its_way_to_QuickBooks_and_back) {
  BridgeHouse house({.provider = GetParam()});
  std::mt19937 random(31);
  std::vector<std::array<std::string, kColumns.size()>> texts(kClients);
  for (std::size_t i = 0; i < texts.size(); ++i) {
    std::string columns = "ClientID";
    std::string values = "'K" + std::to_string(i) + "'";
    for (std::size_t column = 0; column < kColumns.size(); ++column) {
      auto& text = texts[i][column];
      for (auto left = random() % (kMostPieces + 1); left > 0; --left) text += kPieces[random() % kPieces.size()];
      columns += ", " + std::string(kColumns[column]);
      values += ", '" + FixQuote(text) + "'";
    }
    house.Client(columns, values);
  }
  Bridge bridge(house);
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  house.Sql("DELETE FROM Client");
  EXPECT_TRUE(bridge.GetDataFromQB(enClients));
  EXPECT_TRUE(house.BoxTexts().empty());
  for (std::size_t i = 0; i < texts.size(); ++i) {
    for (std::size_t column = 0; column < kColumns.size(); ++column) {
      EXPECT_EQ(house.ColumnOf("K" + std::to_string(i), kColumns[column]), texts[i][column]) << kColumns[column];
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Texts, Providers, testing::Values("SQLITE", "JETLITE"),
                         [](const auto& provider) { return provider.param; });

}  // namespace
}  // namespace twqb

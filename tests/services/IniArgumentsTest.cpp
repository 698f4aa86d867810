// What the INI store hands to the system: section, key and path as they were given, whatever they are.

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

#include "platform/Forwarding.h"
#include "services/Settings.h"
#include "tests/services/NotingHouse.h"

namespace twqb {
namespace {

struct ProfileCall {
  std::string section;
  std::string key;
  std::string value;  // written, or given as the default
  std::string path;
  friend bool operator==(const ProfileCall&, const ProfileCall&) = default;
};

// A system that notes what it is asked, and answers a read with the default as a real one does.
class AskedMachine : public ForwardingMachine {
 public:
  using ForwardingMachine::ForwardingMachine;
  std::string GetPrivateProfileString(std::string_view section, std::string_view key, std::string_view fallback,
                                      int size, std::string_view path) override {
    sizes.push_back(size);
    calls.push_back({std::string(section), std::string(key), std::string(fallback), std::string(path)});
    return std::string(fallback);
  }
  bool WritePrivateProfileString(std::string_view section, std::string_view key, std::string_view value,
                                 std::string_view path) override {
    calls.push_back({std::string(section), std::string(key), std::string(value), std::string(path)});
    return false;
  }

  std::vector<ProfileCall> calls;
  std::vector<int> sizes;
};

class IniArguments : public testing::TestWithParam<ProfileCall> {};

TEST_P(IniArguments, Reach_the_system_unchanged) {
  TestHouse house;
  AskedMachine machine(house.machine);
  auto seams = house.Seams();
  seams.machine = &machine;
  house.Enter(seams);
  const auto& [section, key, value, path] = GetParam();
  EXPECT_EQ(gf_ReadSettings(section, key, path, value), value);
  EXPECT_TRUE(gf_WriteSettings(section, key, value, path)) << "what the system answers to a write is not looked at";
  EXPECT_EQ(machine.calls, (std::vector<ProfileCall>{GetParam(), GetParam()}));
  EXPECT_EQ(machine.sizes, std::vector<int>{255});
  EXPECT_TRUE(house.desk.Boxes().empty());
}

INSTANTIATE_TEST_SUITE_P(IniSettings, IniArguments,
                         testing::Values(ProfileCall{"GENERAL", "QBDBPath", "x.qbw", "C:\\TW\\tw.ini"},
                                         ProfileCall{"", "QBDBPath", "x", "C:\\TW\\tw.ini"},
                                         ProfileCall{"GENERAL", "QBDBPath", "x", ""}, ProfileCall{"", "", "", ""},
                                         ProfileCall{" QBSEND_ ", "Clients_ChkSkip", "", "tw.ini"},
                                         ProfileCall{"QBSEND_", "O'Neil", "it's", "it's.ini"}));

}  // namespace
}  // namespace twqb

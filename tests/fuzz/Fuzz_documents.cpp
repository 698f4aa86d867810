// Documents into the embedded company file: whatever comes in, it answers with a well-formed document or refuses with
// its published number, and what it holds stays sound.

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <pugixml.hpp>
#include <string_view>

#include "adapters/companyfile/CompanyFile.h"
#include "adapters/system/FrozenMachine.h"
#include "platform/PlatformError.h"
#include "quickbooks/ResponseModel.h"

namespace {

using namespace twqb;

// No document, one that is to be taken back after an error, one of an unknown version, one with a bill of nothing.
constexpr std::array<ErrorNumber, 4> kRefusals = {0x80040400, 0x80040413, 0x80040423, 0x80040307};
constexpr int kDocumentsPerFile = 2000;  // then a new file, so that finds can be told from leftovers

struct Fixture {
  FrozenMachine machine{{.libraryFolder = "/tmp", .registryFile = ""},
                        {.now = Date::FromUnixSeconds(1204729200), .zone = {.bias = 300}}};
  std::string folder;
  std::unique_ptr<company::CompanyFile> file;
  int documents = 0;

  company::CompanyFile& File() {
    if (!file || ++documents % kDocumentsPerFile == 0) {
      file.reset();
      if (folder.empty()) {
        // Memory when there is some: nothing here is about durability.
        folder = std::filesystem::exists("/dev/shm") ? "/dev/shm/twqb-fuzz-XXXXXX" : "/tmp/twqb-fuzz-XXXXXX";
        if (mkdtemp(folder.data()) == nullptr) std::abort();
      }
      std::filesystem::remove(folder + "/company.twq");
      company::CreateCompanyFile(
          folder + "/company.twq",
          {.accepts = {messages::Country::US, messages::Country::CA, messages::Country::UK, messages::Country::AU}},
          machine);
      file = std::make_unique<company::CompanyFile>(folder + "/company.twq", machine);
    }
    return *file;
  }
  ~Fixture() {
    file.reset();
    std::error_code ignored;
    if (!folder.empty()) std::filesystem::remove_all(folder, ignored);
  }
};

void CheckRefusal(ErrorNumber number) {
  if (std::ranges::find(kRefusals, number) == kRefusals.end()) std::abort();
}

void CheckAnswer(const std::string& answer) {
  pugi::xml_document parsed;
  if (!parsed.load_buffer(answer.data(), answer.size())) std::abort();
  // The library's own reader takes it too.
  const MsgSetResponse responses{std::string(answer)};
  for (std::size_t i = 0; i < responses.Count(); ++i) {
    for (const auto& record : responses.GetAt(i).Details()) (void)record.GetAsString();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Fixture fixture;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  try {
    CheckAnswer(fixture.File().Process(text));
  } catch (const PlatformError& refused) {
    CheckRefusal(refused.number());
  }
  try {
    CheckAnswer(fixture.File().ProcessSubscription(text));
  } catch (const PlatformError& refused) {
    CheckRefusal(refused.number());
  }
  return 0;
}

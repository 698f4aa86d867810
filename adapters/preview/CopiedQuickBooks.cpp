#include "adapters/preview/CopiedQuickBooks.h"

#include <string>
#include <string_view>
#include <utility>

#include "platform/Forwarding.h"

namespace twqb::preview {

class CopiedQuickBooks::CopiedTransport : public ForwardingTransport {
 public:
  CopiedTransport(std::unique_ptr<Transport> inner, ScratchFiles& files, CopyNotes& notes)
      : ForwardingTransport(std::move(inner)), files_(files), notes_(notes) {}

  void BeginSession(std::string_view fileName, OpenMode mode) override {
    const auto file = fileName.empty() ? std::string() : files_.Of(std::string(fileName)).worked;
    files_.Translated([&] { ForwardingTransport::BeginSession(file, mode); });
    notes_.opened = &files_.Of(ForwardingTransport::GetCurrentCompanyFileName());
  }
  [[nodiscard]] std::string GetCurrentCompanyFileName() override {
    return files_.InOwnNames(ForwardingTransport::GetCurrentCompanyFileName());
  }
  [[nodiscard]] std::string ProcessDocument(std::string_view document) override {
    auto answer = files_.Translated([&] { return ForwardingTransport::ProcessDocument(document); });
    notes_.touched.Note(answer);
    return answer;
  }

 private:
  ScratchFiles& files_;
  CopyNotes& notes_;
};

std::unique_ptr<Transport> CopiedQuickBooks::CreateTransport() {
  return std::make_unique<CopiedTransport>(inner_.CreateTransport(), files_, notes_);
}

}  // namespace twqb::preview

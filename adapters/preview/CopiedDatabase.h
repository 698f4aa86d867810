// The database seam on copies of database files: connections are to the copy of the file that they name.
//
// For connection strings that name a file by Data Source, as the embedded engine's do; every other one is to the copy
// of the one snapshot of another maker's database. Everything that is told (the connection string, the provider,
// errors) has the names of the files and the database themselves.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "adapters/preview/ScratchFiles.h"
#include "platform/ado.h"

namespace twqb::preview {

// What stands among the files for the database of another maker.
inline constexpr const char* kOtherDatabase = "BillingDb";

class CopiedProvider : public ado::Provider {
 public:
  // Both must outlive every connection. `otherProvider`: as a connection to the other maker's database calls its own.
  CopiedProvider(ado::Provider& inner, ScratchFiles& files, std::string otherProvider = {})
      : inner_(inner), files_(files), otherProvider_(std::move(otherProvider)) {}

  std::unique_ptr<ado::Connection> CreateConnection() override;

 private:
  ado::Provider& inner_;
  ScratchFiles& files_;
  std::string otherProvider_;
};

// A connection string to another file; what it says beside is as it was, unless it was another maker's.
[[nodiscard]] std::string ConnectionTo(const std::string& connection, const std::string& file);

}  // namespace twqb::preview

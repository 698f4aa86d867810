// The database seam on copies of database files: connections are to the copy of the file that they name.
//
// For connection strings that name a file by Data Source, as the embedded engine's do. Everything that is told (the
// connection string, errors) has the names of the files themselves.
#pragma once

#include <memory>

#include "adapters/preview/ScratchFiles.h"
#include "platform/ado.h"

namespace twqb::preview {

class CopiedProvider : public ado::Provider {
 public:
  // Both must outlive every connection.
  CopiedProvider(ado::Provider& inner, ScratchFiles& files) : inner_(inner), files_(files) {}

  std::unique_ptr<ado::Connection> CreateConnection() override;

 private:
  ado::Provider& inner_;
  ScratchFiles& files_;
};

// A connection string to another file, with everything else as it is.
[[nodiscard]] std::string ConnectionTo(const std::string& connection, const std::string& file);

}  // namespace twqb::preview

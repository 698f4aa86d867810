#include "adapters/backup/Sha256.h"

#include <fmt/core.h>
#include <openssl/evp.h>

#include <array>

#include "adapters/backup/BackupError.h"

namespace twqb::backup {

std::string Sha256Of(std::string_view bytes) {
  std::array<unsigned char, EVP_MAX_MD_SIZE> digest = {};
  unsigned length = 0;
  if (EVP_Digest(bytes.data(), bytes.size(), digest.data(), &length, EVP_sha256(), nullptr) != 1) {
    throw BackupError("This system has no SHA-256.");
  }
  std::string text;
  text.reserve(kDigestLength);
  for (unsigned i = 0; i < length; ++i) fmt::format_to(std::back_inserter(text), "{:02x}", digest[i]);
  return text;
}

}  // namespace twqb::backup

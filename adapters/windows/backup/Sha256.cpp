#include "adapters/backup/Sha256.h"

// Its own headers lean on the system's first one.
// clang-format off
#include <windows.h>
#include <bcrypt.h>
// clang-format on

#include <fmt/core.h>

#include <array>
#include <iterator>

#include "adapters/backup/BackupError.h"

namespace twqb::backup {

namespace {

class Provider {
 public:
  Provider() {
    if (BCryptOpenAlgorithmProvider(&handle_, BCRYPT_SHA256_ALGORITHM, nullptr, 0) != 0) handle_ = nullptr;
  }
  ~Provider() {
    if (handle_ != nullptr) BCryptCloseAlgorithmProvider(handle_, 0);
  }
  Provider(const Provider&) = delete;
  Provider& operator=(const Provider&) = delete;
  [[nodiscard]] BCRYPT_ALG_HANDLE Get() const { return handle_; }

 private:
  BCRYPT_ALG_HANDLE handle_ = nullptr;
};

class Hash {
 public:
  explicit Hash(const Provider& provider) {
    if (provider.Get() == nullptr || BCryptCreateHash(provider.Get(), &handle_, nullptr, 0, nullptr, 0, 0) != 0) {
      handle_ = nullptr;
    }
  }
  ~Hash() {
    if (handle_ != nullptr) BCryptDestroyHash(handle_);
  }
  Hash(const Hash&) = delete;
  Hash& operator=(const Hash&) = delete;
  [[nodiscard]] BCRYPT_HASH_HANDLE Get() const { return handle_; }

 private:
  BCRYPT_HASH_HANDLE handle_ = nullptr;
};

}  // namespace

std::string Sha256Of(std::string_view bytes) {
  std::array<unsigned char, kDigestLength / 2> digest = {};
  const Provider provider;
  const Hash hash(provider);
  // The library takes no constant bytes, and does not write to them.
  auto* data = reinterpret_cast<PUCHAR>(const_cast<char*>(bytes.data()));
  if (hash.Get() == nullptr || BCryptHashData(hash.Get(), data, static_cast<ULONG>(bytes.size()), 0) != 0 ||
      BCryptFinishHash(hash.Get(), digest.data(), static_cast<ULONG>(digest.size()), 0) != 0) {
    throw BackupError("This system has no SHA-256.");
  }
  std::string text;
  text.reserve(kDigestLength);
  for (const auto byte : digest) fmt::format_to(std::back_inserter(text), "{:02x}", byte);
  return text;
}

}  // namespace twqb::backup

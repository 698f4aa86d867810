// FileDescriptor: one open file of this system, closed when it goes out of scope.
//
// The files of this folder share it, with the whole-file reading that they have in common. It raises nothing: a failure
// is an empty result with `errno` set.
#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace twqb {

class FileDescriptor {
 public:
  FileDescriptor() = default;
  explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
  FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept;
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor() { Close(); }

  [[nodiscard]] explicit operator bool() const { return descriptor_ >= 0; }
  [[nodiscard]] int Get() const { return descriptor_; }
  // False when the system reports a late failure to write. Harmless on a file that is not open.
  bool Close();

 private:
  int descriptor_ = -1;
};

// Opens a regular file for reading. Nothing else (a folder, a pipe) opens; none of them blocks.
[[nodiscard]] FileDescriptor OpenForReading(const std::string& path);
// Appends all that follows in `file` to `text`. False on failure.
[[nodiscard]] bool ReadRest(const FileDescriptor& file, std::string& text);
// Writes every byte, in as many steps as it takes. False on failure.
[[nodiscard]] bool WriteAll(const FileDescriptor& file, std::string_view bytes);

}  // namespace twqb

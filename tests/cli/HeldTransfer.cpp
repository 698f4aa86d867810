#include "HeldTransfer.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <stdexcept>

namespace twqb::cli {

HeldTransfer::HeldTransfer(const WorkFolder& folder, std::vector<std::string> command, std::string_view text) {
  const auto path = (folder.Path() / "held.pipe").string();
  unlink(path.c_str());
  if (mkfifo(path.c_str(), 0600) != 0) throw std::runtime_error("no pipe");
  command.insert(command.end(), {"--transcript", path});
  process_ = folder.Start(command);
  pipe_ = FileDescriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  constexpr int kSmallest = 4096;
  fcntl(pipe_.Get(), F_SETPIPE_SZ, kSmallest);
  while (read_.find(text) == std::string::npos) {
    if (!ReadMore()) throw std::runtime_error("it ended before: " + process_->Errors());
  }
}

ProcessResult HeldTransfer::Finish() {
  while (ReadMore()) {
  }
  return process_->Wait();
}

bool HeldTransfer::ReadMore() {
  std::array<char, 512> chunk = {};
  const auto got = read(pipe_.Get(), chunk.data(), chunk.size());
  if (got <= 0) return false;
  read_.append(chunk.data(), static_cast<std::size_t>(got));
  return true;
}

}  // namespace twqb::cli

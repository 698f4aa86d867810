#include "HeldTransfer.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <stdexcept>

namespace twqb::cli {

RecordPipe::RecordPipe(const WorkFolder& folder) : path_((folder.Path() / "held.pipe").string()) {
  unlink(path_.c_str());
  if (mkfifo(path_.c_str(), 0600) != 0) throw std::runtime_error("no pipe");
}

bool RecordPipe::ReadTo(std::string_view text) {
  constexpr int kSmallest = 4096;
  // Small ahead of the first who writes: a program that nobody waits for would have written all of its run by then.
  pipe_ = FileDescriptor(open(path_.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  if (!pipe_ || fcntl(pipe_.Get(), F_SETPIPE_SZ, kSmallest) < 0) throw std::runtime_error("no small pipe");
  fcntl(pipe_.Get(), F_SETFL, 0);
  // Until somebody has opened it to write, its end would be read.
  pollfd first = {.fd = pipe_.Get(), .events = POLLIN, .revents = 0};
  while (poll(&first, 1, -1) < 0 && errno == EINTR) {
  }
  while (read_.find(text) == std::string::npos) {
    if (!ReadMore()) return false;
  }
  return true;
}

void RecordPipe::ReadToTheEnd() {
  while (ReadMore()) {
  }
}

bool RecordPipe::ReadMore() {
  std::array<char, 512> chunk = {};
  const auto got = read(pipe_.Get(), chunk.data(), chunk.size());
  if (got <= 0) return false;
  read_.append(chunk.data(), static_cast<std::size_t>(got));
  return true;
}

HeldTransfer::HeldTransfer(const WorkFolder& folder, std::vector<std::string> command, std::string_view text)
    : record_(folder) {
  command.insert(command.end(), {"--transcript", record_.Path()});
  process_ = folder.Start(command);
  if (!record_.ReadTo(text)) throw std::runtime_error("it ended before: " + process_->Errors());
}

ProcessResult HeldTransfer::Finish() {
  record_.ReadToTheEnd();
  return process_->Wait();
}

}  // namespace twqb::cli

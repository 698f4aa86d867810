// One end of a desk under test: what a person types goes in, or what the desk writes comes out.
//
// What is typed is written before the desk reads it. Nothing here waits, and nothing is a terminal.
#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <string>
#include <string_view>

namespace twqb {

class TestPipe {
 public:
  TestPipe() {
    if (pipe2(ends_.data(), O_CLOEXEC) != 0) ends_ = {-1, -1};
    fcntl(ends_[0], F_SETFL, O_NONBLOCK);
    fcntl(ends_[1], F_SETPIPE_SZ, 1 << 20);
  }
  ~TestPipe() {
    close(ends_[0]);
    CloseWriting();
  }
  TestPipe(const TestPipe&) = delete;
  TestPipe& operator=(const TestPipe&) = delete;

  [[nodiscard]] int ReadEnd() const { return ends_[0]; }
  [[nodiscard]] int WriteEnd() const { return ends_[1]; }

  [[nodiscard]] bool Type(std::string_view text) const {
    return write(ends_[1], text.data(), text.size()) == static_cast<ssize_t>(text.size());
  }
  void CloseWriting() {
    if (ends_[1] >= 0) close(ends_[1]);
    ends_[1] = -1;
  }
  // What was written since the last call.
  [[nodiscard]] std::string Drain() const {
    std::string all;
    std::array<char, 4096> chunk = {};
    for (auto n = read(ends_[0], chunk.data(), chunk.size()); n > 0; n = read(ends_[0], chunk.data(), chunk.size())) {
      all.append(chunk.data(), static_cast<std::size_t>(n));
    }
    return all;
  }

 private:
  std::array<int, 2> ends_ = {-1, -1};
};

}  // namespace twqb

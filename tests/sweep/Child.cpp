#include "Child.h"

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <exception>
#include <stdexcept>

#include "platform/Text.h"

namespace twqb::sweep {

namespace {

constexpr char kBetweenProblems = '\0';

Problems Guarded(const std::function<Problems()>& body) {
  try {
    return body();
  } catch (const std::exception& escaped) {
    return {std::string("An exception escaped: ") + escaped.what()};
  }
}

[[noreturn]] void BeChild(const std::function<Problems()>& body, int out, unsigned seconds) {
  alarm(seconds);
  std::string text;
  for (const auto& problem : Guarded(body)) text.append(problem).push_back(kBetweenProblems);
  for (std::string_view rest = text; !rest.empty();) {
    const auto written = write(out, rest.data(), rest.size());
    if (written <= 0) _exit(1);
    rest.remove_prefix(static_cast<std::size_t>(written));
  }
  _exit(0);
}

std::string ReadToEnd(int in) {
  std::string text;
  std::array<char, 4096> buffer;
  while (true) {
    const auto count = read(in, buffer.data(), buffer.size());
    if (count <= 0) return text;
    text.append(buffer.data(), static_cast<std::size_t>(count));
  }
}

}  // namespace

ChildEnd RunInChild(const std::function<Problems()>& body, unsigned seconds) {
  std::array<int, 2> ends{};
  if (pipe(ends.data()) != 0) throw std::runtime_error("no pipe");
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("no child process");
  if (child == 0) {
    close(ends[0]);
    BeChild(body, ends[1], seconds);
  }
  close(ends[1]);
  ChildEnd end;
  end.problems = Split(ReadToEnd(ends[0]), kBetweenProblems);
  end.problems.pop_back();  // behind the last separator
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  if (WIFSIGNALED(status)) {
    end.signal = WTERMSIG(status);
  } else if (WEXITSTATUS(status) != 0) {
    end.problems.emplace_back("The process ended with status " + std::to_string(WEXITSTATUS(status)) + ".");
  }
  return end;
}

}  // namespace twqb::sweep

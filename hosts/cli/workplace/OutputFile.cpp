#include "cli/workplace/OutputFile.h"

#include <fcntl.h>
#include <fmt/core.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <streambuf>
#include <system_error>
#include <thread>

#include "adapters/system/FileDescriptor.h"
#include "adapters/system/FileIdentity.h"
#include "adapters/terminal/EndSignals.h"
#include "cli/options/ExitStatus.h"

namespace twqb::cli {

namespace {

constexpr mode_t kOwnersAlone = 0600;
constexpr std::chrono::milliseconds kBetweenLooks{20};

class Opening {
 public:
  Opening(const std::string& path, const RecordKind& kind, const std::vector<RunFile>& filesOfRun)
      : path_(path), kind_(kind), filesOfRun_(filesOfRun) {}

  [[nodiscard]] FileDescriptor Open() const {
    RefuseFileOfRun();
    struct stat status = {};
    if (::stat(path_.c_str(), &status) != 0) return OpenNew();
    if (auto stream = StandardStream(status)) return stream;
    if (S_ISREG(status.st_mode)) return Emptied(OpenExisting());
    RefuseKind(status);
    if (S_ISFIFO(status.st_mode)) return OpenPipe();
    return Opened(::open(path_.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY));
  }

  void Check() const {
    RefuseFileOfRun();
    struct stat status = {};
    if (::stat(path_.c_str(), &status) != 0) {
      RefuseUnlessNew();
      const auto above = std::filesystem::absolute(path_).parent_path();
      if (::access(above.string().c_str(), W_OK | X_OK) != 0) Fail(errno);
    } else if (!StandardStream(status)) {
      if (S_ISREG(status.st_mode)) static_cast<void>(OpenExisting());
      RefuseKind(status);
    }
  }

 private:
  // The stream of this process that goes there already, whatever it is: opened anew, a file would have a place of its
  // own to write at, and what was printed would be overwritten.
  [[nodiscard]] static FileDescriptor StandardStream(const struct stat& wanted) {
    for (const int stream : {STDOUT_FILENO, STDERR_FILENO}) {
      struct stat status = {};
      if (::fstat(stream, &status) != 0 || IdentityOf(status) != IdentityOf(wanted)) continue;
      return FileDescriptor(::fcntl(stream, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    }
    return {};
  }

  void RefuseKind(const struct stat& status) const {
    if (S_ISDIR(status.st_mode)) Refuse("is a folder");
    if (S_ISBLK(status.st_mode)) Refuse("is a disk");
  }

  // A pipe that nobody reads yet would let an opening wait that no signal ends.
  [[nodiscard]] FileDescriptor OpenPipe() const {
    for (;;) {
      FileDescriptor pipe(::open(path_.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK));
      if (pipe) {
        if (::fcntl(pipe.Get(), F_SETFL, O_WRONLY) != 0) Fail(errno);
        return pipe;
      }
      if (errno != ENXIO) Fail(errno);
      if (EndSignals::Came() != 0) throw EndedBySignal();
      std::this_thread::sleep_for(kBetweenLooks);
    }
  }

  void RefuseFileOfRun() const {
    for (const auto& file : filesOfRun_) {
      if (AreOneFile(path_, file.path)) Refuse(fmt::format("is {}", file.called));
    }
  }

  // Never through a link that leads nowhere: what is made there could be a file of the run.
  void RefuseUnlessNew() const {
    if (errno != ENOENT) Fail(errno);
    std::error_code ignored;
    if (std::filesystem::is_symlink(path_, ignored)) Refuse("is a link that leads nowhere");
  }

  [[nodiscard]] FileDescriptor OpenNew() const {
    RefuseUnlessNew();
    return Opened(::open(path_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, kOwnersAlone));
  }

  // What has been opened is looked at, and not what the name leads to afterwards.
  [[nodiscard]] FileDescriptor OpenExisting() const {
    auto file = Opened(::open(path_.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK));
    struct stat status = {};
    if (::fstat(file.Get(), &status) != 0) Fail(errno);
    for (const auto& own : filesOfRun_) {
      if (IdentityOf(own.path) == IdentityOf(status)) Refuse(fmt::format("is {}", own.called));
    }
    if (status.st_size != 0 && !IsOurs(file)) Refuse(fmt::format("is there already, and is no {}", kind_.called));
    return file;
  }

  [[nodiscard]] FileDescriptor Emptied(FileDescriptor file) const {
    // One that somebody else owns keeps its rights.
    static_cast<void>(::fchmod(file.Get(), kOwnersAlone));
    if (::ftruncate(file.Get(), 0) != 0) Fail(errno);
    return file;
  }

  [[nodiscard]] bool IsOurs(const FileDescriptor& file) const {
    std::string beginning(kind_.beginning.size(), '\0');
    const auto got = ::pread(file.Get(), beginning.data(), beginning.size(), 0);
    return got == static_cast<ssize_t>(beginning.size()) && beginning == kind_.beginning;
  }

  [[nodiscard]] FileDescriptor Opened(int descriptor) const {
    if (descriptor < 0) Fail(errno);
    return FileDescriptor(descriptor);
  }

  [[noreturn]] void Fail(int reason) const {
    throw UsageError(
        fmt::format("The {} {} can't be written: {}.", kind_.called, path_, std::generic_category().message(reason)));
  }

  [[noreturn]] void Refuse(std::string_view isWhat) const {
    throw UsageError(
        fmt::format("{} {}; the {} would overwrite it.\nName a file with {} that is not there yet, or an older {}.",
                    path_, isWhat, kind_.called, kind_.option, kind_.called));
  }

  const std::string& path_;
  const RecordKind& kind_;
  const std::vector<RunFile>& filesOfRun_;
};

}  // namespace

// Collects what is written up to the next flush.
class OutputFile::Buffer : public std::streambuf {
 public:
  explicit Buffer(FileDescriptor file) : file_(std::move(file)) {}

 protected:
  int_type overflow(int_type next) override {
    if (!traits_type::eq_int_type(next, traits_type::eof())) text_ += traits_type::to_char_type(next);
    return traits_type::not_eof(next);
  }
  std::streamsize xsputn(const char* text, std::streamsize count) override {
    text_.append(text, static_cast<std::size_t>(count));
    return count;
  }
  int sync() override {
    const bool done = WriteAll(file_, text_);
    text_.clear();
    return done ? 0 : -1;
  }

 private:
  FileDescriptor file_;
  std::string text_;
};

OutputFile::OutputFile(const std::string& path, const RecordKind& kind, const std::vector<RunFile>& filesOfRun)
    : buffer_(std::make_unique<Buffer>(Opening(path, kind, filesOfRun).Open())), stream_(buffer_.get()) {}

void OutputFile::Check(const std::string& path, const RecordKind& kind, const std::vector<RunFile>& filesOfRun) {
  Opening(path, kind, filesOfRun).Check();
}

OutputFile::~OutputFile() { stream_.flush(); }

}  // namespace twqb::cli

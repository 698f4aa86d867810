// How SQLite files are kept on disk: written ahead while somebody writes to them, one plain file at rest.
//
// Both adapters that keep one (adapters/sqlite, adapters/companyfile) stand on this. It takes handles of the engine and
// knows nothing of what is in the file. The last one out of a file puts it back into its ordinary form; whoever finds
// it written ahead by a process that died does so, too. Where write-ahead is not to be had, the rollback journal
// serves.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

struct sqlite3;

namespace twqb::storage {

enum class Form : std::uint8_t {
  Ordinary,    // one file, with a rollback journal beside it while a statement writes
  WriteAhead,  // what was written lately stands in a log beside the file
};

// What every connection is told once, when it is open: each commit is durable when it returns, and the log grows to
// some megabytes before it is carried over into the file. The engine's result code.
[[nodiscard]] int SetUp(sqlite3* handle);

// Whether the file stands where processes share memory over it: on a disk of this machine, of a kind that is known.
// Log and file of a network drive would part.
[[nodiscard]] bool TakesWriteAhead(const std::string& path);

// As the connection found the file when it last read it.
[[nodiscard]] Form FormOf(sqlite3* handle);

// The form in which the file is from now on: the ordinary one, and nothing is changed, while others are just reading or
// writing it in that form, or where it can't be had. Outside a transaction.
Form BeginWriteAhead(sqlite3* handle);

// What a connection does ahead of each of its writes.
class WriteAhead {
 public:
  // Has the file written ahead where it can be. What was refused is tried again, a second later at the soonest: who is
  // in the way of it may be gone. Does nothing within a transaction.
  void BeforeWrite(sqlite3* handle);
  // To be told that the handle has just read the file, which somebody else may have begun to write ahead.
  void AfterLook(sqlite3* handle) { form_ = FormOf(handle); }
  // Whether the handle is in a file that is written ahead: it has a hold on it then, and nobody puts it into another
  // form.
  [[nodiscard]] bool HasBegun() const { return form_ == Form::WriteAhead; }

 private:
  Form form_ = Form::Ordinary;
  std::chrono::steady_clock::time_point tried_;  // long ago
};

// Puts the file into its ordinary form, with everything in it, when this connection is alone in it. Otherwise nothing
// happens. The form that it is in then; written ahead, too, while others keep this one from looking.
Form EndWriteAhead(sqlite3* handle) noexcept;

// Closes the handle; the file is in its ordinary form then, unless others have it open: the last of them leaves it so.
// A statement that was not finalized keeps the engine's hold on the file until it is.
void CloseInOrder(sqlite3* handle) noexcept;

}  // namespace twqb::storage

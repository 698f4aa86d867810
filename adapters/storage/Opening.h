// How SQLite files are opened: by a layer of the engine that fits the place, so that no log is ever read where its
// index can't be shared.
//
// Where write-ahead is not to be had (WriteAhead.h), files are opened without memory that processes share. A log that a
// process on another machine writes there is then refused by the engine, at the first read and at every later one: with
// an index of this machine's own it would be read wrongly, and without a word.
#pragma once

#include <cstdint>
#include <string>

struct sqlite3;

namespace twqb::storage {

// Opens a file as the engine does, with its flags and its result code. `handle` is to be closed whatever the code; it,
// with its statements, is for one thread at a time.
[[nodiscard]] int Open(const std::string& path, int flags, sqlite3** handle);

// Whether processes share memory over the files that a handle opens.
enum class SharedMemory : std::uint8_t { Yes, No };
// The same by the layer that is told.
[[nodiscard]] int Open(const std::string& path, int flags, SharedMemory memory, sqlite3** handle);

// To be called ahead of a handle's first read: takes a log that stands where it can't be shared into the file, when
// nobody else has the file open. Waits for others as the handle is told to. Why the file can't be read, in a sentence
// for the user; empty when it can, and when the log is not the reason.
[[nodiscard]] std::string MakeReadable(sqlite3* handle);

}  // namespace twqb::storage

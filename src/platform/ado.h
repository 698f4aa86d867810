// The database seam: an ADO connection and a client-side recordset, with the operations that the library uses and no
// more. Every call may raise PlatformError; numbers are those of `error::`.
//
// Implementations stand under adapters/. Statement text arrives exactly as the library wrote it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/Value.h"

namespace twqb::ado {

enum class ObjectState : std::uint8_t { Closed = 0, Open = 1 };
enum class ConnectMode : std::uint8_t { Unknown = 0, ReadWrite = 3 };
enum class CursorLocation : std::uint8_t { Server = 2, Client = 3 };
enum class CursorType : std::uint8_t { Static = 3 };
enum class LockType : std::uint8_t { ReadOnly = 1, Optimistic = 3 };
enum class EditMode : std::uint8_t { None = 0, InProgress = 1, Add = 2 };

// Seconds until an attempt to open is given up, unless the owner sets another figure.
inline constexpr int kDefaultConnectionTimeout = 15;

// Rows of one statement, or a whole table opened for writing. Field names match without case.
// Moving, Find, AddNew and Close with an edit pending raise `kEditPending` and write nothing.
class Recordset {
 public:
  virtual ~Recordset() = default;

  [[nodiscard]] virtual ObjectState State() const = 0;
  virtual void Close() = 0;

  [[nodiscard]] virtual bool Eof() const = 0;
  virtual void MoveFirst() = 0;
  virtual void MoveNext() = 0;
  [[nodiscard]] virtual std::int64_t RecordCount() const = 0;
  // Moves to the first row at or behind the current one for which "COLUMN = 'TEXT'" holds (quotes in TEXT doubled);
  // a miss leaves Eof. Sees rows added since the recordset was opened, whoever added them.
  virtual void Find(std::string_view criterion) = 0;

  [[nodiscard]] virtual int FieldCount() const = 0;
  [[nodiscard]] virtual std::string FieldName(int index) const = 0;
  // The value in the current row, pending changes included. Raises `kAtEof`, `kNoSuchField`.
  [[nodiscard]] virtual Value Field(std::string_view name) const = 0;
  [[nodiscard]] virtual Value FieldAt(int index) const = 0;
  // Greatest length of a text column, in characters; 0 when the column has no limit.
  [[nodiscard]] virtual int DefinedSize(std::string_view name) const = 0;

  [[nodiscard]] virtual EditMode EditState() const = 0;
  virtual void AddNew() = 0;
  // Assigns to the row being added, or begins an edit of the current row.
  virtual void SetField(std::string_view name, Value value) = 0;
  // Writes the pending row; durable when it returns. A failure leaves the edit pending.
  virtual void Update() = 0;
  virtual void CancelUpdate() = 0;
};

class Connection {
 public:
  virtual ~Connection() = default;

  [[nodiscard]] virtual ObjectState State() const = 0;
  virtual void SetMode(ConnectMode mode) = 0;
  virtual void SetCursorLocation(CursorLocation location) = 0;
  virtual void SetConnectionTimeout(int seconds) = 0;
  [[nodiscard]] virtual std::string ConnectionString() const = 0;
  virtual void SetConnectionString(std::string text) = 0;
  // The provider's name as it was typed in the connection string.
  [[nodiscard]] virtual std::string Provider() const = 0;

  virtual void Open() = 0;
  virtual void Close() = 0;

  // Runs one statement. A statement that answers rows gives them; any other gives a closed recordset.
  // `rowsAffected` may be nullptr.
  virtual std::unique_ptr<Recordset> Execute(std::string_view statement, std::int64_t* rowsAffected) = 0;
  // Opens a client-side recordset on a SELECT. Read-only: all rows are fetched before it returns. Optimistic: the
  // statement is "SELECT * FROM table;", or "SELECT * FROM table WHERE column IS NOT NULL;" for those rows alone, and
  // no row is read ahead. The recordset must not outlive the connection.
  virtual std::unique_ptr<Recordset> OpenRecordset(std::string_view statement, CursorType cursor, LockType lock) = 0;
};

// Makes connections, not yet open.
class Provider {
 public:
  virtual ~Provider() = default;
  virtual std::unique_ptr<Connection> CreateConnection() = 0;
};

}  // namespace twqb::ado

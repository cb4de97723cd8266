#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace kestro::ports {

struct Null {
  friend bool operator==(Null, Null) { return true; }
};

/// A field or a parameter: null, whole number, floating-point number, UTF-8 text.
using DatabaseValue = std::variant<Null, std::int64_t, double, std::string>;

/// A connection string is the start, the path of the file as it stands (it may hold anything, ";"
/// included) and the end.
inline constexpr std::string_view kConnectionStringStart = "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=";
inline constexpr std::string_view kConnectionStringEnd = ";Persist Security Info=False";

class Connection;

/// The rows of a query, one current row at a time; the current row is the first
/// one after Execute. Rows that a command returns are read while one moves on.
/// Every operation raises base::RuntimeError on failure.
class Recordset {
 public:
  virtual ~Recordset() = default;
  [[nodiscard]] virtual bool AtEnd() const = 0;
  virtual void MoveNext() = 0;
  /// How many rows there are. The rows of a command are counted when this is first
  /// asked, which costs as much as reading them all; no row moves by it.
  [[nodiscard]] virtual std::int64_t RecordCount() const = 0;
  /// The current row, counted from 0 in the present order; the number of rows at
  /// the end. A bookmark: MoveTo leads back to that row until SetSort is called.
  [[nodiscard]] virtual std::int64_t Position() const = 0;
  /// Makes that row the current one; raises 9 and stays where it is when there is
  /// no such row. The rows of a command are read again for a way back.
  virtual void MoveTo(std::int64_t row) = 0;
  [[nodiscard]] virtual int FieldCount() const = 0;
  [[nodiscard]] virtual std::string_view FieldName(int index) const = 0;
  /// Value of the current row. Raises 9 for a field that the query does not have.
  [[nodiscard]] virtual DatabaseValue Field(int index) const = 0;
  /// Text of the current row without a copy, valid until the row changes; null
  /// is empty and a number its decimal text.
  [[nodiscard]] virtual std::string_view Text(int index) const = 0;
  [[nodiscard]] virtual std::int64_t Integer(int index) const = 0;
  /// Index of a field by name (letter case ignored); raises 9 when there is none.
  [[nodiscard]] virtual int FieldIndex(std::string_view name) const = 0;
  /// Sort order: empty, a field name, or a field name and " DESC".
  [[nodiscard]] virtual std::string Sort() const = 0;
  /// Sorts the rows anew (texts by TextOrder) and moves to the first one; raises for any other text.
  virtual void SetSort(std::string_view sort) = 0;
  /// Closing twice raises.
  virtual void Close() = 0;
  /// The connection that the rows come through; null when the recordset holds none.
  [[nodiscard]] virtual Connection* ActiveConnection() = 0;
  virtual void ClearActiveConnection() = 0;
};

/// Connection to one database file, named by a connection string. As long as it is open, and possibly longer,
/// other programs cannot open the file.
class Connection {
 public:
  static constexpr int kUseServerCursor = 2;
  static constexpr int kReadUncommitted = 256;
  static constexpr int kConnectUnspecified = -1;

  virtual ~Connection() = default;
  virtual void SetConnectionString(std::string_view text) = 0;
  virtual void SetCursorLocation(int location) = 0;
  virtual void SetIsolationLevel(int level) = 0;
  /// Raises when the file is missing, is no database or cannot be read; never
  /// makes a file. An empty connection string means the one that was set.
  virtual void Open(std::string_view connection_string, std::string_view user, std::string_view password,
                    int options) = 0;
  virtual void Close() = 0;
  virtual void BeginTransaction() = 0;
  virtual void CommitTransaction() = 0;
  virtual void RollbackTransaction() = 0;
  /// Key of the row that the last insert on this connection added.
  [[nodiscard]] virtual std::int64_t LastInsertedKey() = 0;
};

/// One statement. Values come in as parameters, never inside the text.
class Command {
 public:
  static constexpr int kText = 1;
  static constexpr int kExecuteUnspecified = -1;

  virtual ~Command() = default;
  virtual void SetCommandType(int type) = 0;
  virtual void SetCommandText(std::string_view text) = 0;
  /// Must be open and outlive the command's recordsets.
  virtual void SetActiveConnection(Connection& connection) = 0;
  /// Values of the "?" marks from left to right; the views need to live until Execute returns.
  virtual void AppendParameter(std::int64_t value) = 0;
  virtual void AppendParameter(std::string_view value) = 0;
  /// Runs the statement. The recordset of a statement without rows is at its end.
  /// The parameters are used up: another run needs them appended anew.
  virtual std::unique_ptr<Recordset> Execute(int options) = 0;
};

/// Makes the objects above. Knows nothing of the application's tables. Offers
/// the statements two functions beyond the engine's own, both over all letters:
/// ContainsText(text, part) (letter case ignored, no wildcards; true for an
/// empty part) and the collation TextOrder (letters in alphabetical order, an
/// accent or the letter case decides between texts that are otherwise the same).
class Database {
 public:
  virtual ~Database() = default;
  [[nodiscard]] virtual std::unique_ptr<Connection> CreateConnection() = 0;
  [[nodiscard]] virtual std::unique_ptr<Command> CreateCommand() = 0;
};

}  // namespace kestro::ports

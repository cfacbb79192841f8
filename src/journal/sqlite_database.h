#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace pallomir {

/// A statement of SQLite. Values are bound from 1 on, columns counted from 0.
class SqliteStatement {
 public:
  explicit SqliteStatement(sqlite3_stmt* statement) : statement_(statement) {}

  SqliteStatement& Bind(int at, std::int64_t value);
  SqliteStatement& Bind(int at, std::string_view text);
  /// True while there is another row. False at the end, and where it failed.
  bool Step();
  /// Runs it to its end and makes it ready for other values.
  bool Run();

  std::int64_t Integer(int column) const;
  bool IsNull(int column) const;
  std::string Text(int column) const;
  bool HasFailed() const { return hasFailed_; }

 private:
  void Reset();

  struct Finalize {
    void operator()(sqlite3_stmt* statement) const;
  };
  std::unique_ptr<sqlite3_stmt, Finalize> statement_;
  bool hasFailed_ = false;
};

/// A database of SQLite. A statement that can't be prepared fails when it is stepped.
class SqliteDatabase {
 public:
  /// Opens or makes the file; ":memory:" is kept nowhere.
  explicit SqliteDatabase(const std::string& file);

  bool Execute(const std::string& sql);
  SqliteStatement Prepare(std::string_view sql);
  std::int64_t LastId() const;
  std::int64_t Changes() const;  ///< rows that the last statement changed

  bool IsOpen() const { return isOpen_; }
  /// Of the last call that failed.
  std::string Error() const;
  /// The file is none of SQLite's, or broken.
  bool IsDamaged() const;

 private:
  struct Close {
    void operator()(sqlite3* database) const;
  };
  std::unique_ptr<sqlite3, Close> database_;
  bool isOpen_ = false;
};

}  // namespace pallomir

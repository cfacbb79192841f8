#include "journal/sqlite_database.h"

#include <sqlite3.h>

namespace pallomir {

void SqliteStatement::Finalize::operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
void SqliteDatabase::Close::operator()(sqlite3* database) const { sqlite3_close_v2(database); }

SqliteStatement& SqliteStatement::Bind(int at, std::int64_t value) {
  if (statement_) sqlite3_bind_int64(statement_.get(), at, value);
  return *this;
}

SqliteStatement& SqliteStatement::Bind(int at, std::string_view text) {
  if (statement_) {
    sqlite3_bind_text64(statement_.get(), at, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
  }
  return *this;
}

bool SqliteStatement::Step() {
  const int result = statement_ ? sqlite3_step(statement_.get()) : SQLITE_ERROR;
  if (result != SQLITE_ROW && result != SQLITE_DONE) hasFailed_ = true;
  return result == SQLITE_ROW;
}

bool SqliteStatement::Run() {
  while (Step()) {
  }
  Reset();
  return !hasFailed_;
}

void SqliteStatement::Reset() {
  if (statement_) sqlite3_reset(statement_.get());
}

std::int64_t SqliteStatement::Integer(int column) const {
  return sqlite3_column_int64(statement_.get(), column);
}

bool SqliteStatement::IsNull(int column) const {
  return sqlite3_column_type(statement_.get(), column) == SQLITE_NULL;
}

std::string SqliteStatement::Text(int column) const {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_.get(), column));
  return text ? std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(statement_.get(), column)))
              : std::string();
}

SqliteDatabase::SqliteDatabase(const std::string& file) {
  constexpr int kFlags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
  constexpr int kBusyMilliseconds = 100;
  sqlite3* database = nullptr;
  isOpen_ = sqlite3_open_v2(file.c_str(), &database, kFlags, nullptr) == SQLITE_OK;
  database_.reset(database);
  if (isOpen_) sqlite3_busy_timeout(database, kBusyMilliseconds);
}

bool SqliteDatabase::Execute(const std::string& sql) {
  return sqlite3_exec(database_.get(), sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
}

SqliteStatement SqliteDatabase::Prepare(std::string_view sql) {
  sqlite3_stmt* statement = nullptr;
  sqlite3_prepare_v2(database_.get(), sql.data(), static_cast<int>(sql.size()), &statement, nullptr);
  return SqliteStatement(statement);
}

std::int64_t SqliteDatabase::LastId() const { return sqlite3_last_insert_rowid(database_.get()); }
std::int64_t SqliteDatabase::Changes() const { return sqlite3_changes64(database_.get()); }
std::string SqliteDatabase::Error() const { return sqlite3_errmsg(database_.get()); }

bool SqliteDatabase::IsDamaged() const {
  const int code = sqlite3_errcode(database_.get());
  return code == SQLITE_CORRUPT || code == SQLITE_NOTADB;
}

}  // namespace pallomir

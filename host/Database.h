// SQLite with owners: a connection, a prepared query, and the rows of one run of it.
#pragma once

#include <sqlite3.h>

#include <filesystem>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

namespace qva::embedded {

/// The rows of one run of a query. The query is free for its next run when this goes.
class Cursor {
 public:
  explicit Cursor(sqlite3_stmt* query) : query_(query) {}
  ~Cursor();
  Cursor(const Cursor&) = delete;
  Cursor& operator=(const Cursor&) = delete;

  /// Moves to the first or next row; false when there is none.
  bool Next();
  /// The text of a column (from 0) of the current row; empty for a database null.
  std::u16string Text(int column) const;

 private:
  sqlite3_stmt* query_;
};

/// A prepared query. Only one of its cursors may be alive at a time, and its database must outlive it.
class Query {
 public:
  /// Runs the query with a text for each of its parameters, ?1 first.
  Cursor Run(std::initializer_list<std::u16string_view> parameters) const;

 private:
  friend class Database;
  struct Finalize {
    void operator()(sqlite3_stmt* query) const noexcept { sqlite3_finalize(query); }
  };
  std::unique_ptr<sqlite3_stmt, Finalize> query_;
};

/// A connection to a database file. Each operation here and above raises Failure::DatabaseUnusable with the
/// file's name and SQLite's own account of the cause.
class Database {
 public:
  enum class Mode {
    Read,   ///< the host only ever reads its books
    Write,  ///< to fill an existing, empty file
  };

  /// Opens an existing file. An empty file is an empty database.
  Database(const std::filesystem::path& file, Mode mode);

  /// Runs the statements of a script in order, up to the first that fails.
  void Execute(const std::string& script) const;
  /// Prepares a query; fails also for a table or column that the database lacks.
  Query Prepare(const char* sql) const;

 private:
  struct Close {
    void operator()(sqlite3* database) const noexcept { sqlite3_close(database); }
  };
  std::unique_ptr<sqlite3, Close> database_;
};

}  // namespace qva::embedded

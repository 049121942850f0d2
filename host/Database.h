// SQLite with owners: a connection, a prepared statement, and the rows of one run of it.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

namespace qva::embedded {

/// Who wrote a statement, and thus whose mistake it is when SQLite finds fault with its text or with what the
/// text computes: Failure::DatabaseUnusable of the host's own, Failure::WrongCondition where a caller's
/// condition is part of it. Any other trouble is the database's with either.
enum class Author { Host, Caller };

/// The rows of one run of a statement. The statement is free for its next run when this goes.
class Cursor {
 public:
  Cursor(sqlite3_stmt* statement, Author author) : statement_(statement), author_(author) {}
  ~Cursor();
  Cursor(const Cursor&) = delete;
  Cursor& operator=(const Cursor&) = delete;

  /// Moves to the first or next row; false when there is none.
  bool Next();
  /// The text of a column (from 0) of the current row; empty for a database null.
  std::u16string Text(int column) const;
  /// The whole number of a column; 0 for a database null. Raises Overflow (6) for one beyond 64 bits.
  std::int64_t Number(int column) const;

 private:
  sqlite3_stmt* statement_;
  Author author_;
};

/// A prepared statement. Only one of its cursors may be alive at a time, and its database must outlive it.
class Statement {
 public:
  /// Runs the statement with a text for each of its parameters, ?1 first.
  Cursor Run(std::initializer_list<std::u16string_view> parameters) const;
  /// The number of parameters that Run must be given.
  int ParameterCount() const;

 private:
  friend class Database;
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
  };
  std::unique_ptr<sqlite3_stmt, Finalize> statement_;
  Author author_ = Author::Host;
};

/// A connection to a database file. Each operation here and above raises Failure::DatabaseUnusable with the
/// file's name and SQLite's own account of the cause, or what Author says; Overflow (6) for a sum of its own
/// beyond 64 bits.
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
  /// Prepares one statement; fails also for a table or column that the database lacks. In what a caller
  /// wrote, text after the statement's end is a mistake, too.
  Statement Prepare(std::string_view sql, Author author = Author::Host) const;

 private:
  struct Close {
    void operator()(sqlite3* database) const noexcept { sqlite3_close(database); }
  };
  std::unique_ptr<sqlite3, Close> database_;
};

}  // namespace qva::embedded

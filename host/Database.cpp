#include "host/Database.h"

#include <cmath>

#include "host/HostError.h"
#include "host/ReadFile.h"
#include "platform/text.h"

namespace qva::embedded {
namespace {

/// How long a query waits for a program that is writing the database, in milliseconds.
constexpr int kBusyTimeout = 2000;

AutomationError Unusable(std::u16string_view file, const char* cause) {
  return HostError(Failure::DatabaseUnusable, kCommonLibrary,
                   u"The host database \"" + std::u16string(file) + u"\" cannot be used: " + FromUtf8(cause));
}

/// What the last operation on a connection failed of.
AutomationError LastError(sqlite3* database, Author author) {
  if (author == Author::Caller && sqlite3_errcode(database) == SQLITE_ERROR) {
    return HostError(Failure::WrongCondition, kCommonLibrary,
                     u"The condition cannot be used: " + FromUtf8(sqlite3_errmsg(database)));
  }
  // SQLite has no code of its own for a sum beyond 64 bits.
  if (std::string_view(sqlite3_errmsg(database)) == "integer overflow") return NumberOverflow();
  const char* file = sqlite3_db_filename(database, nullptr);
  return Unusable(FromUtf8(file ? file : ""), sqlite3_errmsg(database));
}

}  // namespace

Cursor::~Cursor() {
  // The result of the reset repeats that of the last step, which was reported there.
  sqlite3_reset(statement_);
  sqlite3_clear_bindings(statement_);
}

bool Cursor::Next() {
  const int result = sqlite3_step(statement_);
  if (result != SQLITE_ROW && result != SQLITE_DONE) throw LastError(sqlite3_db_handle(statement_), author_);
  return result == SQLITE_ROW;
}

std::u16string Cursor::Text(int column) const {
  // The text is asked for first: only then is the length that of UTF-16.
  const auto* text = static_cast<const char16_t*>(sqlite3_column_text16(statement_, column));
  const auto bytes = static_cast<std::size_t>(sqlite3_column_bytes16(statement_, column));
  return text ? std::u16string(text, bytes / sizeof(char16_t)) : std::u16string();
}

std::int64_t Cursor::Number(int column) const {
  if (sqlite3_column_type(statement_, column) == SQLITE_FLOAT) {
    // SQLite itself would give the greatest whole number for any that is greater.
    const double number = sqlite3_column_double(statement_, column);
    if (!(std::abs(number) < 0x1p63)) throw NumberOverflow();
    return std::llround(number);
  }
  return sqlite3_column_int64(statement_, column);
}

Cursor Statement::Run(std::initializer_list<std::u16string_view> parameters) const {
  int index = 0;
  for (const std::u16string_view text : parameters) {
    // A null pointer would bind a database null, which equals nothing.
    const char16_t* start = text.data() ? text.data() : u"";
    if (sqlite3_bind_text16(statement_.get(), ++index, start,
                            static_cast<int>(text.size() * sizeof(char16_t)),
                            SQLITE_TRANSIENT) != SQLITE_OK) {
      throw LastError(sqlite3_db_handle(statement_.get()), author_);
    }
  }
  return Cursor(statement_.get(), author_);
}

int Statement::ParameterCount() const {
  return sqlite3_bind_parameter_count(statement_.get());
}

Database::Database(const std::filesystem::path& file, Mode mode) {
  sqlite3* database = nullptr;
  const int flags = mode == Mode::Read ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
  const int result = sqlite3_open_v2(Utf8Path(file).c_str(), &database, flags, nullptr);
  database_.reset(database);  // there is a connection to close also when the opening failed
  if (result != SQLITE_OK) throw Unusable(PathText(file), sqlite3_errstr(result));
  sqlite3_busy_timeout(database, kBusyTimeout);
}

void Database::Execute(const std::string& script) const {
  if (sqlite3_exec(database_.get(), script.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
    throw LastError(database_.get(), Author::Host);
  }
}

Statement Database::Prepare(std::string_view sql, Author author) const {
  sqlite3_stmt* prepared = nullptr;
  const char* rest = nullptr;
  const int result = sqlite3_prepare_v3(database_.get(), sql.data(), static_cast<int>(sql.size()),
                                        SQLITE_PREPARE_PERSISTENT, &prepared, &rest);
  Statement statement;
  statement.statement_.reset(prepared);
  statement.author_ = author;
  if (result != SQLITE_OK) throw LastError(database_.get(), author);
  // SQLite reads one statement, or up to a null character, and passes over whatever follows.
  if (author == Author::Caller && rest != sql.data() + sql.size()) {
    throw HostError(Failure::WrongCondition, kCommonLibrary,
                    u"The condition cannot be used: more text follows after its end");
  }
  return statement;
}

}  // namespace qva::embedded

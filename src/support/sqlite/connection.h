#pragma once

#include <QByteArray>
#include <QString>

#include <sqlite3.h>

#include <string_view>

namespace lexiquill::sqlite {

/// Thrown when SQLite reports an error; it does not leave this library.
struct Error {
    int code = SQLITE_OK; ///< a primary result code
    /// Whether the content of the file is not as expected.
    bool isDamage = false;
};

/// An open database file, or none. Statements on it must be destroyed before it.
class Connection {
public:
    Connection() = default;
    ~Connection() { sqlite3_close(m_database); }
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    /// Creates a missing file, private to its owner. Every operation waits for other processes at most this
    /// long.
    void open(const QByteArray &path, int patienceMilliseconds);

    void execute(const char *sql);
    qint64 lastInsertedId() const { return sqlite3_last_insert_rowid(m_database); }
    /// Pages in the write-ahead log after the last commit.
    int pagesInLog() const { return m_pagesInLog; }
    /// Writes the write-ahead log back into the file and empties it, unless another process is using the
    /// file.
    void writeLogBack();
    /// Makes the file an empty database, whatever its content. Safe even if other processes use the file.
    void reset();

    sqlite3 *handle() const { return m_database; }

private:
    sqlite3 *m_database = nullptr;
    int m_patienceMilliseconds = 0;
    int m_pagesInLog = 0;
};

/// One SQL statement with its parameters, counted from 1, and its current row, with columns from 0.
class Statement {
public:
    Statement(const Connection &connection, std::string_view sql);
    ~Statement() { sqlite3_finalize(m_statement); }
    Statement(const Statement &) = delete;
    Statement &operator=(const Statement &) = delete;

    Statement &bind(int parameter, qint64 value);
    Statement &bind(int parameter, const QString &value);
    /// Goes to the next row; false when there is none.
    bool next();
    /// Runs the statement to its end, and resets it for the next run.
    void run();
    void restart();

    qint64 integer(int column) const { return sqlite3_column_int64(m_statement, column); }
    QString text(int column) const;

private:
    sqlite3_stmt *m_statement = nullptr;
};

/// A transaction from its construction to commit(). Without commit(), the destructor rolls it back.
class Transaction {
public:
    enum class Kind {
        Write, ///< blocks other writers from the beginning
        Read,  ///< sees one state of the file, even if others change it meanwhile
    };

    explicit Transaction(Connection &connection, Kind kind = Kind::Write) : m_connection(connection) {
        m_connection.execute(kind == Kind::Write ? "BEGIN IMMEDIATE" : "BEGIN");
    }
    ~Transaction();
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;

    void commit() {
        m_connection.execute("COMMIT");
        m_isCommitted = true;
    }

private:
    Connection &m_connection;
    bool m_isCommitted = false;
};

} // namespace lexiquill::sqlite

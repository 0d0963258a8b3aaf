#include "support/sqlite/connection.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <new>

namespace lexiquill::sqlite {

namespace {

[[noreturn]] void fail(int result, bool isDamage = false) {
    const int code = result & 0xff;
    if (code == SQLITE_NOMEM)
        throw std::bad_alloc();
    throw Error{.code = code, .isDamage = isDamage || code == SQLITE_CORRUPT || code == SQLITE_NOTADB};
}

void check(int result) {
    if (result != SQLITE_OK)
        fail(result);
}

/// Creates a missing file, because SQLite would let others read a new file. An existing file is not opened:
/// closing any descriptor of it would release the locks that this process may have on it.
void createPrivately(const QByteArray &path) {
    QFile file(QFile::decodeName(path));
    if (file.exists())
        return;
    QDir().mkpath(QFileInfo(file).absolutePath());
    if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner))
        file.close();
}

} // namespace

void Connection::open(const QByteArray &path, int patienceMilliseconds) {
    createPrivately(path);
    const int result =
        sqlite3_open_v2(path.constData(), &m_database,
                        SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    check(result);
    m_patienceMilliseconds = patienceMilliseconds;
    sqlite3_busy_timeout(m_database, patienceMilliseconds);
    // Writing the log back takes several times as long as publishing a word, so that is not done for each
    // word.
    sqlite3_db_config(m_database, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    sqlite3_wal_hook(
        m_database,
        [](void *pages, sqlite3 *, const char *, int count) {
            *static_cast<int *>(pages) = count;
            return SQLITE_OK;
        },
        &m_pagesInLog);
    // The file may come from an untrusted source.
    sqlite3_db_config(m_database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(m_database, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(m_database, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
}

void Connection::writeLogBack() {
    sqlite3_busy_timeout(m_database, 0);
    sqlite3_exec(m_database, "PRAGMA wal_checkpoint(TRUNCATE)", nullptr, nullptr, nullptr);
    sqlite3_busy_timeout(m_database, m_patienceMilliseconds);
}

void Connection::execute(const char *sql) {
    check(sqlite3_exec(m_database, sql, nullptr, nullptr, nullptr));
}

void Connection::reset() {
    sqlite3_db_config(m_database, SQLITE_DBCONFIG_RESET_DATABASE, 1, nullptr);
    const int result = sqlite3_exec(m_database, "VACUUM", nullptr, nullptr, nullptr);
    sqlite3_db_config(m_database, SQLITE_DBCONFIG_RESET_DATABASE, 0, nullptr);
    check(result);
    // VACUUM does not change these fields of the header.
    execute("PRAGMA application_id = 0; PRAGMA user_version = 0");
}

Statement::Statement(const Connection &connection, std::string_view sql) {
    const int result = sqlite3_prepare_v2(connection.handle(), sql.data(), static_cast<int>(sql.size()),
                                          &m_statement, nullptr);
    // The statements are correct, so the file lacks a table or column that they name.
    if (result != SQLITE_OK)
        fail(result, (result & 0xff) == SQLITE_ERROR);
}

Statement &Statement::bind(int parameter, qint64 value) {
    check(sqlite3_bind_int64(m_statement, parameter, value));
    return *this;
}

Statement &Statement::bind(int parameter, const QString &value) {
    const QByteArray bytes = value.toUtf8();
    check(sqlite3_bind_text64(m_statement, parameter, bytes.constData(),
                              static_cast<sqlite3_uint64>(bytes.size()), SQLITE_TRANSIENT, SQLITE_UTF8));
    return *this;
}

bool Statement::next() {
    const int result = sqlite3_step(m_statement);
    if (result != SQLITE_ROW && result != SQLITE_DONE)
        fail(result);
    return result == SQLITE_ROW;
}

void Statement::run() {
    while (next()) {
    }
    restart();
}

void Statement::restart() {
    sqlite3_reset(m_statement);
}

QString Statement::text(int column) const {
    const auto *const bytes = reinterpret_cast<const char *>(sqlite3_column_text(m_statement, column));
    return QString::fromUtf8(bytes, sqlite3_column_bytes(m_statement, column));
}

Transaction::~Transaction() {
    if (!m_isCommitted)
        sqlite3_exec(m_connection.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
}

} // namespace lexiquill::sqlite

#include "desktop_search/index/sqlite_search_database.h"

#include "desktop_search/index/search_text.h"
#include "platform/file_lock.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QSet>

#include <algorithm>
#include <chrono>
#include <new>
#include <string>
#include <thread>
#include <utility>

namespace lexiquill {

using sqlite::Connection;
using sqlite::Statement;
using sqlite::Transaction;

namespace {

/// "LXIQ"; distinguishes our files from those of other programs.
constexpr qint64 applicationId = 0x4c584951;
/// Version of the tables and of the word splitting. A file of another version is emptied and created again.
constexpr qint64 schemaVersion = 3;

/// A longer log is written back after a commit. The first process to open the file reads the whole log; at
/// this length that takes less than 1 ms.
constexpr int longestLogPages = 512;

constexpr char32_t highestCharacter = QChar::LastValidCodePoint;

qint64 number(const Connection &connection, std::string_view sql) {
    Statement statement(connection, sql);
    statement.next();
    return statement.integer(0);
}

/// Reads the columns identifier, domain, title, display_name and description, starting at the column `first`.
SearchItem itemAt(const Statement &statement, int first) {
    return {.identifier = statement.text(first),
            .domain = statement.text(first + 1),
            .title = statement.text(first + 2),
            .displayName = statement.text(first + 3),
            .contentDescription = statement.text(first + 4)};
}

/// Deletes the items that match a condition with one parameter from both tables.
class Removal {
public:
    Removal(const Connection &connection, const std::string &condition)
        : m_fromSearch(connection,
                       "DELETE FROM search WHERE rowid IN (SELECT id FROM item WHERE " + condition + ')'),
          m_fromItem(connection, "DELETE FROM item WHERE " + condition) {}

    void run(const QString &value) {
        m_fromSearch.bind(1, value).run();
        m_fromItem.bind(1, value).run();
    }

private:
    Statement m_fromSearch;
    Statement m_fromItem;
};

/// The state of a file, read in one transaction, because other processes may be creating or emptying it.
struct FileState {
    bool isEmpty = false;
    /// A random number, chosen each time the file is emptied; no value for a file that is not ours.
    std::optional<qint64> generation = std::nullopt;
};

FileState stateOf(Connection &connection) {
    Transaction transaction(connection, Transaction::Kind::Read);
    const qint64 application = number(connection, "PRAGMA application_id");
    const bool isOurs =
        application == applicationId && number(connection, "PRAGMA user_version") == schemaVersion;
    FileState state;
    if (isOurs)
        state.generation = number(connection, "SELECT generation FROM state");
    else
        state.isEmpty = application == 0 && number(connection, "SELECT count(*) FROM sqlite_schema") == 0;
    transaction.commit();
    return state;
}

void createTables(Connection &connection) {
    // Fails harmlessly when another process does the same at this moment. The pages are small, because
    // publishing a word changes about a dozen of them only slightly.
    sqlite3_exec(connection.handle(), "PRAGMA page_size = 1024; PRAGMA journal_mode = WAL", nullptr, nullptr,
                 nullptr);
    Transaction transaction(connection);
    if (number(connection, "SELECT count(*) FROM sqlite_schema") != 0)
        return;
    connection.execute("CREATE TABLE state (is_complete INTEGER NOT NULL, generation INTEGER NOT NULL);"
                       "INSERT INTO state VALUES (0, random());"
                       "CREATE TABLE item (id INTEGER PRIMARY KEY, identifier TEXT NOT NULL UNIQUE,"
                       " domain TEXT NOT NULL, key TEXT NOT NULL, title TEXT NOT NULL,"
                       " display_name TEXT NOT NULL, description TEXT NOT NULL);"
                       "CREATE INDEX item_key ON item (key);"
                       "CREATE VIRTUAL TABLE search USING fts5 (title, display_name, description, keywords,"
                       " tokenize = 'unicode61 remove_diacritics 2');"
                       "INSERT INTO search (search, rank) VALUES ('pgsz', 1000)");
    connection.execute(("PRAGMA application_id = " + std::to_string(applicationId)).c_str());
    connection.execute(("PRAGMA user_version = " + std::to_string(schemaVersion)).c_str());
    transaction.commit();
}

/// Must be called within a transaction.
void putAll(const Connection &connection, const QList<SearchItem> &items) {
    Removal removal(connection, "identifier = ?1");
    Statement insertItem(connection,
                         "INSERT INTO item (identifier, domain, key, title, display_name, description)"
                         " VALUES (?1, ?2, ?3, ?4, ?5, ?6)");
    Statement insertTexts(connection, "INSERT INTO search (rowid, title, display_name, description, keywords)"
                                      " VALUES (?1, ?2, ?3, ?4, ?5)");
    // From the last to the first, so that the first item gets the highest row id. Of several items with the
    // same identifier, the last one is used.
    QSet<QString> seen;
    for (qsizetype i = items.size() - 1; i >= 0; --i) {
        const SearchItem &item = items.at(i);
        if (seen.contains(item.identifier))
            continue;
        seen.insert(item.identifier);
        removal.run(item.identifier);
        insertItem.bind(1, item.identifier)
            .bind(2, item.domain)
            .bind(3, comparable(item.title).toLower())
            .bind(4, item.title)
            .bind(5, item.displayName)
            .bind(6, item.contentDescription)
            .run();
        insertTexts.bind(1, connection.lastInsertedId())
            .bind(2, segmented(item.title))
            .bind(3, segmented(item.displayName))
            .bind(4, segmented(item.contentDescription))
            .bind(5, segmented(item.keywords.join(u'|')))
            .run();
    }
}

SearchIndexError errorOf(const sqlite::Error &error) {
    using Kind = SearchIndexError::Kind;
    switch (error.code) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_PROTOCOL:
        return {Kind::Busy};
    case SQLITE_READONLY:
        return {Kind::ReadOnly};
    case SQLITE_FULL:
        return {Kind::DiskFull};
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
    case SQLITE_AUTH:
        return {Kind::CannotOpen};
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return {Kind::Damaged};
    case SQLITE_IOERR:
        return {Kind::ReadWrite};
    case SQLITE_TOOBIG:
        return {Kind::TooLong};
    default:
        return {Kind::Other, error.code};
    }
}

void commit(Transaction &transaction, Connection &connection) {
    transaction.commit();
    if (connection.pagesInLog() > longestLogPages)
        connection.writeLogBack();
}

} // namespace

/// Opens the file and runs `work` on it. Empties a damaged file once and tries again.
template <typename Work> SearchDatabase::Error SqliteSearchDatabase::attempt(Work work) const {
    using namespace std::chrono_literals;
    const QDeadlineTimer deadline(patienceMilliseconds);
    bool isReset = false;
    for (;;) {
        std::optional<qint64> generation;
        try {
            Connection connection;
            generation = open(connection);
            work(connection);
            return {};
        } catch (const sqlite::Error &error) {
            // While another process creates the file, SQLite does not always wait by itself.
            const bool isBusy = error.code == SQLITE_BUSY || error.code == SQLITE_LOCKED;
            if (isBusy && !deadline.hasExpired()) {
                std::this_thread::sleep_for(5ms);
            } else if (!error.isDamage || std::exchange(isReset, true) || !resetFile(generation)) {
                return errorOf(error);
            }
        } catch (const std::bad_alloc &) {
            return SearchIndexError{SearchIndexError::Kind::OutOfMemory};
        }
    }
}

/// Opens the file and returns its generation. An empty file gets its tables.
std::optional<qint64> SqliteSearchDatabase::open(Connection &connection) const {
    connection.open(QFile::encodeName(m_path), patienceMilliseconds);
    FileState state = stateOf(connection);
    if (state.isEmpty) {
        createTables(connection);
        state = stateOf(connection);
    }
    if (!state.generation)
        throw sqlite::Error{.code = SQLITE_NOTADB, .isDamage = true};
    connection.execute("PRAGMA synchronous = NORMAL");
    return state.generation;
}

/// Empties a damaged file, unless another process has done so meanwhile: the new content must stay.
/// `damagedGeneration` is the generation of the damaged file, if it could be read. False when the file cannot
/// be emptied, for example because another process has it open.
bool SqliteSearchDatabase::resetFile(std::optional<qint64> damagedGeneration) const {
    using namespace std::chrono_literals;
    const auto lock = FileLock::acquire(m_path + QStringLiteral(".lock"), 1s);
    try {
        Connection connection;
        connection.open(QFile::encodeName(m_path), patienceMilliseconds);
        std::optional<qint64> generation;
        try {
            generation = stateOf(connection).generation;
        } catch (const sqlite::Error &error) {
            if (!error.isDamage)
                return false;
        }
        if (generation && generation != damagedGeneration)
            return true;
        if (!lock)
            return false;
        connection.reset();
        createTables(connection);
        return true;
    } catch (const sqlite::Error &) {
        return false;
    }
}

SearchDatabase::Error SqliteSearchDatabase::put(const QList<SearchItem> &items) {
    Error error = attempt([&](Connection &connection) {
        Transaction transaction(connection);
        putAll(connection, items);
        commit(transaction, connection);
    });
    if (error)
        noteGap(m_path);
    return error;
}

SearchDatabase::Error SqliteSearchDatabase::complete(const QList<SearchItem> &items) {
    // In parts, so that other processes can write in between.
    constexpr qsizetype partSize = 500;
    QFile::remove(gapMarker(m_path));
    return attempt([&](Connection &connection) {
        for (qsizetype end = items.size(); end > 0; end -= partSize) {
            Transaction transaction(connection);
            const qsizetype start = std::max<qsizetype>(0, end - partSize);
            putAll(connection, items.sliced(start, end - start));
            commit(transaction, connection);
        }
        connection.execute("UPDATE state SET is_complete = 1");
    });
}

SearchDatabase::Error SqliteSearchDatabase::removeItems(const QStringList &identifiers) {
    return attempt([&](Connection &connection) {
        Transaction transaction(connection);
        Removal removal(connection, "identifier = ?1");
        for (const QString &identifier : identifiers)
            removal.run(identifier);
        commit(transaction, connection);
    });
}

SearchDatabase::Error SqliteSearchDatabase::removeDomain(const QString &domain) {
    return attempt([&](Connection &connection) {
        Transaction transaction(connection);
        Removal(connection, "domain = ?1").run(domain);
        commit(transaction, connection);
    });
}

QList<SearchDatabase::Match> SqliteSearchDatabase::find(const QStringList &terms, int limit) {
    const QString query = normalizedQuery(terms);
    const QString expression = matchExpression(query);
    const QString key = query.toLower();
    QList<Match> matches;
    if (key.isEmpty())
        return matches;
    const auto search = [&](Connection &connection) {
        QSet<qint64> seen;
        matches.clear();
        const auto collect = [&](Statement &statement, Rank rank) {
            while (matches.size() < limit && statement.next()) {
                const qint64 id = statement.integer(0);
                if (seen.contains(id))
                    continue;
                seen.insert(id);
                matches += Match{.item = itemAt(statement, 1), .rank = rank};
            }
        };
        const std::string columns =
            "SELECT item.id, identifier, domain, item.title, item.display_name, item.description FROM ";
        Statement exact(connection, columns + "item WHERE key = ?1 ORDER BY id DESC");
        collect(exact.bind(1, key), Rank::Exact);
        // The highest character sorts after everything that can follow a prefix.
        Statement prefix(connection, columns +
                                         "item JOIN (SELECT id AS found FROM item WHERE key > ?1 AND key < ?2"
                                         " ORDER BY length(key), id DESC LIMIT ?3) ON id = found"
                                         " ORDER BY length(key), id DESC");
        collect(prefix.bind(1, key).bind(2, key + QString::fromUcs4(&highestCharacter, 1)).bind(3, limit),
                Rank::Prefix);
        if (expression.isEmpty())
            return;
        Statement other(connection, columns + "search JOIN item ON item.id = search.rowid"
                                              " WHERE search MATCH ?1 ORDER BY search.rowid DESC");
        collect(other.bind(1, expression), Rank::Other);
    };
    if (attempt(search))
        matches.clear();
    return matches;
}

QList<SearchItem> SqliteSearchDatabase::items(const QStringList &identifiers) {
    QList<SearchItem> items;
    const auto search = [&](Connection &connection) {
        items.clear();
        Statement statement(connection, "SELECT identifier, domain, title, display_name, description"
                                        " FROM item WHERE identifier = ?1");
        for (const QString &identifier : identifiers) {
            if (statement.bind(1, identifier).next())
                items += itemAt(statement, 0);
            statement.restart();
        }
    };
    if (attempt(search))
        items.clear();
    return items;
}

bool SqliteSearchDatabase::isComplete() {
    bool isComplete = true;
    const Error error = attempt([&](Connection &connection) {
        isComplete = number(connection, "SELECT is_complete FROM state") != 0;
    });
    return error || (isComplete && !QFile::exists(gapMarker(m_path)));
}

void SqliteSearchDatabase::tidy() {
    attempt([](Connection &connection) { connection.writeLogBack(); });
}

} // namespace lexiquill

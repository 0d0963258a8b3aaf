#include "app/search/search_session.h"

#include "app/shell/services.h"
#include "dictionaries/index/folding.h"
#include "storage/storage_manager.h"
#include "support/text.h"

#include <algorithm>
#include <utility>

namespace lexiquill {

namespace {

constexpr qsizetype maxFromWordbook = 6;
constexpr qsizetype maxSuggestions = 14;
constexpr qsizetype maxRecent = 30;
constexpr qsizetype maxNearSpellings = 8;
constexpr qsizetype maxSeen = 200;
/// Longer input is a text, not a word or phrase.
constexpr qsizetype maxSuggestedLength = 64;

Suggestion suggestionOf(const WordRecord &record, Suggestion::Origin origin) {
    return {.word = record.word, .summary = record.conciseSummary, .origin = origin};
}

/// The best `count` wanted records of the wordbook; equally good ones in the wordbook's order.
template <typename Wanted, typename Better>
QList<const WordRecord *> best(const QList<WordRecord> &words, qsizetype count, Wanted wanted,
                               Better better) {
    QList<const WordRecord *> found;
    for (const WordRecord &record : words) {
        if (wanted(record))
            found += &record;
    }
    const auto end = found.begin() + std::min(count, found.size());
    std::partial_sort(found.begin(), end, found.end(), [&](const WordRecord *left, const WordRecord *right) {
        return better(*left, *right) || (!better(*right, *left) && left < right);
    });
    found.erase(end, found.end());
    return found;
}

/// Whether a word starts with what was typed, ignoring case and accents.
bool startsWithFolded(const QString &word, const QString &typed) {
    const auto isAscii = [](QStringView text) {
        return std::ranges::all_of(text, [](QChar c) { return c.unicode() < 128; });
    };
    return word.startsWith(typed, Qt::CaseInsensitive) ||
           (!(isAscii(word) && isAscii(typed)) &&
            foldedKey(word.toUtf8()).startsWith(foldedKey(typed.toUtf8())));
}

/// A source's title without the note that it is the default.
QString plainTitle(DictionarySourceMode mode) {
    return title(mode).section(QStringLiteral(" ("), 0, 0);
}

} // namespace

SearchSession::SearchSession(QObject *parent) : SearchSession(Services::current(), parent) {}

SearchSession::SearchSession(Services &services, QObject *parent)
    : QObject(parent),
      m_dictionary(services.dictionary),
      m_offline(services.offlineDictionaries),
      m_storage(services.storage) {
    connect(&m_storage, &StorageManager::wordsChanged, this, &SearchSession::takeWords);
    suggestRecent();
}

SearchSession::~SearchSession() {
    m_stop.request_stop();
}

void SearchSession::setText(const QString &text) {
    if (text == m_text)
        return;
    m_text = text;
    abandon();
    Q_EMIT textChanged();
    setState(State::Suggesting);
    suggest();
}

void SearchSession::lookUp(const QString &word) {
    // A phrase selected in another program may contain a line break.
    const QString plain = word.simplified();
    if (plain.isEmpty())
        return;
    abandon();
    m_word = plain;
    if (m_text != plain) {
        m_text = plain;
        Q_EMIT textChanged();
    }
    m_cancellation = std::make_unique<Cancellation>();
    setState(State::LookingUp);
    ask(plain, m_cancellation->token());
}

void SearchSession::forget() {
    m_text.clear();
    Q_EMIT textChanged();
    setState(State::Suggesting);
    suggest();
}

QCoro::Task<> SearchSession::ask(QString word, std::stop_token stop) {
    const LookupResult result = co_await m_dictionary.lookup(word, stop);
    if (!stop.stop_requested())
        finish(result);
}

void SearchSession::finish(const LookupResult &result) {
    m_askedForm = result.askedForm.value_or(QString());
    if (result.entry) {
        const WordRecord record = m_storage.addOrUpdateSearch(*result.entry);
        see({.record = record.id,
             .headword = record.word,
             .askedForm = m_askedForm,
             .sourceText = QStringLiteral("来源：") + plainTitle(result.actualMode)});
        return;
    }
    // A word found earlier is still in the wordbook, even if no source finds it this time.
    if (const qsizetype known = indexOfWord(m_storage.words(), wordKey(m_word)); known >= 0) {
        const WordRecord &record = m_storage.words().at(known);
        see({.record = record.id,
             .headword = record.word,
             .askedForm = m_askedForm,
             .sourceText = QStringLiteral("来源：生词本")});
        return;
    }
    const QString offline = plainTitle(DictionarySourceMode::AppleOffline);
    m_missingText = result.actualMode == DictionarySourceMode::YoudaoOnline
                        ? QStringLiteral("%1和%2都没有给出释义。请检查拼写；如果没有联网，请检查网络连接。")
                              .arg(plainTitle(DictionarySourceMode::YoudaoOnline), offline)
                        : QStringLiteral("%1没有收录这个词；当前设置不查询%2。")
                              .arg(offline, plainTitle(DictionarySourceMode::YoudaoOnline));
    m_suggestions.setSuggestions({});
    setState(State::NotFound);
    inBackground(
        [&offline = m_offline, word = m_word](const std::stop_token &stop) {
            return offline.nearSpellings(word, maxNearSpellings, stop);
        },
        Suggestion::Origin::Spelling);
}

/// Shows a word that has just been found, and adds it to the words seen.
void SearchSession::see(const SeenWord &word) {
    if (m_place < 0 || m_seen.at(m_place).headword != word.headword) {
        m_seen.resize(m_place + 1);
        m_seen += word;
        if (m_seen.size() > maxSeen)
            m_seen.removeFirst();
        m_place = m_seen.size() - 1;
    } else {
        m_seen[m_place] = word;
    }
    show(word);
    Q_EMIT found();
}

void SearchSession::show(const SeenWord &word) {
    m_wordId = word.record.toString(QUuid::WithoutBraces);
    m_headword = word.headword;
    m_askedForm = word.askedForm;
    m_sourceText = word.sourceText;
    setState(State::Found);
}

bool SearchSession::goBack() {
    // While no word is shown, the last one seen is one step back.
    return showSeen(m_state == State::Found ? m_place - 1 : m_place, -1);
}

bool SearchSession::goForward() {
    return showSeen(m_place + 1, 1);
}

/// Shows the word seen at a place, or the next one in a direction that is still in the wordbook.
bool SearchSession::showSeen(qsizetype place, qsizetype step) {
    for (; place >= 0 && place < m_seen.size(); place += step) {
        SeenWord &word = m_seen[place];
        const qsizetype index = indexOfWord(m_storage.words(), word.record, word.headword);
        if (index < 0)
            continue;
        word.record = m_storage.words().at(index).id;
        abandon();
        m_place = place;
        m_word = word.headword;
        m_text = word.headword;
        Q_EMIT textChanged();
        show(word);
        return true;
    }
    return false;
}

void SearchSession::setState(State state) {
    // Emitted even in the same state, because the word may differ.
    m_state = state;
    Q_EMIT stateChanged();
}

void SearchSession::abandon() {
    m_cancellation.reset();
    m_stop.request_stop();
    m_stop = std::stop_source();
}

void SearchSession::suggest() {
    const QString typed = m_text.simplified();
    if (typed.isEmpty()) {
        suggestRecent();
        return;
    }
    if (typed.size() > maxSuggestedLength) {
        m_suggestions.setSuggestions({});
        return;
    }
    const bool isChinese = containsHan(typed);
    const auto isWanted = [&](const WordRecord &record) {
        return startsWithFolded(record.word, typed) || (isChinese && record.conciseSummary.contains(typed));
    };
    QList<Suggestion> suggestions;
    for (const WordRecord *record :
         best(m_storage.words(), maxFromWordbook, isWanted,
              [](const auto &left, const auto &right) { return left.word.size() < right.word.size(); }))
        suggestions += suggestionOf(*record, Suggestion::Origin::Wordbook);
    // Keep the earlier dictionary suggestions that still match until the dictionaries answer.
    QList<Suggestion> earlier = m_suggestions.rows();
    earlier.removeIf([&](const Suggestion &each) {
        const bool matches = isChinese ? each.word.contains(typed) : startsWithFolded(each.word, typed);
        return each.origin != Suggestion::Origin::Dictionary || !matches;
    });
    // Set all rows in one step, so that rows that stay are not removed and inserted again.
    for (const Suggestion &word : std::as_const(earlier)) {
        if (std::ranges::none_of(suggestions, [&](const Suggestion &each) {
                return each.word.compare(word.word, Qt::CaseInsensitive) == 0;
            }))
            suggestions += word;
    }
    m_suggestions.setSuggestions(suggestions.first(std::min(suggestions.size(), maxSuggestions)));
    inBackground(
        [&offline = m_offline, typed](const std::stop_token &stop) {
            return offline.completions(typed, maxSuggestions, stop);
        },
        Suggestion::Origin::Dictionary);
}

void SearchSession::suggestRecent() {
    m_stop.request_stop();
    QList<Suggestion> suggestions;
    for (const WordRecord *record : best(
             m_storage.words(), maxRecent, [](const WordRecord &) { return true; },
             [](const auto &left, const auto &right) {
                 return left.lastSearchedDate > right.lastSearchedDate;
             }))
        suggestions += suggestionOf(*record, Suggestion::Origin::Recent);
    m_suggestions.setSuggestions(suggestions);
}

/// The wordbook has changed, here or in another process.
void SearchSession::takeWords() {
    if (m_state == State::Suggesting)
        return suggest();
    if (m_state != State::Found)
        return;
    const qsizetype index = indexOfWord(m_storage.words(), QUuid::fromString(m_wordId), m_headword);
    if (index < 0) {
        setState(State::Suggesting);
        suggest();
    } else if (const QString id = m_storage.words().at(index).id.toString(QUuid::WithoutBraces);
               id != m_wordId) {
        m_wordId = id;
        Q_EMIT stateChanged();
    }
}

/// Searches the dictionaries on a background thread and adds the result, then what the words mean, unless the
/// user has typed more.
void SearchSession::inBackground(Search search, Suggestion::Origin origin) {
    m_stop.request_stop();
    m_stop = std::stop_source();
    m_queue.add([this, search = std::move(search), origin, stop = m_stop.get_token()] {
        if (stop.stop_requested())
            return;
        // The thread ends before this object is destroyed; destroying it drops calls still in the event
        // queue.
        const auto deliver = [this, stop](auto take) {
            const auto takeIfWanted = [take, stop] {
                if (!stop.stop_requested())
                    take();
            };
            QMetaObject::invokeMethod(this, takeIfWanted, Qt::QueuedConnection);
        };
        const QStringList words = search(stop);
        deliver([this, words, origin] { add(words, origin); });
        const QStringList summaries = m_offline.summaries(words, stop);
        deliver([this, words, summaries] { explain(words, summaries); });
    });
}

void SearchSession::explain(const QStringList &words, const QStringList &summaries) {
    QList<Suggestion> suggestions = m_suggestions.rows();
    for (Suggestion &each : suggestions) {
        const qsizetype place = words.indexOf(each.word);
        if (each.summary.isEmpty() && place >= 0)
            each.summary = summaries.value(place);
    }
    m_suggestions.setSuggestions(suggestions);
}

/// Replaces a source's earlier words. Its words come after those of the other sources.
void SearchSession::add(const QStringList &words, Suggestion::Origin origin) {
    QList<Suggestion> suggestions = m_suggestions.rows();
    QHash<QString, QString> summaries;
    for (const Suggestion &each : std::as_const(suggestions))
        summaries.insert(each.word, each.summary);
    suggestions.removeIf([origin](const Suggestion &each) { return each.origin == origin; });
    QSet<QString> known;
    for (const Suggestion &each : std::as_const(suggestions))
        known.insert(wordKey(each.word));
    for (const QString &word : words) {
        if (suggestions.size() < maxSuggestions && !known.contains(wordKey(word)))
            suggestions += {.word = word, .summary = summaries.value(word), .origin = origin};
    }
    m_suggestions.setSuggestions(suggestions);
}

} // namespace lexiquill

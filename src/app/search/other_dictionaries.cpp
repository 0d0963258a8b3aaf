#include "app/search/other_dictionaries.h"

#include "app/dictionaries/dictionary_imports.h"
#include "app/dictionaries/dictionary_texts.h"
#include "app/search/article_markup.h"
#include "app/shell/app_context.h"
#include "app/shell/services.h"
#include "dictionaries/dictionary_shelf.h"
#include "support/background_task.h"
#include "support/cancellation.h"

#include <algorithm>
#include <utility>

namespace lexiquill {

namespace {

constexpr qsizetype longestSummary = 200;

/// Whether a card with this record shows the entry.
bool shows(const WordRecord &record, const DictionaryEntry &entry) {
    return entry.posGroups == record.posGroups &&
           (!entry.posGroups.isEmpty() || entry.rawText == record.rawDefinition);
}

QList<DictionaryAnswerRow> rowsOf(const QList<DictionaryShelf::Answer> &answers,
                                  const std::optional<WordRecord> &shown) {
    QList<DictionaryAnswerRow> rows;
    for (const DictionaryShelf::Answer &answer : answers) {
        if (shown && shows(*shown, answer.entry))
            continue;
        const QString concise = answer.entry.conciseSummary();
        const QString summary = concise.isEmpty() ? answer.entry.rawText : concise;
        rows += {.path = answer.path,
                 .name = shownName(answer.dictionary),
                 .summary = summary.left(longestSummary).simplified(),
                 .article = {}};
    }
    return rows;
}

} // namespace

OtherDictionaries::OtherDictionaries(QObject *parent)
    : RowListModel(parent),
      m_shelf(Services::current().shelf) {
    connect(&AppContext::current().imports(), &DictionaryImports::imported, this,
            &OtherDictionaries::countDictionaries);
    countDictionaries();
}

OtherDictionaries::~OtherDictionaries() = default;

void OtherDictionaries::countDictionaries() {
    const auto count = [&shelf = m_shelf] {
        const QList<DictionaryShelf::Item> items = shelf.items();
        return std::ranges::count_if(items, [](const DictionaryShelf::Item &item) {
            return item.isOn && item.problem == DictionaryProblem::None;
        });
    };
    runInBackground(this, count, [this](auto found) {
        if (std::exchange(m_isOffered, found > 1) != m_isOffered)
            Q_EMIT isOfferedChanged();
    });
}

void OtherDictionaries::setWord(const QString &word) {
    if (word == m_word)
        return;
    m_word = word;
    m_question.reset();
    setRows({});
    setIsLoading(false);
    Q_EMIT wordChanged();
    if (std::exchange(m_isOpen, false))
        Q_EMIT isOpenChanged();
}

void OtherDictionaries::setIsOpen(bool isOpen) {
    if (isOpen == m_isOpen)
        return;
    m_isOpen = isOpen;
    Q_EMIT isOpenChanged();
    if (isOpen)
        ask();
}

void OtherDictionaries::ask() {
    m_question = std::make_unique<Cancellation>();
    setIsLoading(true);
    const std::stop_token stop = m_question->token();
    const auto shown = m_card ? m_card->record() : std::nullopt;
    const auto work = [&shelf = m_shelf, word = m_word, shown, stop] {
        return rowsOf(shelf.answers(word, stop), shown);
    };
    runInBackground(this, work, [this, stop](QList<DictionaryAnswerRow> rows) {
        if (stop.stop_requested())
            return;
        setRows(std::move(rows));
        setIsLoading(false);
    });
}

void OtherDictionaries::toggle(int row) {
    if (row < 0 || row >= rowCount())
        return;
    QList<DictionaryAnswerRow> changed = rows();
    DictionaryAnswerRow &answer = changed[row];
    answer.isOpen = !answer.isOpen;
    const bool isNew = answer.isOpen && answer.article.isEmpty();
    const QString path = answer.path;
    setRows(std::move(changed));
    if (!isNew || !m_question)
        return;
    const auto work = [&shelf = m_shelf, word = m_word, path] {
        return shownArticle(shelf.formattedArticle(path, word), path);
    };
    runInBackground(this, work, [this, path, stop = m_question->token()](const QString &article) {
        if (!stop.stop_requested())
            showArticle(path, article);
    });
}

void OtherDictionaries::showArticle(const QString &path, const QString &article) {
    QList<DictionaryAnswerRow> changed = rows();
    for (DictionaryAnswerRow &row : changed) {
        if (row.path == path)
            row.article = article.isEmpty() ? row.summary.toHtmlEscaped() : article;
    }
    setRows(std::move(changed));
}

void OtherDictionaries::setIsLoading(bool isLoading) {
    if (std::exchange(m_isLoading, isLoading) != isLoading)
        Q_EMIT isLoadingChanged();
}

QVariant OtherDictionaries::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const DictionaryAnswerRow &row = rows().at(index.row());
    switch (role) {
    case NameRole:
        return row.name;
    case SummaryRole:
        return row.summary;
    case ArticleRole:
        return row.article;
    case IsOpenRole:
        return row.isOpen;
    default:
        return {};
    }
}

QHash<int, QByteArray> OtherDictionaries::roleNames() const {
    return {{NameRole, "name"}, {SummaryRole, "summary"}, {ArticleRole, "article"}, {IsOpenRole, "isOpen"}};
}

} // namespace lexiquill

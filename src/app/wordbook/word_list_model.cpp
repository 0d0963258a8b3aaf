#include "app/wordbook/word_list_model.h"

#include "app/shell/services.h"
#include "app/wordbook/day_texts.h"
#include "storage/storage_manager.h"

#include <chrono>

namespace lexiquill {

namespace {

constexpr qsizetype longestSummary = 200; // characters; a row shows fewer

} // namespace

WordListModel::WordListModel(QObject *parent) : WordListModel(Services::current().storage, parent) {}

WordListModel::WordListModel(StorageManager &storage, QObject *parent)
    : RowListModel(parent),
      m_storage(storage),
      m_deletions(storage) {
    connect(&m_storage, &StorageManager::wordsChanged, this, &WordListModel::reload);
    connect(&m_timer, &QTimer::timeout, this, &WordListModel::followClock);
    m_timer.start(std::chrono::seconds{30});
    m_day = m_storage.calendar().date(m_storage.now());
    reload();
}

QList<WordRow> WordListModel::select() {
    QList<ListedWordPointer> words = m_list.select(m_searchText, m_filter, m_storage.now());
    QList<WordRow> rows;
    rows.reserve(words.size());
    for (ListedWordPointer &word : words) {
        const QUuid id = word->record.id;
        rows.append({.id = id, .word = std::move(word)});
    }
    return rows;
}

void WordListModel::setActive(bool isActive) {
    if (isActive == m_isActive)
        return;
    m_isActive = isActive;
    Q_EMIT activeChanged();
    if (m_isActive && m_isOutdated)
        reload();
    if (m_isActive)
        followClock();
}

void WordListModel::reload() {
    m_isOutdated = !m_isActive;
    if (!m_isActive)
        return;
    m_list.setRecords(m_storage.words());
    setRows(select());
    findSelection();
    Q_EMIT countChanged();
}

void WordListModel::choiceChanged() {
    replaceRows(select());
    findSelection();
    Q_EMIT countChanged();
    Q_EMIT listReplaced();
}

/// Updates what depends on time: words become due, and days pass.
void WordListModel::followClock() {
    if (!m_isActive)
        return;
    if (m_filter == WordFilter::Due) {
        setRows(select());
        findSelection();
        Q_EMIT countChanged();
    }
    const auto day = m_storage.calendar().date(m_storage.now());
    if (day == m_day)
        return;
    m_day = day;
    if (count() > 0)
        Q_EMIT dataChanged(index(0), index(count() - 1), {DetailRole, SpokenRole});
}

void WordListModel::setSearchText(const QString &text) {
    if (text == m_searchText)
        return;
    m_searchText = text;
    Q_EMIT searchTextChanged();
    choiceChanged();
}

void WordListModel::setFilter(int filter) {
    if (filter == this->filter() || filter < 0 || filter >= filterNames().size())
        return;
    m_filter = static_cast<WordFilter>(filter);
    Q_EMIT filterChanged();
    choiceChanged();
}

void WordListModel::setOrder(int order) {
    if (order == this->order() || order < 0 || order >= orderNames().size())
        return;
    m_order = static_cast<WordOrder>(order);
    m_list.setOrder(m_order);
    Q_EMIT orderChanged();
    choiceChanged();
}

QStringList WordListModel::filterNames() {
    QStringList names{QStringLiteral("全部")};
    for (const MemoryStatus status : allMemoryStatuses)
        names += rawValue(status);
    return names << QStringLiteral("待复习");
}

QStringList WordListModel::orderNames() {
    return {QStringLiteral("最近查询"), QStringLiteral("首次查询"), QStringLiteral("下次复习"),
            QStringLiteral("查询次数"), QStringLiteral("字母顺序")};
}

QString WordListModel::countText() const {
    return count() == totalCount() ? QStringLiteral("%1 个单词").arg(count())
                                   : QStringLiteral("%1 / %2 个单词").arg(count()).arg(totalCount());
}

QString WordListModel::selectedId() const {
    if (m_selectedCount != 1)
        return {};
    const QList<WordRow> &all = rows();
    const auto found = std::find_if(all.cbegin(), all.cend(),
                                    [this](const WordRow &row) { return m_selected.contains(row.id); });
    return found->id.toString(QUuid::WithoutBraces);
}

void WordListModel::choose(int row, Selection selection) {
    if (rows().isEmpty())
        return;
    row = std::clamp(row, 0, count() - 1);
    const QUuid id = rows().at(row).id;
    QSet<QUuid> selected;
    if (selection == Selection::Extend) {
        int anchor = row;
        for (int other = 0; other < count(); ++other) {
            if (rows().at(other).id == m_anchor)
                anchor = other;
        }
        for (int other = std::min(row, anchor); other <= std::max(row, anchor); ++other)
            selected += rows().at(other).id;
        m_anchor = rows().at(anchor).id;
    } else {
        if (selection == Selection::Toggle)
            selected = m_selected;
        if (!selected.remove(id))
            selected += id;
        m_anchor = id;
    }
    setSelection(std::move(selected), id);
}

void WordListModel::selectAll() {
    QSet<QUuid> selected;
    selected.reserve(count());
    for (const WordRow &row : rows())
        selected += row.id;
    setSelection(std::move(selected), m_current);
}

void WordListModel::clearSelection() {
    setSelection({}, {});
}

void WordListModel::setSelection(QSet<QUuid> selected, const QUuid &current) {
    m_current = current;
    const QSet<QUuid> former = std::exchange(m_selected, std::move(selected));
    int first = -1;
    int last = -1;
    for (int row = 0; row < count(); ++row) {
        if (former.contains(rows().at(row).id) == m_selected.contains(rows().at(row).id))
            continue;
        first = first < 0 ? row : first;
        last = row;
    }
    if (first >= 0)
        Q_EMIT dataChanged(index(first), index(last), {SelectedRole});
    findSelection();
}

/// Finds the rows of the selected records.
void WordListModel::findSelection() {
    m_selectedCount = 0;
    m_currentRow = -1;
    if (!m_selected.isEmpty() || !m_current.isNull()) {
        for (int row = 0; row < count(); ++row) {
            const QUuid &id = rows().at(row).id;
            m_selectedCount += m_selected.contains(id) ? 1 : 0;
            if (id == m_current)
                m_currentRow = row;
        }
    }
    Q_EMIT selectionChanged();
}

QStringList WordListModel::selectedIds() const {
    QStringList ids;
    for (const WordRow &row : rows()) {
        if (m_selected.contains(row.id))
            ids += row.id.toString(QUuid::WithoutBraces);
    }
    return ids;
}

QString WordListModel::deleteSelected() {
    QList<QUuid> ids;
    QUuid following;
    for (const WordRow &row : rows()) {
        if (m_selected.contains(row.id)) {
            ids += row.id;
            following = {};
        } else if (following.isNull()) {
            following = row.id;
        }
    }
    QString message = m_deletions.remove(ids);
    if (message.isEmpty())
        return message;
    if (following.isNull() && count() > 0)
        following = rows().last().id;
    m_anchor = following;
    setSelection(following.isNull() ? QSet<QUuid>() : QSet{following}, following);
    return message;
}

void WordListModel::undoDeletion() {
    const QList<QUuid> restored = m_deletions.undo();
    if (restored.isEmpty())
        return;
    m_anchor = restored.first();
    setSelection({restored.begin(), restored.end()}, m_anchor);
}

QString WordListModel::detail(const WordRecord &record) const {
    const Calendar calendar = m_storage.calendar();
    const Instant now = m_storage.now();
    switch (m_order) {
    case WordOrder::LastSearched:
        return relativeDay(record.lastSearchedDate, now, calendar) + QStringLiteral("查询");
    case WordOrder::FirstSearched:
        return relativeDay(record.firstSearchedDate, now, calendar) + QStringLiteral("收录");
    case WordOrder::SearchCount:
        return QStringLiteral("查询 %1 次").arg(record.searchCount);
    case WordOrder::NextReview:
    case WordOrder::Alphabet:
        break;
    }
    return nextReviewText(record, now, calendar);
}

QString WordListModel::spoken(const WordRecord &record) const {
    QStringList parts{record.word, record.conciseSummary, rawValue(record.memoryStatus), detail(record)};
    parts.removeAll(QString());
    return parts.join(u'，');
}

QVariant WordListModel::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const WordRecord &record = rows().at(index.row()).word->record;
    switch (role) {
    case WordRole:
        return record.word.simplified().left(longestSummary);
    case SummaryRole:
        return (record.conciseSummary.isEmpty() ? record.rawDefinition : record.conciseSummary)
            .left(longestSummary)
            .simplified();
    case StatusRole:
        return rawValue(record.memoryStatus);
    case BadgeRole:
        return badgeColorName(record.memoryStatus);
    case DetailRole:
        return detail(record);
    case SelectedRole:
        return m_selected.contains(record.id);
    case SpokenRole:
        return spoken(record);
    default:
        return {};
    }
}

QHash<int, QByteArray> WordListModel::roleNames() const {
    return {{WordRole, "word"},     {SummaryRole, "summary"},   {StatusRole, "status"}, {BadgeRole, "badge"},
            {DetailRole, "detail"}, {SelectedRole, "selected"}, {SpokenRole, "spoken"}};
}

} // namespace lexiquill

#include "app/wordbook/word_list_model.h"

#include "app/components/small_wordbook.h"
#include "app/shell/services.h"
#include "app/wordbook/day_texts.h"
#include "model/note_tags.h"
#include "storage/storage_manager.h"
#include "support/background_task.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <utility>

namespace lexiquill {

namespace {

constexpr qsizetype longestSummary = 200; // characters; a row shows fewer

/// E.g. "#考研 #四级"
QString tagText(const ListedWord &word) {
    return word.tags.isEmpty() ? QString() : u'#' + word.tags.join(QStringLiteral(" #"));
}

} // namespace

WordListModel::WordListModel(QObject *parent) : WordListModel(Services::current().storage, parent) {}

WordListModel::WordListModel(StorageManager &storage, QObject *parent)
    : RowListModel(parent),
      m_storage(storage),
      m_deletions(storage) {
    connect(&m_storage, &StorageManager::wordsChanged, this, &WordListModel::followWords);
    m_reloading.setSingleShot(true);
    connect(&m_reloading, &QTimer::timeout, this, &WordListModel::reload);
    connect(&m_timer, &QTimer::timeout, this, &WordListModel::followClock);
    m_timer.start(std::chrono::seconds{30});
    m_day = m_storage.calendar().date(m_storage.now());
    reload();
}

QList<WordRow> WordListModel::select() {
    QList<ListedWordPointer> words =
        m_list.select({.text = m_searchText, .filter = m_filter, .tagKey = m_tagKey}, m_storage.now());
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

/// A large wordbook is listed in an event of its own, so that no single one takes longer than a frame.
void WordListModel::followWords() {
    if (m_isActive && m_isLoaded && m_storage.words().size() > smallWordbook)
        m_reloading.start(0);
    else
        reload();
}

void WordListModel::reload() {
    m_reloading.stop();
    m_isOutdated = !m_isActive || m_isLoading;
    if (m_isOutdated)
        return;
    if (!m_isLoaded && m_storage.words().size() > smallWordbook) {
        load();
        return;
    }
    m_isLoaded = true;
    m_list.setRecords(m_storage.words());
    followTags();
    setRows(select());
    findSelection();
    Q_EMIT countChanged();
    if (std::exchange(m_isRestoring, false))
        Q_EMIT restored();
}

/// Prepares the list on another thread.
void WordListModel::load() {
    m_isLoading = true;
    const auto prepare = [words = m_storage.words(), order = m_order]() mutable {
        auto list = std::make_shared<WordList>();
        list->setOrder(order);
        list->setRecords(words);
        list->prepareSearch();
        words.clear();
        return list;
    };
    runInBackground(this, prepare, [this](const std::shared_ptr<WordList> &list) {
        m_isLoading = false;
        m_isLoaded = true;
        std::swap(m_list, *list);
        if (m_list.order() != m_order)
            m_list.setOrder(m_order);
        // The words may have changed in the meantime.
        if (std::exchange(m_isOutdated, false)) {
            reload();
            return;
        }
        followTags();
        setRows(select());
        findSelection();
        Q_EMIT countChanged();
    });
    Q_EMIT countChanged();
}

int WordListModel::totalCount() const {
    return static_cast<int>(m_isLoading ? m_storage.words().size() : m_list.size());
}

/// Takes the tags of the list, and gives up the chosen tag if it is not among them.
void WordListModel::followTags() {
    if (m_list.tags() != m_tags) {
        m_tags = m_list.tags();
        m_tagNames.clear();
        if (!m_tags.isEmpty())
            m_tagNames += QStringLiteral("全部标签");
        for (const TagCount &tag : std::as_const(m_tags))
            m_tagNames += QStringLiteral("#%1（%2）").arg(tag.name, QString::number(tag.count));
        Q_EMIT tagNamesChanged();
    }
    takeTag(m_tagKey);
}

void WordListModel::takeTag(const QString &key) {
    const auto found =
        std::ranges::find_if(std::as_const(m_tags), [&](const TagCount &tag) { return tag.key == key; });
    m_tagKey = found == m_tags.cend() && !m_isLoading ? QString() : key;
    m_tag = found == m_tags.cend() ? 0 : static_cast<int>(found - m_tags.cbegin()) + 1;
    // Also for the same tag, whose place may be another one.
    Q_EMIT tagChanged();
}

void WordListModel::setTag(int tag) {
    if (tag == m_tag || tag < 0 || tag > m_tags.size())
        return;
    takeTag(tag == 0 ? QString() : m_tags.at(tag - 1).key);
    choiceChanged();
}

void WordListModel::filterByTag(const QString &tag) {
    takeTag(tagKey(tag));
    choiceChanged();
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
    return count() == totalCount() || m_isLoading
               ? QStringLiteral("%1 个单词").arg(totalCount())
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
    const QList<QUuid> ids = m_deletions.undo();
    if (ids.isEmpty())
        return;
    m_anchor = ids.first();
    setSelection({ids.begin(), ids.end()}, m_anchor);
    m_isRestoring = m_reloading.isActive();
    if (!m_isRestoring)
        Q_EMIT restored();
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
    const ListedWord &word = *rows().at(index.row()).word;
    const WordRecord &record = word.record;
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
        return word.tags.isEmpty() ? spoken(record)
                                   : spoken(record) + u'，' + tagText(word).left(longestSummary);
    case TagsRole:
        return tagText(word).left(longestSummary);
    default:
        return {};
    }
}

QHash<int, QByteArray> WordListModel::roleNames() const {
    return {{WordRole, "word"},     {SummaryRole, "summary"},   {StatusRole, "status"}, {BadgeRole, "badge"},
            {DetailRole, "detail"}, {SelectedRole, "selected"}, {SpokenRole, "spoken"}, {TagsRole, "tags"}};
}

} // namespace lexiquill

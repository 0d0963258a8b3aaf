#pragma once

#include "app/components/row_list_model.h"
#include "app/wordbook/word_deletions.h"
#include "app/wordbook/word_list.h"

#include <QDate>
#include <QQmlEngine>
#include <QSet>
#include <QTimer>

namespace lexiquill {

class StorageManager;

struct WordRow {
    QUuid id;
    ListedWordPointer word;

    friend bool operator==(const WordRow &, const WordRow &) = default;
};

/// The records of the wordbook, filtered by a text and a status and sorted, with the user's selection. A
/// change of the wordbook is reported row by row; a new filter or order is reported as a new list.
class WordListModel : public RowListModel<WordRow> {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    /// An inactive model ignores changes of the wordbook until it becomes active.
    Q_PROPERTY(bool active READ isActive WRITE setActive NOTIFY activeChanged)
    /// Indexes into `filterNames` and `orderNames`.
    Q_PROPERTY(int filter READ filter WRITE setFilter NOTIFY filterChanged)
    Q_PROPERTY(int order READ order WRITE setOrder NOTIFY orderChanged)
    Q_PROPERTY(QStringList filterNames READ filterNames CONSTANT)
    Q_PROPERTY(QStringList orderNames READ orderNames CONSTANT)
    /// An index into `tagNames`. They are the tags of the wordbook with the number of their words, after a
    /// name for all words; empty when there are no tags.
    Q_PROPERTY(int tag READ tag WRITE setTag NOTIFY tagChanged)
    Q_PROPERTY(QStringList tagNames READ tagNames NOTIFY tagNamesChanged)
    /// True while a large wordbook is being read for the first time. There are no rows then.
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY countChanged)
    /// Number of all records, and of the listed ones.
    Q_PROPERTY(int totalCount READ totalCount NOTIFY countChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    /// Such as "1234 个单词"
    Q_PROPERTY(QString countText READ countText NOTIFY countChanged)
    /// Number of listed records that are selected.
    Q_PROPERTY(int selectedCount READ selectedCount NOTIFY selectionChanged)
    /// The row with the keyboard cursor; -1 for none.
    Q_PROPERTY(int currentRow READ currentRow NOTIFY selectionChanged)
    /// The id of the only selected record; empty when there are none or several.
    Q_PROPERTY(QString selectedId READ selectedId NOTIFY selectionChanged)

public:
    enum Role {
        WordRole = Qt::UserRole,
        SummaryRole, ///< one line
        StatusRole,  ///< "新查询", …
        BadgeRole,   ///< the name of the status's colour
        DetailRole,  ///< the value that the list is sorted by, e.g. "今天查询" or "查询 3 次"
        SelectedRole,
        SpokenRole, ///< the whole row in one text
        TagsRole,   ///< e.g. "#考研 #四级"
    };
    /// How choosing a row changes the selection.
    enum class Selection { Replace, Toggle, Extend };
    Q_ENUM(Selection)

    explicit WordListModel(QObject *parent = nullptr);
    explicit WordListModel(StorageManager &storage, QObject *parent = nullptr);

    bool isActive() const { return m_isActive; }
    void setActive(bool isActive);
    const QString &searchText() const { return m_searchText; }
    void setSearchText(const QString &text);
    int filter() const { return static_cast<int>(m_filter); }
    void setFilter(int filter);
    int order() const { return static_cast<int>(m_order); }
    void setOrder(int order);
    static QStringList filterNames();
    static QStringList orderNames();
    int tag() const { return m_tag; }
    void setTag(int tag);
    const QStringList &tagNames() const { return m_tagNames; }
    bool isLoading() const { return m_isLoading; }
    int totalCount() const;
    int count() const { return rowCount(); }
    QString countText() const;
    int selectedCount() const { return m_selectedCount; }
    int currentRow() const { return m_currentRow; }
    QString selectedId() const;

    /// Chooses a row: Replace selects only this row, Toggle adds or removes it, Extend selects all rows from
    /// the row chosen before to this one. A row outside the list means the nearest one.
    Q_INVOKABLE void choose(int row, lexiquill::WordListModel::Selection selection);
    Q_INVOKABLE void selectAll();
    Q_INVOKABLE void clearSelection();
    /// The ids of the selected records, in the order of the list.
    Q_INVOKABLE QStringList selectedIds() const;
    /// Deletes the selected records and returns a message for the user, e.g. "已删除 3 个单词"; empty if none
    /// was selected. Then selects the record after them.
    Q_INVOKABLE QString deleteSelected();
    /// Undoes the last deletion that has not been undone.
    Q_INVOKABLE void undoDeletion();
    /// Lists only the words with this tag; if there is no such tag, all words.
    Q_INVOKABLE void filterByTag(const QString &tag);

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void activeChanged();
    void searchTextChanged();
    void filterChanged();
    void orderChanged();
    void tagChanged();
    void tagNamesChanged();
    void countChanged();
    void selectionChanged();
    /// A new text, filter or order has replaced all rows.
    void listReplaced();
    /// The records of an undone deletion are listed again.
    void restored();

private:
    QList<WordRow> select();
    void followWords();
    void reload();
    void load();
    void followTags();
    void takeTag(const QString &key);
    void choiceChanged();
    void followClock();
    void setSelection(QSet<QUuid> selected, const QUuid &current);
    void findSelection();
    QString detail(const WordRecord &record) const;
    QString spoken(const WordRecord &record) const;

    StorageManager &m_storage;
    bool m_isActive = true;
    bool m_isOutdated = false;
    bool m_isLoading = false; ///< on another thread
    bool m_isLoaded = false;
    WordList m_list;
    QString m_searchText;
    WordFilter m_filter = WordFilter::All;
    WordOrder m_order = WordOrder::LastSearched;
    QString m_tagKey; ///< of the chosen tag; empty for all words
    int m_tag = 0;
    QList<TagCount> m_tags;
    QStringList m_tagNames;
    std::optional<QDate> m_day; ///< the day that relative dates refer to
    QTimer m_timer;
    QTimer m_reloading; ///< runs until the changed words of a large wordbook are listed
    bool m_isRestoring = false;
    QSet<QUuid> m_selected; ///< may contain records that are not listed
    QUuid m_current;
    QUuid m_anchor; ///< where an extended selection starts
    int m_selectedCount = 0;
    int m_currentRow = -1;
    WordDeletions m_deletions;
};

} // namespace lexiquill

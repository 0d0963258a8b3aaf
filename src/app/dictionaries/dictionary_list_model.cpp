#include "app/dictionaries/dictionary_list_model.h"

#include "app/dictionaries/dictionary_imports.h"
#include "app/dictionaries/dictionary_texts.h"
#include "app/dictionaries/removed_dictionaries.h"
#include "app/shell/app_context.h"
#include "app/shell/services.h"
#include "dictionaries/dictionary_shelf.h"
#include "support/background_task.h"

#include <QFileInfo>
#include <QLocale>

#include <algorithm>
#include <utility>

namespace lexiquill {

namespace {

QString detailOf(const DictionaryShelf::Item &item) {
    QStringList parts{item.format};
    if (item.about.wordCount > 0)
        parts += QLocale(QLocale::Chinese).toString(item.about.wordCount) + QStringLiteral(" 词");
    parts += item.isBundled ? QStringLiteral("程序自带") : shownPath(QFileInfo(item.path).path());
    return parts.join(QStringLiteral(" · "));
}

QString aboutOf(const DictionaryAbout &about) {
    QStringList parts;
    for (const QString &text : {about.author, about.description}) {
        if (const QString line = shownName(text.trimmed().section(u'\n', 0, 0)); !line.isEmpty())
            parts += line;
    }
    return parts.join(QStringLiteral(" · "));
}

DictionaryRow rowOf(const DictionaryShelf::Item &item) {
    const QString name = shownName(item.about.name);
    return {.path = item.path,
            .name = name.isEmpty() ? shownName(QFileInfo(item.path).completeBaseName()) : name,
            .about = aboutOf(item.about),
            .detail = detailOf(item),
            .problem = displayText(item.problem),
            .isOn = item.isOn,
            .isImported = item.isImported};
}

} // namespace

DictionaryListModel::DictionaryListModel(QObject *parent)
    : RowListModel(parent),
      m_shelf(Services::current().shelf),
      m_removed(AppContext::current().removedDictionaries()) {
    connect(&AppContext::current().imports(), &DictionaryImports::imported, this,
            &DictionaryListModel::reload);
    reload();
}

QString DictionaryListModel::undoableName() const {
    return m_removed.last();
}

QVariant DictionaryListModel::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const DictionaryRow &row = rows().at(index.row());
    switch (role) {
    case PathRole:
        return row.path;
    case NameRole:
        return row.name;
    case AboutRole:
        return row.about;
    case DetailRole:
        return row.detail;
    case ProblemRole:
        return row.problem;
    case IsOnRole:
        return row.isOn;
    case IsImportedRole:
        return row.isImported;
    default:
        return {};
    }
}

QHash<int, QByteArray> DictionaryListModel::roleNames() const {
    return {
        {PathRole, "path"},       {NameRole, "name"}, {AboutRole, "about"},          {DetailRole, "detail"},
        {ProblemRole, "problem"}, {IsOnRole, "isOn"}, {IsImportedRole, "isImported"}};
}

void DictionaryListModel::reload() {
    const int number = ++m_latest;
    const auto find = [&shelf = m_shelf] {
        QList<DictionaryRow> rows;
        for (const DictionaryShelf::Item &item : shelf.items())
            rows += rowOf(item);
        return rows;
    };
    runInBackground(this, find, [this, number](QList<DictionaryRow> rows) {
        if (number != m_latest)
            return;
        setRows(std::move(rows));
        if (std::exchange(m_isLoading, false))
            Q_EMIT isLoadingChanged();
    });
}

void DictionaryListModel::setOn(int row, bool isOn) {
    if (row < 0 || row >= rowCount())
        return;
    QList<DictionaryRow> changed = rows();
    changed[row].isOn = isOn;
    m_shelf.setOn(changed.at(row).path, isOn);
    setRows(std::move(changed));
    reload();
}

void DictionaryListModel::moveTo(int row, int target) {
    if (row < 0 || target < 0 || row >= rowCount() || target >= rowCount() || row == target)
        return;
    // What is being read now has the old order.
    ++m_latest;
    moveRow(row, target);
}

void DictionaryListModel::storeOrder() {
    QStringList paths;
    for (const DictionaryRow &row : rows())
        paths += row.path;
    m_shelf.setOrder(paths);
    reload();
}

void DictionaryListModel::remove(const QString &path) {
    const auto found = std::ranges::find(rows(), path, &DictionaryRow::path);
    if (found == rows().end() || !found->isImported)
        return;
    QList<DictionaryRow> rest = rows();
    const DictionaryRow removed = rest.takeAt(found - rows().begin());
    if (!m_removed.remove(removed.path, removed.name)) {
        Q_EMIT said(QStringLiteral("无法移除“%1”").arg(removed.name), false);
        return;
    }
    setRows(std::move(rest));
    Q_EMIT undoableNameChanged();
    Q_EMIT said(QStringLiteral("已移除“%1”").arg(removed.name), true);
    reload();
}

void DictionaryListModel::undoRemoval() {
    if (m_removed.last().isNull())
        return;
    const QString wanted = m_removed.last();
    const QString restored = m_removed.undo();
    Q_EMIT undoableNameChanged();
    Q_EMIT said(restored.isNull() ? QStringLiteral("无法恢复“%1”").arg(wanted)
                                  : QStringLiteral("已恢复“%1”").arg(restored),
                false);
    reload();
}

} // namespace lexiquill

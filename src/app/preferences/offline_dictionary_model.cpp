#include "app/preferences/offline_dictionary_model.h"

#include "app/shell/services.h"
#include "dictionaries/system_dictionary_service.h"
#include "support/background_task.h"

namespace lexiquill {

OfflineDictionaryModel::OfflineDictionaryModel(QObject *parent) : QAbstractListModel(parent) {
    SystemDictionaryService &service = Services::current().offlineDictionaries;
    const auto find = [&service] {
        return service.dictionaries();
    };
    runInBackground(this, find, [this](QList<DictionaryShelf::Item> found) {
        if (!found.isEmpty()) {
            beginInsertRows({}, 0, static_cast<int>(found.size()) - 1);
            m_dictionaries = std::move(found);
            endInsertRows();
        }
        m_isLoading = false;
        Q_EMIT isLoadingChanged();
    });
}

int OfflineDictionaryModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_dictionaries.size());
}

QVariant OfflineDictionaryModel::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const DictionaryShelf::Item &dictionary = m_dictionaries.at(index.row());
    switch (role) {
    case NameRole:
        return dictionary.about.name;
    case WordCountRole:
        return dictionary.about.wordCount;
    case PathRole:
        return dictionary.path;
    default:
        return {};
    }
}

QHash<int, QByteArray> OfflineDictionaryModel::roleNames() const {
    return {{NameRole, "name"}, {WordCountRole, "wordCount"}, {PathRole, "path"}};
}

} // namespace lexiquill

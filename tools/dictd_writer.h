#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace lexiquill::tools {

/// A headword with its article, both in UTF-8.
struct DictdEntry {
    QByteArray word;
    QByteArray article;
    QByteArray spelling = {}; ///< the fourth column of the index; none if empty
};

/// A number in base 64, as the index of a dictd dictionary has it.
QByteArray dictdNumber(quint64 number);

/// Writes DIRECTORY/BASENAME.index and .dict, or .dict.dz if `isPacked`. Returns an empty string, or what
/// went wrong.
QString writeDictd(const QString &directory, const QString &baseName, const std::vector<DictdEntry> &entries,
                   bool isPacked);

} // namespace lexiquill::tools

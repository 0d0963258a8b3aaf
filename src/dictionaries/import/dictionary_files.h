#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace lexiquill {

/// One dictionary on disk: the file by which it is opened, and all files that belong to it.
struct DictionaryFiles {
    QString mainFile;       ///< absolute
    QStringList indexFiles; ///< absolute; besides the main file, what tells two dictionaries apart
    /// Paths relative to the directory of the main file, which is among them.
    QStringList files;

    /// The main file's name without its suffix.
    QString name() const;
};

struct FoundDictionaries {
    QList<DictionaryFiles> dictionaries; ///< sorted by the paths of their main files
    bool isComplete = true;              ///< false when there were too many files
};

/// The dictionaries below a directory. Hidden files, links and what lies more than `depth` levels deep are
/// left out; gives up after `most` entries.
FoundDictionaries dictionariesBelow(const QString &path, int depth, int most);

/// The dictionary that a file belongs to: the file is its main file or lies beside it. No main file if there
/// is none. `most`: the number of pictures and sounds that are looked for.
DictionaryFiles dictionaryOfFile(const QString &path, int most);

} // namespace lexiquill

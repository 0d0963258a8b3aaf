#pragma once

#include "dictionaries/dictionary_reader.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace lexiquill {

/// A dictionary before its files are opened.
struct DictionaryDescription {
    DictionaryAbout about;
    DictionaryProblem problem = DictionaryProblem::None;
};

/// A format of dictionaries. Each dictionary has one main file, by which it is found.
struct DictionaryFormat {
    QString name;   ///< for the user, such as "StarDict"
    QString suffix; ///< of the main file, with the dot, in lower case
    /// Whether a file with the suffix is the main file of a dictionary; null if all are.
    std::function<bool(const QString &path)> isMainFile = {};

    /// All files whose change changes the dictionary, the main file first; at most 4 paths, which need not
    /// exist.
    std::function<QStringList(const QString &path)> files;
    /// Reads only what describes the dictionary; quick.
    std::function<DictionaryDescription(const QString &path)> describe;
    std::function<OpenedReader(const QString &path)> open;
};

} // namespace lexiquill

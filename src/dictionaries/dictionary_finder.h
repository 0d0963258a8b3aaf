#pragma once

#include "dictionaries/dictionary_format.h"
#include "platform/file_stamp.h"

#include <QString>

#include <utility>
#include <vector>

namespace lexiquill {

/// A dictionary that was found on disk.
struct FoundDictionary {
    QString path; ///< of its main file
    const DictionaryFormat *format;
};

/// A directory that was searched, as it was then.
using SearchedDirectory = std::pair<QString, FileStamp>;

/// The format of a dictionary by the name of its main file; null for other files.
const DictionaryFormat *formatOf(const QString &path, const std::vector<DictionaryFormat> &formats);

/// The dictionaries below a directory, sorted by path; each file once, whatever links lead to it. Hidden
/// directories are left out. The directories that were searched are added to `searched`.
std::vector<FoundDictionary> findDictionaries(const QString &directory,
                                              const std::vector<DictionaryFormat> &formats,
                                              std::vector<SearchedDirectory> &searched);

} // namespace lexiquill

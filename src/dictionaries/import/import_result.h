#pragma once

#include "dictionaries/dictionary_problem.h"

#include <QString>
#include <QStringList>

namespace lexiquill {

/// Why a dictionary was not imported.
enum class ImportProblem {
    None,
    NoDictionary,  ///< there is no dictionary in it
    AlreadyThere,  ///< the same dictionary was imported before
    Broken,        ///< the dictionary cannot be used; its DictionaryProblem says why
    TooLarge,      ///< more bytes or files than a dictionary has
    UnsafeNames,   ///< names that lead out of the directory or cannot be stored
    ForbiddenKind, ///< links, devices or other things that are neither files nor directories
    Encrypted,     ///< the archive needs a password
    Damaged,       ///< the archive is damaged, or no archive of a known kind
    NoSpace,       ///< the disk is full
    NoPermission,  ///< the imported directory cannot be written
    Unreadable,    ///< the file is missing or cannot be read
    Cancelled,
    NoLibrary, ///< the part of the program that imports is missing
};

/// What became of one dictionary, or of a path in which there is none.
struct ImportResult {
    QString source; ///< the path that was to be imported
    QString name;   ///< for the user: of the dictionary's main file without its suffix, or of the source
    QString mainFile = {}; ///< where it is now; empty if it was not imported
    ImportProblem problem = ImportProblem::None;
    DictionaryProblem dictionaryProblem = DictionaryProblem::None; ///< if it is broken
};

} // namespace lexiquill

#pragma once

#include "dictionaries/import/dictionary_importer.h"
#include "platform/module.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>

// The libraries that are loaded at run time, and what each of them offers.

namespace lexiquill {

class OnlineSource;
class SearchDatabase;

/// Everything that uses the network.
class NetworkModule {
public:
    static constexpr const char *library = "lexiquill_network";

    virtual ~NetworkModule() = default;
    /// The process-wide online dictionary.
    virtual OnlineSource &onlineSource() = 0;
};

/// The database file of the search index.
class SearchIndexModule {
public:
    static constexpr const char *library = "lexiquill_search_index";

    virtual ~SearchIndexModule() = default;
    /// Does not access the file before the first operation.
    virtual std::unique_ptr<SearchDatabase> open(const QString &path) = 0;
};

/// Adds dictionaries from files and archives.
class DictionaryImportModule {
public:
    static constexpr const char *library = "lexiquill_dictionary_import";

    virtual ~DictionaryImportModule() = default;
    virtual std::unique_ptr<DictionaryImporter> importerInto(const QString &directory,
                                                             PrepareDictionary prepare) = 0;
};

/// Finds an instance of the application that is already running.
class ActivationModule {
public:
    static constexpr const char *library = "lexiquill_activation";

    virtual ~ActivationModule() = default;
    /// Passes these arguments to the running instance. False when there is none.
    virtual bool forwardStart(const QStringList &arguments) = 0;
};

/// The window.
class DesktopModule {
public:
    static constexpr const char *library = "lexiquill_desktop";

    virtual ~DesktopModule() = default;
    /// Runs the application until it quits and returns its exit status.
    virtual int run(int argc, char **argv) = 0;
};

} // namespace lexiquill

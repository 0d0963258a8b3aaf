#pragma once

#include "dictionaries/headwords.h"
#include "model/dictionary_entry.h"

#include <QString>

#include <optional>

namespace lexiquill {

/// One dictionary on disk, whatever its format. Its files may change or go at any time. To be used by one
/// thread at a time.
class Dictionary {
public:
    virtual ~Dictionary() = default;

    /// As the dictionary calls itself.
    virtual QString name() const = 0;
    /// Headwords, as far as the dictionary says; 0 if unknown.
    virtual qint64 wordCount() const = 0;
    /// The file by which it was found.
    virtual QString path() const = 0;

    /// Whether it explains in Chinese, at least in part. May have to read some of it.
    virtual bool holdsChinese() = 0;

    /// The entry of a word as it is spelled, or else without regard to case. Nothing when the word is unknown
    /// or the dictionary unusable.
    virtual std::optional<DictionaryEntry> find(const QString &word) = 0;

    /// Null when the dictionary is unusable. To be asked for anew before every use.
    virtual const Headwords *headwords() = 0;
};

} // namespace lexiquill

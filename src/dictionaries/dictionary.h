#pragma once

#include "dictionaries/headwords.h"
#include "model/dictionary_entry.h"

#include <QString>

#include <optional>

namespace lexiquill {

/// One dictionary on disk, in any format. Its files may change or disappear at any time. To be used by one
/// thread at a time.
class Dictionary {
public:
    virtual ~Dictionary() = default;

    /// The title that the dictionary gives itself.
    virtual QString name() const = 0;
    /// The number of headwords that the dictionary states; 0 if unknown.
    virtual qint64 wordCount() const = 0;
    /// The file by which it was found.
    virtual QString path() const = 0;

    /// Whether at least some explanations are in Chinese. May read a part of the dictionary.
    virtual bool holdsChinese() = 0;

    /// The entry of a word: an exact match if there is one, else a match that ignores case. No value when the
    /// word is unknown or the dictionary is unusable.
    virtual std::optional<DictionaryEntry> find(const QString &word) = 0;

    /// Null when the dictionary is unusable. Call this again before every use, because the object may be
    /// replaced.
    virtual const Headwords *headwords() = 0;
};

} // namespace lexiquill

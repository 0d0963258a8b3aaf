#pragma once

#include "model/word_record.h"

#include <QList>
#include <QString>

#include <functional>
#include <optional>

namespace lexiquill {

/// The records that a new wordbook begins with: five words as if they had just been searched for, as far as
/// `lookUp` knows them.
QList<WordRecord> firstRunWords(const std::function<std::optional<DictionaryEntry>(const QString &)> &lookUp,
                                Instant now);

} // namespace lexiquill

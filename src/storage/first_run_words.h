#pragma once

#include "model/word_record.h"

#include <QList>
#include <QString>

#include <functional>
#include <optional>

namespace lexiquill {

/// The first records of a new wordbook: five words as if they had just been searched, without those that
/// `lookUp` does not know.
QList<WordRecord> firstRunWords(const std::function<std::optional<DictionaryEntry>(const QString &)> &lookUp,
                                Instant now);

} // namespace lexiquill

#pragma once

#include <QString>
#include <QStringList>

namespace lexiquill::stardict {

/// Words of which `word` may be an English inflected form, likeliest first; many of them are no words at all,
/// so they serve only to look further. Empty for words that show no ending.
QStringList baseForms(const QString &word);

} // namespace lexiquill::stardict

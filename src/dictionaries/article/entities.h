#pragma once

#include <QString>
#include <QStringView>

namespace lexiquill::article {

/// The character reference ("&amp;", "&#233;", "&#xe9;") at the start of a text.
struct Entity {
    /// The character that it means; U+FFFD for a number that is not a character.
    QString text;
    /// Length of the reference; 0 if there is no known reference.
    qsizetype length = 0;
};
Entity readEntity(QStringView text);

} // namespace lexiquill::article

#pragma once

#include <QString>
#include <QStringView>

namespace lexiquill::article {

/// The character reference ("&amp;", "&#233;", "&#xe9;") at the start of a text.
struct Entity {
    /// What it stands for; U+FFFD for a number that is no character.
    QString text;
    /// Characters it takes; 0 when there is no known reference.
    qsizetype length = 0;
};
Entity readEntity(QStringView text);

} // namespace lexiquill::article

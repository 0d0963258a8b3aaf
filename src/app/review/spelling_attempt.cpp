#include "app/review/spelling_attempt.h"

#include <QVariantMap>

namespace lexiquill {

QVariantList SpellingAttempt::pieces() const {
    QVariantList pieces;
    for (const SpellingPiece &piece : m_comparison.pieces)
        pieces += QVariantMap{{QStringLiteral("text"), piece.text},
                              {QStringLiteral("isExtra"), piece.kind == SpellingPiece::Kind::Extra},
                              {QStringLiteral("isMissing"), piece.kind == SpellingPiece::Kind::Missing}};
    return pieces;
}

void SpellingAttempt::make(const QString &typed, const QString &word) {
    m_comparison = compareSpelling(typed, word);
    m_spoken = spokenText(m_comparison, word);
    Q_EMIT changed();
}

void SpellingAttempt::clear() {
    m_comparison = {};
    m_spoken.clear();
    Q_EMIT changed();
}

} // namespace lexiquill

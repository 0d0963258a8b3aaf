#pragma once

#include <QList>
#include <QStringView>

namespace lexiquill::article {

/// A sense number in a line, such as "1.", "(2)", "3、" or "④".
struct SenseNumber {
    qsizetype start = 0;
    /// Where the text of the sense begins.
    qsizetype end = 0;
};

/// Finds the sense numbers in the lines of an article, which are handed over in order.
class SenseNumberFinder {
public:
    /// The numbers in `line`. Within a line only those count that continue a series. `bareAllowed` accepts a
    /// number without any mark at the start ("1 gloss").
    QList<SenseNumber> find(QStringView line, bool bareAllowed);

    /// Begins a new series, as after a part of speech.
    void restart();

private:
    enum Style { Pointed, Bracketed, Listed, Parenthesized, Colon, Bare, Enclosed, StyleCount };
    struct Candidate {
        SenseNumber place;
        int number;
        Style style;
    };
    static QList<Candidate> candidates(QStringView line);
    bool counts(const Candidate &candidate, QStringView line, bool atStart, bool bareAllowed,
                bool secondFollows) const;

    int m_last[StyleCount] = {};
};

} // namespace lexiquill::article

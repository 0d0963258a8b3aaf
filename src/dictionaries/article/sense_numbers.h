#pragma once

#include <QList>
#include <QStringView>

#include <optional>

namespace lexiquill::article {

/// A sense number in a line, such as "1.", "(2)", "3、" or "④".
struct SenseNumber {
    qsizetype start = 0;
    /// Where the text of the sense begins.
    qsizetype end = 0;
    int value = 0;
};

/// Finds the sense numbers in the lines of an article. The lines must be passed in order.
class SenseNumberFinder {
public:
    /// The sense numbers in `line`. A number counts only if it begins or continues a series; inside a line, a
    /// series begins only if its second number follows. `bareAllowed` accepts "1" without a mark at the start
    /// of the line ("1 gloss") even if no second number follows in the line.
    QList<SenseNumber> find(QStringView line, bool bareAllowed);

    /// The number with a mark that `line` starts with, whatever its value.
    static std::optional<SenseNumber> atStart(QStringView line);

    /// Length of a letter such as "(a)" or "b." that numbers a sense at the start of `line`, with the blanks
    /// behind it; 0 if there is none.
    static qsizetype letterLength(QStringView line);

    /// Begins a new series, for example after a part of speech.
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
    int m_lastBefore[StyleCount] = {}; ///< in the series before this one
};

} // namespace lexiquill::article

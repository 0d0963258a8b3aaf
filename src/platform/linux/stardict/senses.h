#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace lexiquill::stardict {

/// One meaning of a word.
struct Sense {
    /// Subjects and usage, such as 医 or 正式.
    QStringList contexts;
    /// Never empty in what this folder hands out.
    QString meaning;
    QStringList examples;
};

/// The meanings under one part of speech. The label is a word of the definition format, such as "noun" or
/// "数"; empty when the article names no part of speech.
struct SenseGroup {
    QString label;
    QList<Sense> senses;
};

/// Reads the lines of an article without markup. The first group holds what stands before the first part of
/// speech; its label is empty.
QList<SenseGroup> readSenses(const QStringList &lines);

} // namespace lexiquill::stardict

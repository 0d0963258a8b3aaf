#pragma once

#include "dictionaries/article/part_of_speech.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace lexiquill::article {

/// One meaning of a word.
struct Sense {
    /// Subjects and usage, such as 医 or 正式.
    QStringList contexts;
    /// Never empty in the results of readSenses().
    QString meaning;
    QStringList examples;
};

/// The meanings under one part of speech.
struct SenseGroup {
    PartOfSpeech part; ///< its `pos` is empty when the article names none
    QList<Sense> senses;
};

/// Reads the lines of an article without markup. The first group contains the senses before the first part of
/// speech.
QList<SenseGroup> readSenses(const QStringList &lines);

} // namespace lexiquill::article

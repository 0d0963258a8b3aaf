#pragma once

#include "dictionaries/article/line.h"

#include <QString>

namespace lexiquill::article {

/// Whether a text looks like Webster's dictionary: the title repeats the headword between backslashes, with
/// marks for syllables and stress ("Apple \Ap"ple\, n.").
bool isWebsterText(const QString &text);

/// Reads the text of Webster's dictionary. The definitions begin with their labels in round brackets, as in
/// "(Bot.) (Obs.) A tree". Pronunciations, inflections, etymologies, notes and synonyms are left out.
PlainArticle readWebster(const QString &text);

} // namespace lexiquill::article

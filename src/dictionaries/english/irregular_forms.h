#pragma once

#include "dictionaries/english/base_forms.h"

namespace lexiquill::english {

/// The bases of an irregular form in lower case ("went": "go", "postmen": "postman"), most likely first.
QList<BaseForm> irregularBases(const QString &form);

/// True for verbs whose past never ends in -ed, such as "see".
bool hasOnlyIrregularPast(const QString &verb);

} // namespace lexiquill::english

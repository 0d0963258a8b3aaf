#pragma once

#include "model/dictionary_entry.h"

namespace lexiquill {

/// An entry on one line: "headword/phonetic: pos{1 (context) meaning > example; 2 meaning} pos{...}". Without
/// a phonetic there is no "/".
inline QString described(const DictionaryEntry &entry) {
    QString text = entry.headword;
    if (entry.phonetic)
        text += u'/' + *entry.phonetic;
    text += u':';
    for (const PartOfSpeechGroup &group : entry.posGroups) {
        QStringList senses;
        for (const SenseItem &sense : group.senses) {
            QStringList parts;
            if (sense.number)
                parts += QString::number(*sense.number);
            if (sense.context)
                parts += u'(' + *sense.context + u')';
            parts += sense.chineseMeaning;
            senses += (QStringList{parts.join(u' ')} + sense.examples).join(QStringLiteral(" > "));
        }
        text += u' ' + group.pos + u'{' + senses.join(QStringLiteral("; ")) + u'}';
    }
    return text;
}

} // namespace lexiquill

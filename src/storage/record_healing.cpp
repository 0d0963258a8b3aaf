#include "storage/record_healing.h"

#include <algorithm>

namespace lexiquill {

namespace {

constexpr QChar wordJoiner(0x2060);

/// Texts and lists are shared with the list before the change, so one without the character is not touched.
void heal(QString &text) {
    if (text.contains(wordJoiner))
        text.remove(wordJoiner);
}

bool isHurt(const QString &text) {
    return text.contains(wordJoiner);
}

bool isHurt(const PartOfSpeechGroup &group) {
    return isHurt(group.pos) || isHurt(group.posChinese) ||
           std::any_of(group.senses.begin(), group.senses.end(), [](const SenseItem &sense) {
               return isHurt(sense.chineseMeaning) || (sense.context && isHurt(*sense.context)) ||
                      std::any_of(sense.examples.begin(), sense.examples.end(),
                                  [](const QString &example) { return isHurt(example); });
           });
}

void heal(PartOfSpeechGroup &group) {
    heal(group.pos);
    heal(group.posChinese);
    for (SenseItem &sense : group.senses) {
        heal(sense.chineseMeaning);
        if (sense.context)
            heal(*sense.context);
        for (QString &example : sense.examples)
            heal(example);
    }
}

} // namespace

void healContent(WordRecord &record) {
    if (record.phonetic)
        heal(*record.phonetic);
    heal(record.conciseSummary);
    heal(record.rawDefinition);
    for (qsizetype i = 0; i < record.posGroups.size(); ++i) {
        if (isHurt(record.posGroups.at(i)))
            heal(record.posGroups[i]);
    }
    for (qsizetype i = 0; i < record.examples.size(); ++i) {
        const ExampleSentence &example = record.examples.at(i);
        if (!isHurt(example.en) && !isHurt(example.cn))
            continue;
        heal(record.examples[i].en);
        heal(record.examples[i].cn);
    }
}

} // namespace lexiquill

#include "storage/record_healing.h"

#include <algorithm>

namespace lexiquill {

namespace {

constexpr QChar wordJoiner(0x2060);

/// Texts and lists share their memory with the list before the change, so those without the character are not
/// modified.
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

bool isHurt(const ExampleSentence &example) {
    return isHurt(example.en) || isHurt(example.cn);
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

void heal(ExampleSentence &example) {
    heal(example.en);
    heal(example.cn);
}

template <typename Element> void healElements(QList<Element> &list) {
    if (std::none_of(list.cbegin(), list.cend(), [](const Element &each) { return isHurt(each); }))
        return;
    for (Element &each : list)
        heal(each);
}

} // namespace

void healContent(WordRecord &record) {
    if (record.phonetic)
        heal(*record.phonetic);
    heal(record.conciseSummary);
    heal(record.rawDefinition);
    healElements(record.posGroups);
    healElements(record.examples);
}

} // namespace lexiquill

#include "check.h"
#include "lookup/online/worker_response.h"
#include "lookup/online/youdao_parser.h"
#include "model/record_codec.h"

#include <cstddef>
#include <cstdint>

using namespace lexiquill;

namespace {

/// Every entry from the network can be stored and read back.
void checkStorable(const DictionaryEntry &entry) {
    const auto again = decodeDictionaryEntry(encodeDictionaryEntry(entry, JsonForm::Wire));
    check(again && *again == entry);
}

void checkYoudao(const DictionaryEntry &entry) {
    check(!entry.headword.isEmpty() && !entry.rawText.isEmpty() && !entry.posGroups.isEmpty());
    check(entry.examples.size() <= 6);
    QStringList kinds;
    for (const PartOfSpeechGroup &group : entry.posGroups) {
        check(!group.senses.isEmpty() && !kinds.contains(group.posAbbreviation()));
        kinds += group.posAbbreviation();
        for (qsizetype i = 0; i < group.senses.size(); ++i)
            check(group.senses[i].number == i + 1 && !group.senses[i].context);
    }
    for (const ExampleSentence &example : entry.examples)
        check(!example.en.isEmpty() && !example.cn.isEmpty());
    checkStorable(entry);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QByteArray input(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QString query = QStringLiteral("query");
    if (const auto entry = parseYoudaoJSON(input, query)) {
        checkYoudao(*entry);
        check(isYoudaoAnswer(input));
    }
    if (const auto entry = parseWorkerResponse(input, query))
        checkStorable(*entry);
    return 0;
}

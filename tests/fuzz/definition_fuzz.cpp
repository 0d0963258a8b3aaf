#include "check.h"
#include "dictionaries/article/definition_parser.h"
#include "model/record_codec.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

using namespace lexiquill;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QByteArray input(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QString query = QStringLiteral("query");
    // Texts are UTF-8. The same bytes as UTF-16 also test invalid surrogates.
    QString units(input.size() / 2, u' ');
    std::memcpy(units.data(), input.constData(), static_cast<std::size_t>(units.size()) * sizeof(QChar));
    for (const QString &text : {QString::fromUtf8(input), units}) {
        const DictionaryEntry entry = parseDefinition(text, query);
        check(entry.rawText == text.trimmed());
        check(text.contains(u'|') || entry.headword == query);
        check(!entry.posGroups.isEmpty());
        for (const PartOfSpeechGroup &group : entry.posGroups) {
            qint64 last = 0;
            for (const SenseItem &sense : group.senses) {
                check(!sense.chineseMeaning.isEmpty());
                check(sense.number ? *sense.number > last : group.senses.size() == 1);
                last = sense.number.value_or(0);
            }
        }
        check(!entry.conciseSummary().contains(u'\n') || entry.rawText.contains(u'\n'));
        const auto again = decodeDictionaryEntry(encodeDictionaryEntry(entry, JsonForm::Wire));
        check(again && (*again == entry || !text.isValidUtf16()));
    }
    return 0;
}

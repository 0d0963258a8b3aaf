#include "check.h"
#include "dictionaries/article/article_reader.h"
#include "dictionaries/stardict/article_parts.h"
#include "model/record_codec.h"

#include <cstddef>
#include <cstdint>

using namespace lexiquill;
using article::Form;

namespace {

/// For any article, the entry can be stored and shown.
void checkEntry(const QString &headword, const article::Article &parts) {
    const auto entry = article::readArticles(headword, {parts});
    if (!entry)
        return;
    check(entry->headword == headword && !entry->posGroups.isEmpty());
    for (const PartOfSpeechGroup &group : entry->posGroups) {
        check(!group.pos.isEmpty() && !group.senses.isEmpty());
        for (const SenseItem &sense : group.senses)
            check(!sense.chineseMeaning.trimmed().isEmpty());
    }
    const auto again = decodeDictionaryEntry(encodeDictionaryEntry(*entry, JsonForm::Wire));
    check(again && (*again == *entry || !entry->rawText.isValidUtf16() || !headword.isValidUtf16()));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QByteArrayView input(data, static_cast<qsizetype>(size));
    const QString text = QString::fromUtf8(input);
    for (const Form form : {Form::Text, Form::Phonetic, Form::Xdxf, Form::Html, Form::Pango})
        checkEntry(QStringLiteral("word"), {{.form = form, .text = text}});
    checkEntry(text.left(12), {{.form = Form::Text, .text = text}});
    for (const char *sequence : {"", "tm", "Wxy"})
        checkEntry(QStringLiteral("w"), stardict::splitArticle(input, sequence));
    return 0;
}

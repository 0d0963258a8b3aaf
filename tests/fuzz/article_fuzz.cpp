#include "check.h"
#include "dictionaries/article/article_reader.h"
#include "dictionaries/article/formatted_article.h"
#include "dictionaries/stardict/article_parts.h"
#include "model/record_codec.h"

#include <cstddef>
#include <cstdint>

using namespace lexiquill;
using article::Form;

namespace {

/// The rich text has only elements that load nothing, and each is closed.
void checkFormatted(const article::Article &parts) {
    static const QStringList names = QStringLiteral("p b i u sub sup ol ul li h3").split(u' ');
    const QString text = article::formattedArticle({parts});
    QStringList open;
    for (qsizetype at = text.indexOf(u'<'); at >= 0; at = text.indexOf(u'<', at + 1)) {
        const QString tag = text.mid(at + 1, text.indexOf(u'>', at) - at - 1);
        if (tag == QStringLiteral("br") || tag.startsWith(QStringLiteral("img src=\"dict:")))
            continue;
        if (!tag.startsWith(u'/')) {
            check(names.contains(tag));
            open += tag;
        } else {
            check(!open.isEmpty() && open.takeLast() == tag.sliced(1));
        }
    }
    check(open.isEmpty());
}

/// For any article, the entry can be stored and shown.
void checkEntry(const QString &headword, const article::Article &parts) {
    checkFormatted(parts);
    const auto entry = article::readArticles(headword, {parts});
    if (!entry)
        return;
    check(entry->headword == headword);
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
    for (const Form form : {Form::Text, Form::Phonetic, Form::Xdxf, Form::Html, Form::Pango, Form::PowerWord,
                            Form::MediaWiki, Form::WordNet})
        checkEntry(QStringLiteral("word"), {{.form = form, .text = text}});
    checkEntry(text.left(12), {{.form = Form::Text, .text = text}});
    for (const char *sequence : {"", "tm", "Wxy", "kwn"})
        checkEntry(QStringLiteral("w"), stardict::splitArticle(input, sequence));
    return 0;
}

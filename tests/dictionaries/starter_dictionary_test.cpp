#include "dictionaries/dictionary_shelf.h"
#include "dictionaries/stardict/stardict_format.h"
#include "support/test.h"

using namespace lexiquill;

namespace {

/// The entry in the format of its source.
QString sourceOf(const DictionaryEntry &entry) {
    QStringList lines{entry.headword + u" [%1]"_s.arg(entry.phonetic.value_or(QString()))};
    for (const PartOfSpeechGroup &group : entry.posGroups) {
        lines += group.posAbbreviation();
        for (const SenseItem &sense : group.senses) {
            const QString context = sense.context ? u"(%1) "_s.arg(*sense.context) : QString();
            lines += QString::number(sense.number.value_or(0)) + u". "_s + context + sense.chineseMeaning;
            for (const QString &example : sense.examples)
                lines += u"▸ "_s + example;
        }
    }
    return lines.join(u'\n');
}

/// The summary of complete glosses. The reader must not lose any part of them, such as one of two brackets.
QString expectedSummary(const DictionaryEntry &entry) {
    QStringList parts;
    for (const PartOfSpeechGroup &group : entry.posGroups) {
        QStringList glosses;
        for (const SenseItem &sense : group.senses)
            glosses += sense.chineseMeaning.split(u'；');
        glosses.removeDuplicates();
        parts += group.posAbbreviation() + u' ' +
                 glosses.first(std::min<qsizetype>(2, glosses.size())).join(u'；');
    }
    return parts.join(u" | "_s);
}

} // namespace

class StarterDictionaryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyEntryReadsAsWritten() {
        QFile file(QStringLiteral(LEXIQUILL_STARTER_SOURCE));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QStringList blocks = QString::fromUtf8(file.readAll()).trimmed().split(u"\n\n"_s);
        QVERIFY(blocks.size() >= 747);

        const QTemporaryDir cache;
        DictionaryShelf shelf({.installed = {},
                               .bundled = {QStringLiteral(LEXIQUILL_STARTER_DIRECTORY)},
                               .cache = cache.path()},
                              {stardict::format()});
        QStringList words;
        for (const QString &block : blocks) {
            words += block.section(u" ["_s, 0, 0);
            const auto found = shelf.find(words.last());
            QVERIFY2(found, qPrintable(words.last()));
            QCOMPARE(sourceOf(found->entry), block);
            QCOMPARE(found->entry.conciseSummary(), expectedSummary(found->entry));
        }
        for (const char *const seed : {"concise", "ephemeral", "serendipity", "ubiquitous", "eloquent"})
            QVERIFY2(words.contains(QString::fromUtf8(seed)), seed);
    }
};

QTEST_GUILESS_MAIN(StarterDictionaryTest)
#include "starter_dictionary_test.moc"

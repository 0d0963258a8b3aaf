#include "lookup/definition_parser.h"
#include "platform/linux/linux_dictionary_services.h"
#include "support/text.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace lexiquill;

namespace {

/// The entry as its source is written.
QString sourceOf(const DictionaryEntry &entry) {
    QStringList lines{entry.headword + QStringLiteral(" [%1]").arg(entry.phonetic.value_or(QString()))};
    for (const PartOfSpeechGroup &group : entry.posGroups) {
        lines += group.posAbbreviation();
        for (const SenseItem &sense : group.senses) {
            const QString context = sense.context ? QStringLiteral("(%1) ").arg(*sense.context) : QString();
            lines += QString::number(sense.number.value_or(0)) + QStringLiteral(". ") + context +
                     sense.chineseMeaning;
            for (const QString &example : sense.examples)
                lines += QStringLiteral("▸ ") + example;
        }
    }
    return lines.join(u'\n');
}

/// What is wrong with an entry and its summary, a line for each fault.
QStringList faults(const DictionaryEntry &entry) {
    static const QRegularExpression partOfSpeechWord(
        QStringLiteral("^(intransitive verb|transitive verb|noun|verb|adjective|adverb|pronoun|preposition|"
                       "conjunction|interjection|phrasal verb|idiom|[名动形副代数量连介叹])$"));
    static const QRegularExpression latin(QStringLiteral("[A-Za-z]"));
    QStringList found;
    const auto expect = [&](bool holds, const char *fault, const QString &text) {
        if (!holds)
            found += entry.headword + QStringLiteral(": ") + QString::fromUtf8(fault) + text;
    };
    QStringList summary;
    for (const PartOfSpeechGroup &group : entry.posGroups) {
        expect(partOfSpeechWord.match(group.pos).hasMatch(), "part of speech ", group.pos);
        QStringList glosses;
        bool hasExample = false;
        for (const SenseItem &sense : group.senses) {
            expect(containsHan(sense.chineseMeaning), "no Chinese in ", sense.chineseMeaning);
            glosses += sense.chineseMeaning.split(u'；');
            hasExample |= !sense.examples.isEmpty();
        }
        expect(hasExample, "no example for ", group.pos);
        // The summary shows whole glosses: cleaning has cut nothing off them, such as one of two brackets.
        const QStringList shown = group.cleanChineseList().mid(0, 2);
        for (const QString &token : shown) {
            expect(glosses.contains(token), "cut gloss ", token);
            expect(!token.contains(latin), "Latin letters in ", token);
            for (const QString &pair : {QStringLiteral("（）"), QStringLiteral("《》"), QStringLiteral("“”")})
                expect(token.count(pair[0]) == token.count(pair[1]), "unbalanced ", token);
        }
        summary += group.posAbbreviation() + u' ' + shown.join(u'；');
    }
    expect(entry.conciseSummary() == summary.join(QStringLiteral(" | ")), "summary ", entry.conciseSummary());
    return found;
}

} // namespace

class StarterDictionaryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyEntryReadsAsWritten() {
        QFile file(QStringLiteral(LEXIQUILL_STARTER_SOURCE));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QStringList blocks = QString::fromUtf8(file.readAll()).trimmed().split(QStringLiteral("\n\n"));
        QVERIFY(blocks.size() >= 747);

        const QTemporaryDir cache;
        LinuxDictionaryServices services({}, {QStringLiteral(LEXIQUILL_STARTER_DIRECTORY)}, cache.path());
        QStringList words;
        qsizetype faulty = 0;
        for (const QString &block : blocks) {
            words += block.section(QStringLiteral(" ["), 0, 0);
            const DictionaryEntry entry =
                parseDefinition(services.copyTextDefinition(words.last()).value_or(QString()), words.last());
            QStringList found = faults(entry);
            if (sourceOf(entry) != block)
                found += sourceOf(entry) + QStringLiteral("\ninstead of\n") + block;
            for (const QString &fault : std::as_const(found))
                qWarning("%s", qUtf8Printable(fault));
            faulty += found.isEmpty() ? 0 : 1;
        }
        QCOMPARE(faulty, 0);
        for (const char *const seed : {"concise", "ephemeral", "serendipity", "ubiquitous", "eloquent"})
            QVERIFY2(words.contains(QString::fromUtf8(seed)), seed);
    }
};

QTEST_GUILESS_MAIN(StarterDictionaryTest)
#include "starter_dictionary_test.moc"

#include "dictionaries/described.h"
#include "dictionaries/dictionary_shelf.h"
#include "dictionaries/english/base_forms.h"
#include "dictionaries/stardict/stardict_format.h"
#include "stardict_headwords.h"
#include "starter/source_reader.h"
#include "support/test.h"
#include "support/text.h"

#include <QRegularExpression>

using namespace lexiquill;
using tools::StarterEntry;
using tools::StarterGroup;
using tools::StarterSense;

namespace {

/// The part of speech that a label of the source becomes.
QString partOfSpeech(const QString &label) {
    static const QHash<QString, QString> names{
        {u"n."_s, u"noun"_s},           {u"v."_s, u"verb"_s},
        {u"adj."_s, u"adjective"_s},    {u"adv."_s, u"adverb"_s},
        {u"pron."_s, u"pronoun"_s},     {u"prep."_s, u"preposition"_s},
        {u"conj."_s, u"conjunction"_s}, {u"int."_s, u"interjection"_s},
        {u"num."_s, u"numeral"_s},      {u"phr v."_s, u"phrasal verb"_s},
        {u"phr."_s, u"phrase"_s},       {u"aux v."_s, u"aux."_s}};
    return names.value(label, label);
}

/// The entry that the program must make of the source.
DictionaryEntry expected(const StarterEntry &source) {
    DictionaryEntry entry{
        .headword = source.headword, .phonetic = source.phonetic, .posGroups = {}, .rawText = {}};
    for (const StarterGroup &group : source.groups) {
        PartOfSpeechGroup read{.pos = partOfSpeech(group.label), .posChinese = {}, .senses = {}};
        for (const StarterSense &sense : group.senses) {
            SenseItem item{.number = read.senses.size() + 1,
                           .chineseMeaning = sense.glosses,
                           .examples = sense.examples};
            const QStringList contexts =
                QStringList{sense.grammar, sense.pattern, sense.remark}.filter(QRegularExpression(u"."_s));
            if (!contexts.isEmpty())
                item.context = contexts.join(u'，');
            read.senses += item;
        }
        entry.posGroups += read;
    }
    return entry;
}

/// Whether a word of a sentence is the headword or a form of it.
bool isFormOf(const QString &word, const QString &headword, const QStringList &forms) {
    if (word == headword || forms.contains(word, Qt::CaseInsensitive))
        return true;
    const auto base = english::firstKnown(word, [&headword](const QString &form) {
        return form == headword ? std::optional(QStringList{u"释义"_s}) : std::nullopt;
    });
    return base.has_value();
}

/// Whether the sentence holds the words of the headword, in their order.
bool holdsHeadword(const QString &sentence, const StarterEntry &entry) {
    static const QRegularExpression separators(u"[^\\p{L}\\p{M}'.-]+"_s,
                                               QRegularExpression::UseUnicodePropertiesOption);
    static const QStringList placeholders{u"one's"_s,   u"sb"_s,        u"sth"_s, u"oneself"_s,
                                          u"someone"_s, u"something"_s, u"your"_s};
    const QString text = sentence.toLower().replace(u'’', u'\'');
    for (const QString &form : QStringList{entry.headword} + entry.forms) {
        if (text.contains(form.toLower()))
            return true;
    }
    QStringList wanted = entry.headword.toLower().split(u' ');
    wanted.removeIf([](const QString &word) { return placeholders.contains(word); });
    QStringList firstForms = entry.forms;
    for (QString &form : firstForms)
        form = form.toLower().section(u' ', 0, 0);
    for (const QString &token : text.split(separators, Qt::SkipEmptyParts)) {
        const QStringList spellings = QStringList{token, token.section(u'\'', 0, 0)} + token.split(u'-');
        const bool isWanted = std::any_of(spellings.begin(), spellings.end(), [&](const QString &spelling) {
            const QString plain = trimmedOfPunctuation(spelling, true).toString();
            return !wanted.isEmpty() && isFormOf(plain, wanted.first(), firstForms);
        });
        if (isWanted)
            wanted.removeFirst();
    }
    return wanted.isEmpty();
}

} // namespace

class StarterDictionaryTest : public QObject {
    Q_OBJECT

    tools::StarterSourceReader m_source;
    const QTemporaryDir m_cache;
    DictionaryShelf m_shelf{
        {.installed = {}, .bundled = {QStringLiteral(LEXIQUILL_STARTER_DIRECTORY)}, .cache = m_cache.path()},
        {stardict::format()}};

private Q_SLOTS:
    void initTestCase() {
        for (char letter = 'a'; letter <= 'z'; ++letter) {
            const QString path =
                QStringLiteral(LEXIQUILL_STARTER_SOURCE "/") + QLatin1Char(letter) + u".txt"_s;
            QVERIFY2(m_source.read(path), qPrintable(m_source.message()));
        }
        QVERIFY(m_source.entries().size() >= 6000);
    }

    void everyEntryReadsAsWritten() {
        static const QRegularExpression latin(u"\\p{Latin}"_s,
                                              QRegularExpression::UseUnicodePropertiesOption);
        QStringList wrong;
        for (const StarterEntry &source : m_source.entries()) {
            const auto found = m_shelf.find(source.headword);
            const QString read = found ? described(found->entry) : u"-"_s;
            if (read != described(expected(source)))
                wrong += read + u"\n  instead of "_s + described(expected(source));
            if (!found)
                continue;
            for (const PartOfSpeechGroup &group : found->entry.posGroups) {
                QString summary =
                    DictionaryEntry{.headword = {}, .posGroups = {group}, .rawText = {}}.conciseSummary();
                if (!summary.startsWith(group.posAbbreviation()) || !containsHan(group.posChinese) ||
                    summary.sliced(group.posAbbreviation().size()).contains(latin))
                    wrong += source.headword + u": summary "_s + summary;
            }
        }
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong.first(std::min<qsizetype>(40, wrong.size())).join(u'\n')));
    }

    void examplesShowTheirWord() {
        QStringList wrong;
        for (const StarterEntry &entry : m_source.entries()) {
            for (const StarterGroup &group : entry.groups) {
                for (const StarterSense &sense : group.senses) {
                    for (const QString &example : sense.examples) {
                        const auto firstHan = std::find_if(example.begin(), example.end(),
                                                           [](QChar c) { return isHan(c.unicode()); });
                        if (!holdsHeadword(QString(example.begin(), firstHan - example.begin()), entry))
                            wrong += entry.headword + u": "_s + example;
                    }
                }
            }
        }
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(u'\n')));
    }

    void formsLeadToTheirWords() {
        QHash<QString, QStringList> wordsOfForm;
        QSet<QString> headwords;
        for (const StarterEntry &entry : m_source.entries()) {
            headwords.insert(entry.headword);
            for (const QString &form : entry.forms)
                wordsOfForm[form] += entry.headword;
        }
        QStringList wrong;
        for (auto form = wordsOfForm.cbegin(); form != wordsOfForm.cend(); ++form) {
            const auto found = m_shelf.find(form.key());
            const QString headword = found ? found->entry.headword : u"-"_s;
            if (headwords.contains(form.key()) ? headword != form.key() : !form->contains(headword))
                wrong += form.key() + u" leads to "_s + headword;
        }
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(u'\n')));
    }

    /// Some of the Chinese words, and some that every learner knows.
    void chineseFindsEnglish() {
        constexpr qsizetype step = 29;
        static const QRegularExpression remark(u"（[^（）]*）"_s);
        const QStringList words = tools::stardictHeadwords(
            QStringLiteral(LEXIQUILL_STARTER_DIRECTORY "/lexiquill-starter-chinese.idx"));
        QVERIFY(words.size() > 10'000);
        for (qsizetype i = 0; i < words.size(); i += step) {
            const auto found = m_shelf.find(words[i]);
            QVERIFY2(found && found->entry.headword == words[i], qPrintable(words[i]));
            for (const PartOfSpeechGroup &group : found->entry.posGroups) {
                for (const SenseItem &sense : group.senses) {
                    QVERIFY2(QString(sense.context.value_or(QString())).remove(remark).contains(words[i]),
                             qPrintable(words[i]));
                    QVERIFY2(m_shelf.find(sense.chineseMeaning), qPrintable(sense.chineseMeaning));
                }
            }
        }
    }
    void chineseAnswers_data() {
        addRows(
            "苹果 | noun | apple\n医生 | noun | doctor\n雨伞 | noun | umbrella\n跑 | verb | run\n政府 | noun "
            "| government");
    }
    void chineseAnswers() {
        QFETCH(const QStringList, cells);
        const auto found = m_shelf.find(cells[0]);
        QVERIFY(found);
        const PartOfSpeechGroup &group = found->entry.posGroups.first();
        QCOMPARE(group.pos, cells[1]);
        QCOMPARE(group.senses.first().chineseMeaning, cells[2]);
    }
};

QTEST_GUILESS_MAIN(StarterDictionaryTest)
#include "starter_dictionary_test.moc"

#include "model/dictionary_entry.h"
#include "model/gloss_cleaning.h"
#include "support/test.h"

using namespace lexiquill;

namespace {

PartOfSpeechGroup group(const char *pos, const QList<const char *> &glosses) {
    QList<SenseItem> senses;
    for (const char *const gloss : glosses)
        senses += SenseItem{.chineseMeaning = QString::fromUtf8(gloss)};
    return PartOfSpeechGroup::named(QString::fromUtf8(pos), senses);
}

} // namespace

class GlossTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void tokens_data() {
        addRows(R"(
            ‹植›苹果(apple tree); 苹果树, apple | 苹果/苹果树
            放弃；放弃;抛弃        | 放弃/放弃/抛弃
            a1‹›b空                | a1‹›b空
            ‹a‹b›甲›乙             | 甲›乙
            甲‹a                   | 甲‹a
            (非正式)你好           | 非正式)你好
            甲(乙(c)丁)            | 甲丁
            甲（apple）乙          | 甲（）乙
            甲 乙  丙　 丁         | 甲 乙丙丁
            nǐ hǎo你好ǘ            | 你好ǘ
            ǖǖ甲ŭŭ                 | 甲ŭŭ
            、。《甲》…!           | 甲
            𠮷野,々,〇,OK,かな,。a。 | 𠮷野/々/〇
            ;;，,                  |)");
    }

    void tokens() {
        QFETCH(QStringList, cells);
        QCOMPARE(cleanChineseTokens(cells[0]).join(u'/'), cells[1]);
    }

    /// Texts, their Chinese name ("=": the text itself) and their abbreviation.
    void partsOfSpeech_data() {
        addRows(R"(
            noun,n,名,Noun.,N.,(n)         | 名词   | n.
            verb,intransitive verb,vi,动,VT. | 动词 | v.
            adjective,adj,a,形,a.          | 形容词 | adj.
            interjection,interj,int,int.   | 感叹词 | int.
            phrase,phr,phrase.             | 短语   | phrase
            idiom,Idiom.                   | 习语   | idiom
            叹,叹。                        | =      | int.
            量                             | =      | 量.
            phrasal verb                   | =      | phrasal verb.
                                           | =      | .)");
    }

    void partsOfSpeech() {
        QFETCH(QStringList, cells);
        for (const QString &text : cells[0].split(u',')) {
            QCOMPARE(PartOfSpeechGroup::localizePOS(text), cells[1] == u'=' ? text : cells[1]);
            QCOMPARE(PartOfSpeechGroup::named(text, {}).posAbbreviation(), cells[2]);
        }
    }

    void summaries() {
        const auto summary = [](const QList<PartOfSpeechGroup> &groups, const QString &rawText) {
            return DictionaryEntry{.headword = {}, .posGroups = groups, .rawText = rawText}.conciseSummary();
        };
        const auto apple = group("n.", {"苹果(apple)", "苹果；苹果树,梨"});
        QCOMPARE(summary({apple, group("vt", {"提供"})}, {}), u"n. 苹果；苹果树 | v. 提供"_s);
        QCOMPARE(summary({group("n", {" "}), group("idiom", {"义"})}, {}), u"idiom 义"_s);
        const auto withoutHan = group("释义", {" OK ", "OK", "fine"});
        QCOMPARE(summary({withoutHan}, u"raw"_s), u"释义. OK；OK"_s);
        QCOMPARE(summary({group("n", {})}, u" \t\n\u3000\n \tfirst line \t\nsecond"_s), u"first line"_s);
        QCOMPARE(summary({}, u"\n \n"_s), QString());
    }

    /// Also with more tokens than are compared one by one.
    void cleanListHasNoDuplicates() {
        QStringList expected;
        QString gloss;
        for (int i = 0; i < 1000; ++i) {
            expected += QString(QChar(0x4e00 + i));
            gloss += expected.last() + u';' + expected[i / 2] + u';';
        }
        QCOMPARE(PartOfSpeechGroup::named(QString(), {SenseItem{.chineseMeaning = gloss}}).cleanChineseList(),
                 expected);
    }
};

QTEST_GUILESS_MAIN(GlossTest)
#include "gloss_test.moc"

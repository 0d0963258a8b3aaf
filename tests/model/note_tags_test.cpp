#include "model/note_tags.h"
#include "support/test.h"

using namespace lexiquill;

class NoteTagsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void tags_data() {
        // note | tags
        addRows(R"(
            #考研 | 考研
            易错 #考研，再看一遍 | 考研
            (#四级)、#六级。 | 四级 六级
            第一行。#cet-4 和 #word_list #2024 | cet-4 word_list 2024
            #Exam #EXAM #exam | Exam
            📌#重点 | 重点
            ##twice | twice
            C# 和 a#b | 
            #考研#四级 | 考研
            # #- #_ #！ | 
            #café #café | café
            #नमस्ते #𠮷野家 | नमस्ते 𠮷野家
            https://example.com/#top | 
            见 https://zh.example.org/wiki/考研/#历史 #历史 | 历史
            http://example.com/?a=#b，#真的 | 真的
            (see www.example.com/#a) | 
            example.com/#a and example.com:80?x=#b | 
            mailto:ann@example.com?subject=#hello | 
            #考研https://example.com/#x | 考研https
            n./#名词 v.,#动词 | 名词 动词)");
    }
    void tags() {
        QFETCH(const QStringList, cells);
        const auto unescaped = [](QString text) {
            return text.replace(u"\\u00e9"_s, u"\u00e9"_s).replace(u"\\u0301"_s, u"\u0301"_s);
        };
        QCOMPARE(noteTags(unescaped(cells[0])).join(u' '), unescaped(cells[1]));
    }

    /// Notes come from files of any origin.
    void hostileNotes() {
        constexpr qsizetype size = 1'000'000;
        QVERIFY(noteTags(u"#"_s + QString(size, u'a')).isEmpty());
        QVERIFY(noteTags(QString(size, u'#')).isEmpty());
        QVERIFY(noteTags(u"a.bc/"_s.repeated(size) + u"#x"_s).isEmpty());
        QVERIFY(noteTags(u"#"_s + QChar(0xD800)).isEmpty());
        QString many;
        for (int i = 0; i < 100'000; ++i)
            many += u" #%1"_s.arg(i);
        QCOMPARE(noteTags(many).size(), mostNoteTags);
    }

    void queries_data() {
        // text | keys | rest
        addRows("apple | | apple\n #考研 | 考研 | \n#Exam  #b Red Apple | exam b | Red Apple\n"
                "# | | #\n#！ | | #！\na #b | | a #b");
    }
    void queries() {
        QFETCH(const QStringList, cells);
        const TagQuery query = TagQuery::of(cells[0]);
        QCOMPARE(query.keys.join(u' '), cells[1]);
        QCOMPARE(query.text, cells[2]);
    }
};

QTEST_GUILESS_MAIN(NoteTagsTest)
#include "note_tags_test.moc"

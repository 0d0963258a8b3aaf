#include "dictionaries/article/definition_parser.h"
#include "dictionaries/described.h"
#include "support/test.h"

using namespace lexiquill;

class DefinitionParserTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void parsing_data() {
        columns<QString, QString>("text", "entry");
        const auto row = [](const char *text, const char *entry) {
            QTest::newRow(text) << QString::fromUtf8(text) << QString::fromUtf8(entry);
        };
        row("hello | həˈləʊ | exclamation ① used as a greeting ▸ hello there!",
            "hello/həˈləʊ: 释义{1 used as a greeting > hello there!}");
        row(" a | b | noun 甲 | 乙\n", "a/b: noun{甲 | 乙}");
        row("word | 词", "word: 释义{词}");
        row("noun 词", "query: noun{词}");
        row("|||", "/: 释义{|}");
        row("", "query: 释义{}");
        row("a||noun ① 问候 ② 招呼 verb ① 打招呼", "a/: noun{1 问候; 2 招呼} verb{1 打招呼}");
        row("a||Intransitive VERB 走 transitive verb 使走 Noun",
            "a/: Intransitive VERB{走} transitive verb{使走} Noun{}");
        row("a||前言 名 词 nouns 一个名词 phrasal verb x", "a/: 名{词 nouns 一个名词} phrasal verb{x}");
        row("a||noun 1. 甲 2.乙 3 丙 x4. 丁 ⑳ 戊 ㉑ 己", "a/: noun{1 甲; 2 乙; 3 丙 x4. 丁; 4 戊 ㉑ 己}");
        row("a||noun 前 ① ② 乙 ③", "a/: noun{2 乙}");
        row("a||noun ٣. 甲 1\u00a0乙", "a/: noun{1 甲; 2 乙}");
        row("a||noun ① (a)(b) 甲 ② () 乙 ③ (丙", "a/: noun{1 (a) (b) 甲; 2 () 乙; 3 (丙}");
        row("a||noun ‹植›  ① ‹植› 苹果 ‹树› ② ‹植›", "a/: noun{1 苹果; 2 ‹植›}");
        row("a||noun ① 甲 ▸ one ▸  ▸two ② ▸ three", "a/: noun{1 甲 > one > two}");
        // A circled number is not a letter. Combining marks and format characters are not word boundaries.
        row("noun① 问候 ② 招呼", "query: noun{1 问候; 2 招呼}");
        row("甲 noun\u0301 乙", "query: 释义{甲 noun\u0301 乙}");
        row("甲 noun\u200b 乙", "query: 释义{甲 noun\u200b 乙}");
        row("noun 甲 x\u2060verb 乙", "query: noun{甲 x\u2060verb 乙}");
        row("名② 甲 _动 名_ 动Ⅱ ⓐ形", "query: 名{1 甲 _动 名_ 动Ⅱ ⓐ形}");
        row("(名)甲 “动” 乙", "query: 名{)甲 “} 动{” 乙}");
    }

    void parsing() {
        QFETCH(QString, text);
        QFETCH(QString, entry);
        const DictionaryEntry parsed = parseDefinition(text, u"query"_s);
        QCOMPARE(described(parsed), entry);
        QCOMPARE(parsed.rawText, text.trimmed());
        QVERIFY(parsed.examples.isEmpty());
    }
};

QTEST_GUILESS_MAIN(DefinitionParserTest)
#include "definition_parser_test.moc"

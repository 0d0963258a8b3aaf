#include "dictionaries/article/article_reader.h"
#include "dictionaries/described.h"
#include "support/test.h"

using namespace lexiquill;
using article::Form;

namespace {

std::optional<DictionaryEntry> entryOf(const QString &text, Form form = Form::Text) {
    return article::readArticles(u"run"_s, {{{form, text}}});
}

} // namespace

class ArticleReaderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// Articles on "run", and the resulting entries.
    void articles_data() {
        columns<Form, QString, QString>("form", "article", "understood");
        const auto row = [](const char *name, const char *article, const char *understood,
                            Form form = Form::Text) {
            QTest::newRow(name) << form << QString::fromUtf8(article) << QString::fromUtf8(understood);
        };
        row("starter", "[rʌn]\nv.\n1. 跑；奔跑\n▸ They ran. 他们跑了。\n2. 放弃\nn.\n1. 放任；放纵",
            "run/rʌn: verb{1 跑；奔跑 > They ran. 他们跑了。; 2 放弃} noun{1 放任；放纵}");
        row("star and commas", "*[r'ʌn]\nvt. 放弃, 抛弃\r\nn. 放任, 狂热\n[计] 中止",
            "run/r'ʌn: transitive verb{1 放弃; 2 抛弃} noun{1 放任; 2 狂热; 3 (计) 中止}");
        row("KK and DJ", "KK: [dæns] DJ: [dɑ:ns]\nvt.&vi. 跳舞", "run/dæns: verb{1 跳舞}");
        row("backslashes", "\\ˈrən\\ verb 1 : to go fast 2 : to flee",
            "run/ˈrən: verb{1 to go fast; 2 to flee}");
        row("pinyin", "[ni3 hao3] /hello/hi/", "run/ni3 hao3: 释义{1 hello; 2 hi}");
        row("usage is no phonetic", "[pl.] 数据", "run: noun{1 (复数) 数据}");
        row("remark is no phonetic", "[医] 数据", "run: 释义{1 (医) 数据}");
        row("folded English",
            "run\n n 1: lack of restraint; freedom\n     from worry\n 2: a feeling\n v 1: leave",
            "run: noun{1 lack of restraint; freedom from worry; 2 a feeling} verb{1 leave}");
        row("bare numbers", "n [C] 1 银行 2 岸, 堤\nadj 倾斜的",
            "run: noun{1 ([C]) 银行; 2 岸, 堤} adjective{1 倾斜的}");
        row("labels within a line", "n. 意志; vt. 用意志力使 aux. 将",
            "run: noun{1 意志} transitive verb{1 用意志力使} aux.{1 将}");
        row("joined labels", "n. & v. 咳嗽", "run: noun{1 咳嗽} verb{1 咳嗽}");
        row("rare labels", "art. 这\ndet. 那\nabbr. 安培\nsuf. 性\nnum. 一\nphr. 短语\nphr.v. 离去\nint. 哦",
            "run: art.{1 这} det.{1 那} abbr.{1 安培} suf.{1 性} numeral{1 一} phrase{1 短语} "
            "phrasal verb{1 离去} interjection{1 哦}");
        row("Chinese labels", "【名词】跑步\n动词：跑\n【形】流动的\n不及物动词 流",
            "run: noun{1 跑步} verb{1 跑} adjective{1 流动的} intransitive verb{1 流}");
        row("remarks on grammar", "v.\n1. 存在\n2. (助动词) 正在\n▸ He is cooking. 他正在做饭。\n3. (n.) 甲",
            "run: verb{1 存在; 2 (助动词) 正在 > He is cooking. 他正在做饭。} noun{1 甲}");
        row("numbers in a line", "v. 1. 跑 2. 跑 3.5 公里 3、逃 ④流 (5)管 2) x",
            "run: verb{1 跑; 2 跑 3.5 公里 3、逃 ④流 (5)管 2) x}");
        row("numbers that are no sense numbers",
            "n. 1 月\nv. 3、4 月间\nadj. (3) 月\nadv. 第⑤类元素\nprep. 2) 第二\nconj. 1、2 班",
            "run: noun{1 1 月} verb{1 3、4 月间} adjective{1 (3) 月} adverb{1 第⑤类元素} preposition{1 2) "
            "第二} "
            "conjunction{1 1、2 班}");
        row("numbers that go on behind the next label", "n. 1. 甲 2. 乙\nv. 3. 丙",
            "run: noun{1 甲; 2 乙} verb{1 丙}");
        row("a number in front of each label", "1. n. 甲\n2. v. 乙", "run: noun{1 甲} verb{1 乙}");
        row("marks that are no separators", "n. |x| 的值; 见：", "run: noun{1 |x| 的值; 2 见：}");
        row("line breaks in letters", "*[rʌn]\\nn. 跑；奔\\n▸ Run! 跑！\\n[计] 运行",
            "run/rʌn: noun{1 跑; 2 奔 > Run! 跑！; 3 (计) 运行}");
        row("a backslash and an n", "n. 路径 C:\\new\\names; 写作 \\nu 或 \\nabla; 换行符 \"\\n\"",
            "run: noun{1 路径 C:\\new\\names; 2 写作 \\nu 或 \\nabla; 3 换行符 \"\\n\"}");
        row("terms of grammar", "n.\n1. 形容词\n▸ A word. 词。\nadj.\n1. 名词的",
            "run: noun{1 形容词 > A word. 词。} adjective{1 名词的}");
        row("adjective", "a. 好的\nad. 好地", "run: adjective{1 好的} adverb{1 好地}");
        row("text before the label", "总的来说\nn. 某物\nv. 做", "run: noun{1 某物; 2 总的来说} verb{1 做}");
        row("contexts", "n. [医][美] 甲; 〈口〉乙；(正式) 丙；(使)丁；(of a man) 戊；(复数)；[数]己",
            "run: noun{1 (医，美) 甲; 2 (口) 乙; 3 (正式) 丙; 4 (使)丁; 5 (of a man) 戊; 6 (复数); 7 "
            "(数) 己}");
        row("grammar", "n. 1 [C, U] 甲 2 [usu pl.] (formal) 乙",
            "run: noun{1 ([C, U]) 甲; 2 ([usu pl.]，formal) 乙}");
        row("brackets keep their separators", "n. 甲(乙;丙); “丁；戊”", "run: noun{1 甲(乙;丙); 2 “丁；戊”}");
        row("examples",
            "n. 岸\n• He sat. 他坐着。\nShe went to the bank.\n她去了。\n例: Go. 走。\nsit on the\n",
            "run: noun{1 岸 > He sat. 他坐着。 > She went to the bank. 她去了。 > Go. 走。; 2 sit on the}");
        row("example alone", "▸ He sat there. ▸ It is.", "run:");
        row("English lines stay senses", "The quick brown fox jumps.\nThe lazy dog sleeps.",
            "run: 释义{1 The quick brown fox jumps.; 2 The lazy dog sleeps.}");
        row("controls and blanks", "\ufeffa\x01\t\xc2\xa0  b\xff\x7f\u3000c\ufeff",
            "run: 释义{1 a\t\xc2\xa0  b\ufffd\u3000c\ufeff}");
        row("only a label", "n.", "run: 释义{n.}");
        row("only a part of speech", "noun", "run: 释义{1 noun}");
        // Words and numbers in glosses and examples must not be taken for labels and sense numbers.
        row("label words", "n. a noun; Verb-like; an idiom\n▸ A noun is a word.",
            "run: noun{1 a noun; 2 Verb-like; 3 an idiom > A noun is a word.}");
        row("numbers", "n. 在 1990 年\n▸ In 1990 ② 3. of 20", "run: noun{1 在 1990 年 > In 1990 ② 3. of 20}");
        row("digits of other scripts", "n. 有 １２ 个 ٣ 与 𝟏 项", "run: noun{1 有 １２ 个 ٣ 与 𝟏 项}");
        row("lone characters", "n. 名；“动” 量\nv. 动, 量\nadj. 副",
            "run: noun{1 名; 2 “动” 量} verb{1 动; 2 量} adjective{1 副}");
        row("a subject alone", "n. （名）; [医]; (a)", "run: noun{1 （名）; 2 [医]; 3 (a)}");
        row("phonetic with a bar", "[rʌn|ræn] n. 词", "run/rʌn|ræn: noun{1 词}");
        row("field marks", "n. a|b ‹c› d", "run: noun{1 a|b ‹c› d}");
        row("xdxf",
            "<ar><k>Run</k>\n[<tr>eks</tr>]<br/><pos>n.</pos> <def>字母<ex>X\nmarks. <i>X</i> "
            "标。</ex></def><rref>x.wav</rref></ar>",
            "run/eks: noun{1 字母 > X marks. X 标。}", Form::Xdxf);
        row("html",
            "<!DOCTYPE html><HEAD><title>t</title></HEAD><style>a{}</style><!-- <p> --><p>n.</p>"
            "<ul><li>one\ntwo<LI class='a'>three</ul><table><tr><td>a</td><td>b</td></tr></table>"
            "<script>if (a<b) c()</script>",
            "run: noun{1 one two; 2 three; 3 a b}", Form::Html);
        row("quoted attribute", "<a title=\"x>y\" b='<i>'>甲</a><b c=\"d>乙", "run: 释义{1 甲乙}",
            Form::Html);
        row("transcription in round brackets", "(<tr>rʌn</tr>) 跑", "run/rʌn: 释义{1 跑}", Form::Xdxf);
        row("wide blanks", "a&ensp;b&emsp;c&thinsp;d", "run: 释义{1 a\u2002b\u2003c\u2009d}", Form::Html);
        row("entities", "&amp;&eacute;&#233;&#xE9;&#x110000;&#xD800;&#0;&#99999999999;&bogus;&;& &#x;",
            "run: 释义{1 &ééé\ufffd\ufffd\ufffd\ufffd&bogus; 2 &; 3 & &#x}", Form::Html);
        row("no tags", "a < b <美> 1<2 <i", "run: 释义{1 a < b <美> 1<2 <i}", Form::Html);
        row("unclosed", "<ex>a<tr>b<k>c", "run:", Form::Xdxf);
        row("unclosed comment and script", "a<!-- b<script>c", "run: 释义{1 ac}", Form::Html);
        row("character data", "<![CDATA[a<b>]]>", "run: 释义{1 a<b>}", Form::Xdxf);
    }

    /// Compares the whole text, without removing any character.
    void articles() {
        QFETCH(const Form, form);
        QFETCH(const QString, article);
        const auto entry = entryOf(article, form);
        QTEST(entry ? described(*entry) : u"-"_s, "understood");
    }

    /// The text of the article, without its markup, is kept unchanged.
    void rawTexts_data() {
        columns<Form, QString, QString>("form", "article", "rawText");
        const auto row = [](Form form, const char *article, const char *rawText) {
            QTest::newRow(article) << form << QString::fromUtf8(article) << QString::fromUtf8(rawText);
        };
        row(Form::Text, "*[rʌn]\nn. a|b ‹c›  \u20601990\n▸ d\\n\n",
            "*[rʌn]\nn. a|b ‹c›  \u20601990\n▸ d\\n\n");
        row(Form::Xdxf, "<k>run</k>\n[<tr>rʌn</tr>] a<ex>b</ex>", "run\n\n[rʌn] a\nb");
        row(Form::Html, "<p>a \n b</p><p>c&nbsp;&lt;d&gt;</p>", "a b\nc\u00a0<d>");
        row(Form::Pango, "<b>a</b>\n b", "a\n b");
    }
    void rawTexts() {
        QFETCH(const Form, form);
        QFETCH(const QString, article);
        const auto entry = entryOf(article, form);
        QVERIFY(entry);
        QTEST(entry->rawText, "rawText");
    }

    void severalArticlesMakeOneEntry() {
        const auto entry =
            article::readArticles(u"run"_s, {{{Form::Phonetic, u"rʌn"_s}, {Form::Text, u"v. 跑"_s}},
                                             {{Form::Text, u"v. 逃\nn. 奔跑"_s}}});
        QVERIFY(entry);
        QCOMPARE(described(*entry), u"run/rʌn: verb{1 跑; 2 逃} noun{1 奔跑}"_s);
        QCOMPARE(entry->rawText, u"rʌn\nv. 跑\nv. 逃\nn. 奔跑"_s);
    }

    void chineseNames_data() {
        addRows(
            "n. 甲|名词\nvt. 甲|动词\nart. 甲|冠词\naux. 甲|助动词\nnum. 甲|数词\nabbr. 甲|缩写\n甲|释义");
    }
    void chineseNames() {
        QFETCH(const QStringList, cells);
        QCOMPARE(entryOf(cells[0])->posGroups.first().posChinese, cells[1]);
    }

    void nothingToRead() {
        for (const QString &text : {QString(), u" ;\n"_s, u"\x01"_s})
            QVERIFY2(!entryOf(text), qPrintable(text));
        QVERIFY(!article::readArticles(u" "_s, {{{Form::Text, u"n. 词"_s}}}));
        QVERIFY(!entryOf(u"rʌn"_s, Form::Phonetic));
    }

    /// Long texts that repeat one element must neither exhaust the stack nor take very long.
    void hugeTexts() {
        const QString units =
            u"<i> <ex> < & <!-- <script> </k><k> <tr>a</tr> 1. (1) ① n. [ ([ （a） ， 甲， ; ▸ "
            "\n \\n a\\n \\n1. \n•a 1990 名 verb \nn.a II. - \n2"_s;
        for (const QString &unit : units.split(u' ')) {
            for (const QString &text :
                 {unit.repeated(200'000 / unit.size()), (unit + u' ').repeated(50'000)}) {
                for (const Form form : {Form::Text, Form::Xdxf, Form::Html, Form::PowerWord, Form::MediaWiki})
                    entryOf(text, form);
            }
        }
    }
};

QTEST_GUILESS_MAIN(ArticleReaderTest)
#include "article_reader_test.moc"

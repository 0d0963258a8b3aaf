#include "dictionaries/described.h"
#include "lookup/online/worker_response.h"
#include "lookup/online/youdao_parser.h"
#include "support/test.h"
#include "support/web_address.h"

using namespace lexiquill;

namespace {

/// JSON in which "'" stands for the quotation mark.
QByteArray json(QString text) {
    return text.replace(u'\'', u'"').toUtf8();
}

/// The entry as in `described`, followed by " raw(text) en=cn".
QString describe(const std::optional<DictionaryEntry> &entry) {
    if (!entry)
        return u"none"_s;
    QString text = described(*entry) + u" raw("_s + QString(entry->rawText).replace(u'\n', u'/') + u')';
    for (const ExampleSentence &example : entry->examples)
        text += u' ' + example.en + u'=' + example.cn;
    return text;
}

/// An "ec" or "ce" section with the given lines.
QString section(const char *name, const QStringList &lines, const char *more = "") {
    QStringList elements;
    for (const QString &line : lines)
        elements += u"{'tr':[{'l':{'i':['%1']}}]}"_s.arg(line);
    return u"'%1':{'word':[{%2'trs':[%3]}]}"_s.arg(QString::fromUtf8(name), QString::fromUtf8(more),
                                                   elements.join(u','));
}

QString nested(int depth) {
    return QString(depth, u'[') + QString(depth, u']');
}

} // namespace

class OnlineAnswersTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void youdao_data() {
        columns<QByteArray, QString>("answer", "entry");
        const auto row = [](const char *name, const QString &answer, const char *entry) {
            QTest::newRow(name) << json(u'{' + answer + u'}') << QString::fromUtf8(entry);
        };
        const auto ec = [](const QStringList &lines, const char *more = "") {
            return section("ec", lines, more);
        };
        const auto ce = [](const QStringList &lines, const char *more = "") {
            return section("ce", lines, more);
        };
        const QString line = u"n. 词"_s;
        const auto simple = [](const char *word, const char *query = "") {
            return u"'simple':{%2'word':[%1]},"_s.arg(QString::fromUtf8(word), QString::fromUtf8(query));
        };
        const QString fanyi = u"'fanyi':{'tran':' 译文 '}"_s;
        const QString web = u"'web_trans':{'web-translation':[%1]}"_s;
        const QString value = u"{'trans':[{'value':' %1 '}]}"_s;

        row("line", ec({u" n. 你好；招呼, 问候 "_s}),
            "q: n.{1 你好; 2 招呼; 3 问候} raw(n. 你好；招呼, 问候)");
        row("four separators", ec({u"ADJ.甲;乙；丙,丁，戊；；, "_s}),
            "q: adj.{1 甲; 2 乙; 3 丙; 4 丁; 5 戊} raw(ADJ.甲;乙；丙,丁，戊；；,)");
        row("no part of speech", ec({u"Hello!"_s, u"n 词；语"_s, QString()}),
            "q: 释义{1 Hello!; 2 n 词；语; 3 } raw(Hello!/n 词；语/)");
        row("merged", ec({u"vt. 问候"_s, u"n. 甲"_s, u"vi. 问候；欢迎,欢迎"_s}),
            "q: vt.{1 问候; 2 欢迎} n.{1 甲} raw(vt. 问候/n. 甲/vi. 问候；欢迎,欢迎)");
        row("duplicates in one line stay", ec({u"n. 甲；甲"_s, u"n. 甲"_s}),
            "q: n.{1 甲; 2 甲} raw(n. 甲；甲/n. 甲)");
        row("nothing behind the point", ec({u"adj."_s, u"adj. ； "_s}), "none");
        row("empty", QString(), "none");
        row("malformed elements",
            u"'ec':{'word':[{'trs':[7,{},{'tr':[]},{'tr':[1]},{'tr':[{'l':[]}]},{'tr':[{'l':{'i':[]}}]},"
            "{'tr':[{'l':{'i':['n. 甲',{}]}}]},{'tr':[{'l':{'i':['n. 乙','n. 丙']}}]}]}]}"_s,
            "q: n.{1 乙} raw(n. 乙)");
        row("word is no array", u"'ec':{'word':{'trs':[]}},"_s + fanyi, "q: 翻译{1 译文} raw(译文)");

        row("phonetics", simple("{'usphone':1,'ukphone':'uk','phone':'p'}", "'query':'Query',") + ec({line}),
            "Query/uk: n.{1 词} raw(n. 词)");
        row("phonetic of ec", simple("{'usphone':''}") + ec({line}, "'phone':'p',"),
            "q/p: n.{1 词} raw(n. 词)");
        row("empty phonetic", simple("{'usphone':''}") + fanyi, "q/: 翻译{1 译文} raw(译文)");
        row("return phrase", simple("{}", "'query':'hello',") + ec({line}, "'return-phrase':'Hello',"),
            "Hello: n.{1 词} raw(n. 词)");

        row("Chinese query", ce({u" hello; hi "_s, u"n. word"_s}, "'phone':'nǐ hǎo',"),
            "q/nǐ hǎo: 英译{1 hello; hi; 2 n. word} raw(hello; hi/n. word)");
        row("ce behind an empty ec", ec({u"adj."_s}) + u',' + ce({u"hello"_s}),
            "q: 英译{1 hello} raw(adj./hello)");
        row("machine translation", fanyi, "q: 翻译{1 译文} raw(译文)");
        row("blank machine translation", simple("{}", "'query':'Q',") + u"'fanyi':{'tran':' '}"_s,
            "Q: 翻译{1 } raw(Q)");
        row("web translations",
            web.arg(QStringList{u"{'key':1}"_s, value.arg(1), u"{'trans':[]}"_s, value.arg(2), value.arg(3),
                                value.arg(4), value.arg(5)}
                        .join(u',')),
            "q: 网络释义{1 1; 2 2} raw(1/2)");

        const QString pairs = u"'blng_sents_part':{'sentence-pair':[%1]},"_s + fanyi;
        row("examples",
            pairs.arg(u"{'sentence':'I <b>like</b> it.','sentence-translation':' <i>我</i> '},"
                      "{'sentence':1,'sentence-eng':'Two','sentence-translation':'二'},"
                      "{'sentence':'','sentence-eng':'Three','sentence-translation':'三'},"
                      "{'sentence':'Four','sentence-translation':''},"
                      "[],{'sentence':'<a<b> <> 1 > 0 < ','sentence-translation':'六'},"
                      "{'sentence':'Seven','sentence-translation':'七'}"_s),
            "q: 翻译{1 译文} raw(译文) I like it.=<i>我</i> Two=二 <> 1 > 0 <=六");

        row("deep", u"'x':"_s + nested(400) + u',' + fanyi, "q: 翻译{1 译文} raw(译文)");
        row("too deep", u"'x':"_s + nested(1'000'000) + u',' + fanyi, "none");
        row("too many senses", ec({u"n. "_s + QString(2'000'000, u'x').replace(u'x', "x,"_L1)}), "none");
        row("many open tags",
            pairs.arg(u"{'sentence':'%1','sentence-translation':'x'}"_s.arg(QString(2'000'000, u'<'))) +
                u",'blng_sents_part':0"_s,
            "q: 翻译{1 译文} raw(译文)");
    }

    void youdao() {
        QFETCH(const QByteArray, answer);
        QTEST(describe(parseYoudaoJSON(answer, u"q"_s)), "entry");
    }

    void notYoudao_data() {
        QTest::addColumn<QByteArray>("answer");
        for (const QByteArray &answer :
             {QByteArray(), "<html>ec</html>"_ba, json(u"['ec']"_s), "\"ec\""_ba, json(u"{'error':429}"_s),
              json(u"{'ec':1}"_s), json(u"{'fanyi':{'tran':'x'}} x"_s), json(u"{'fanyi':{'tran':'x'}"_s),
              QByteArray("{\"fanyi\":{\"tran\":\"\xff\"}}"), "{\"fanyi\":{\"tran\":\"\\ud800\"}}"_ba,
              QByteArray(1'000'000, '\0'), QByteArray(1'000'000, '{')})
            QTest::addRow("%.30s %d", answer.constData(), static_cast<int>(answer.size())) << answer;
    }

    void notYoudao() {
        QFETCH(const QByteArray, answer);
        QVERIFY(!isYoudaoAnswer(answer));
        QVERIFY(!parseYoudaoJSON(answer, u"q"_s));
    }

    void aHugeNumberCostsNothingElse() {
        for (const char *number : {"123456789012345678901", "-99999999999999999999999", "1e999", "-2E+400",
                                   "18446744073709551616"}) {
            const auto entry =
                parseYoudaoJSON("{\"9e999\\\"1\":"_ba + number + ",\"fanyi\":{\"tran\":\"1e999\"}}", u"q"_s);
            QVERIFY2(entry, number);
            QCOMPARE(entry->rawText, u"1e999"_s);
        }
        for (const char *number : {"12345678901234567890123.", "-", "1e", "0x9999999999999999999", "--1e999"})
            QVERIFY2(!parseYoudaoJSON("{\"x\":"_ba + number + ",\"fanyi\":{\"tran\":\"a\"}}", u"q"_s),
                     number);
    }

    void server_data() {
        addRows(
            "{'success':true,'entry':{'word':'W'}}                                       | W: raw(q)\n"
            "{'success':true,'entry':{'word':' W ','phonetic':'','posGroups':[{'pos':' N.','meanings':[' 甲 "
            "','甲',''"
            "]},{'pos':'n.','meanings':[]}],'rawDefinition':'raw','conciseSummary':'sum','examples':[{'en':' "
            "e ','cn':''}]"
            ",'audio':'a','more':1},'more':2}  |  W /:  N.{1  甲 ; 2 甲; 3 } n.{} raw(raw)  e =\n"
            "{'success':true,'entry':{'word':'W','rawDefinition':''}}                     | W: raw(q)\n"
            "{'success':true,'entry':{'word':'W','rawDefinition':'','conciseSummary':''}} | W: raw()\n"
            "{'success':true,'entry':{'word':'W','conciseSummary':'sum'}}                 | W: raw(sum)\n"
            "{'success':true,'entry':{'word':'W','phonetic':null,'posGroups':null,'audio':null}} | W: "
            "raw(q)\n"
            "{'success':false,'entry':{'word':'W'}}                   | none\n"
            "{'success':'true','entry':{'word':'W'}}                  | none\n"
            "{'success':true,'entry':{'word':null}}                   | none\n"
            "{'success':true,'entry':{'word':'W','phonetic':1}}       | none\n"
            "{'success':true,'entry':{'word':'W','conciseSummary':1}} | none\n"
            "{'success':true,'entry':{'word':'W','posGroups':{}}}     | none\n"
            "{'success':true,'entry':{'word':'W','posGroups':[{'pos':'n.','meanings':[1]}]}}  | none\n"
            "{'success':true,'entry':{'word':'W','examples':[{'en':'e','cn':1}]}}             | none\n"
            "<html>                                                   | none\n");
    }

    void server() {
        QFETCH(const QStringList, cells);
        QCOMPARE(describe(parseWorkerResponse(json(cells[0]), u"q"_s)).trimmed(), cells[1]);
    }

    void queries_data() {
        addRows("hello            | hello\n"
                "ice cream        | ice%20cream\n"
                "你好             | %E4%BD%A0%E5%A5%BD\n"
                "📖               | %F0%9F%93%96\n"
                "a&b=c+d?e        | a&b=c+d?e\n"
                "!$&'()*+,-./:;=?@_~ | !$&'()*+,-./:;=?@_~\n"
                "\"#%<>[]^`{}     | %22%23%25%3C%3E%5B%5D%5E%60%7B%7D\n"
                "%41\\            | %2541%5C\n");
    }

    void queries() {
        QFETCH(const QStringList, cells);
        QCOMPARE(queryEncoded(cells[0]), cells[1].toUtf8());
    }
};

QTEST_GUILESS_MAIN(OnlineAnswersTest)
#include "online_answers_test.moc"

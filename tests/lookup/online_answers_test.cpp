#include "lookup/worker_response.h"
#include "lookup/youdao_parser.h"
#include "support/table.h"
#include "support/url_query.h"

using namespace lexiquill;

namespace {

/// JSON in which "'" stands for the quotation mark.
QByteArray json(QString text) {
    return text.replace(u'\'', u'"').toUtf8();
}

/// "headword/phonetic: pos{1 meaning; 2 meaning} raw(text) en=cn"
QString describe(const std::optional<DictionaryEntry> &entry) {
    if (!entry)
        return QStringLiteral("none");
    QString text = entry->headword + u'/' + entry->phonetic.value_or(QStringLiteral("-")) + u':';
    for (const PartOfSpeechGroup &group : entry->posGroups) {
        QStringList senses;
        for (const SenseItem &sense : group.senses)
            senses += QString::number(sense.number.value_or(-1)) + u' ' + sense.chineseMeaning;
        text += u' ' + group.pos + u'{' + senses.join(QStringLiteral("; ")) + u'}';
    }
    text += QStringLiteral(" raw(") + QString(entry->rawText).replace(u'\n', u'/') + u')';
    for (const ExampleSentence &example : entry->examples)
        text += u' ' + example.en + u'=' + example.cn;
    return text;
}

/// An "ec" or "ce" section with the given lines.
QString section(const char *name, const QStringList &lines, const char *more = "") {
    QStringList elements;
    for (const QString &line : lines)
        elements += QStringLiteral("{'tr':[{'l':{'i':['%1']}}]}").arg(line);
    return QStringLiteral("'%1':{'word':[{%2'trs':[%3]}]}")
        .arg(QString::fromUtf8(name), QString::fromUtf8(more), elements.join(u','));
}

QString nested(int depth) {
    return QString(depth, u'[') + QString(depth, u']');
}

} // namespace

class OnlineAnswersTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void youdao_data() {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<QString>("entry");
        const auto row = [](const char *name, const QString &answer, const char *entry) {
            QTest::newRow(name) << json(u'{' + answer + u'}') << QString::fromUtf8(entry);
        };
        const auto ec = [](const QStringList &lines, const char *more = "") {
            return section("ec", lines, more);
        };
        const auto ce = [](const QStringList &lines, const char *more = "") {
            return section("ce", lines, more);
        };
        const QString line = QStringLiteral("n. 词");
        const auto simple = [](const char *word, const char *query = "") {
            return QStringLiteral("'simple':{%2'word':[%1]},")
                .arg(QString::fromUtf8(word), QString::fromUtf8(query));
        };
        const QString fanyi = QStringLiteral("'fanyi':{'tran':' 译文 '}");
        const QString web = QStringLiteral("'web_trans':{'web-translation':[%1]}");
        const QString value = QStringLiteral("{'trans':[{'value':' %1 '}]}");

        row("line", ec({QStringLiteral(" n. 你好；招呼, 问候 ")}),
            "q/-: n.{1 你好; 2 招呼; 3 问候} raw(n. 你好；招呼, 问候)");
        row("four separators", ec({QStringLiteral("ADJ.甲;乙；丙,丁，戊；；, ")}),
            "q/-: adj.{1 甲; 2 乙; 3 丙; 4 丁; 5 戊} raw(ADJ.甲;乙；丙,丁，戊；；,)");
        row("no part of speech", ec({QStringLiteral("Hello!"), QStringLiteral("n 词；语"), QString()}),
            "q/-: 释义{1 Hello!; 2 n 词；语; 3 } raw(Hello!/n 词；语/)");
        row("line break in a line", ec({QStringLiteral("n.\\n甲"), QStringLiteral("n. 甲\\n乙")}),
            "q/-: n.{1 甲} 释义{1 n. 甲\n乙} raw(n./甲/n. 甲/乙)");
        row("Unicode blank", ec({QStringLiteral("n.\u3000甲\u3000")}), "q/-: n.{1 甲} raw(n.\u3000甲)");
        row("merged",
            ec({QStringLiteral("vt. 问候"), QStringLiteral("n. 甲"), QStringLiteral("vi. 问候；欢迎,欢迎")}),
            "q/-: vt.{1 问候; 2 欢迎} n.{1 甲} raw(vt. 问候/n. 甲/vi. 问候；欢迎,欢迎)");
        row("duplicates in one line stay", ec({QStringLiteral("n. 甲；甲"), QStringLiteral("n. 甲")}),
            "q/-: n.{1 甲; 2 甲} raw(n. 甲；甲/n. 甲)");
        row("nothing behind the point", ec({QStringLiteral("adj."), QStringLiteral("adj. ； ")}), "none");
        row("empty", QString(), "none");
        row("empty section", ec({}), "none");
        row("malformed elements",
            QStringLiteral(
                "'ec':{'word':[{'trs':[7,{},{'tr':[]},{'tr':[1]},{'tr':[{'l':[]}]},{'tr':[{'l':{'i':[]}}]},"
                "{'tr':[{'l':{'i':['n. 甲',{}]}}]},{'tr':[{'l':{'i':['n. 乙','n. 丙']}}]}]}]}"),
            "q/-: n.{1 乙} raw(n. 乙)");
        row("word is no array", QStringLiteral("'ec':{'word':{'trs':[]}},") + fanyi,
            "q/-: 翻译{1 译文} raw(译文)");

        row("phonetics", simple("{'usphone':1,'ukphone':'uk','phone':'p'}", "'query':'Query',") + ec({line}),
            "Query/uk: n.{1 词} raw(n. 词)");
        row("phonetic of ec", simple("{'usphone':''}") + ec({line}, "'phone':'p',"),
            "q/p: n.{1 词} raw(n. 词)");
        row("empty phonetic", simple("{'usphone':''}") + fanyi, "q/: 翻译{1 译文} raw(译文)");
        row("phonetic lost", simple("{'usphone':''}") + ec({line}), "q/-: n.{1 词} raw(n. 词)");
        row("query without a word", simple("", "'query':'Query',") + ec({line}), "q/-: n.{1 词} raw(n. 词)");
        row("return phrase", simple("{}", "'query':'hello',") + ec({line}, "'return-phrase':'Hello',"),
            "Hello/-: n.{1 词} raw(n. 词)");

        row("Chinese query",
            ce({QStringLiteral(" hello; hi "), QStringLiteral("n. word")}, "'phone':'nǐ hǎo',"),
            "q/nǐ hǎo: 英译{1 hello; hi; 2 n. word} raw(hello; hi/n. word)");
        row("ce behind an empty ec", ec({QStringLiteral("adj.")}) + u',' + ce({QStringLiteral("hello")}),
            "q/-: 英译{1 hello} raw(adj./hello)");
        row("ce not needed", ce({QStringLiteral("hello")}, "'phone':'p',") + u',' + ec({line}),
            "q/-: n.{1 词} raw(n. 词)");
        row("machine translation", fanyi, "q/-: 翻译{1 译文} raw(译文)");
        row("empty machine translation", QStringLiteral("'fanyi':{'tran':''}"), "none");
        row("blank machine translation",
            simple("{}", "'query':'Q',") + QStringLiteral("'fanyi':{'tran':' '}"), "Q/-: 翻译{1 } raw(Q)");
        row("web translations",
            web.arg(QStringList{QStringLiteral("{'key':1}"), value.arg(1), QStringLiteral("{'trans':[]}"),
                                value.arg(2), value.arg(3), value.arg(4), value.arg(5)}
                        .join(u',')),
            "q/-: 网络释义{1 1; 2 2} raw(1/2)");
        row("web not needed", fanyi + u',' + web.arg(value.arg(1)), "q/-: 翻译{1 译文} raw(译文)");

        const QString pairs = QStringLiteral("'blng_sents_part':{'sentence-pair':[%1]},") + fanyi;
        row("examples",
            pairs.arg(QStringLiteral("{'sentence':'I <b>like</b> it.','sentence-translation':' <i>我</i> '},"
                                     "{'sentence':1,'sentence-eng':'Two','sentence-translation':'二'},"
                                     "{'sentence':'','sentence-eng':'Three','sentence-translation':'三'},"
                                     "{'sentence':'Four','sentence-translation':''},"
                                     "[],{'sentence':'<a<b> <> 1 > 0 < ','sentence-translation':'六'},"
                                     "{'sentence':'Seven','sentence-translation':'七'}")),
            "q/-: 翻译{1 译文} raw(译文) I like it.=<i>我</i> Two=二 <> 1 > 0 <=六");
        row("the last of two members", QStringLiteral("'fanyi':{'tran':'a'},'fanyi':{'tran':'b'}"),
            "q/-: 翻译{1 b} raw(b)");

        row("deep", QStringLiteral("'x':") + nested(400) + u',' + fanyi, "q/-: 翻译{1 译文} raw(译文)");
        row("too deep", QStringLiteral("'x':") + nested(1'000'000) + u',' + fanyi, "none");
        row("too many senses",
            ec({QStringLiteral("n. ") + QString(2'000'000, u'x').replace(u'x', QLatin1StringView("x,"))}),
            "none");
        row("too many lines", ec(QStringList(50'000, QStringLiteral("x"))), "none");
        row("many open tags",
            pairs.arg(QStringLiteral("{'sentence':'%1','sentence-translation':'x'}")
                          .arg(QString(2'000'000, u'<'))) +
                QStringLiteral(",'blng_sents_part':0"),
            "q/-: 翻译{1 译文} raw(译文)");
    }

    void youdao() {
        QFETCH(const QByteArray, answer);
        QTEST(describe(parseYoudaoJSON(answer, QStringLiteral("q"))), "entry");
    }

    void notYoudao_data() {
        QTest::addColumn<QByteArray>("answer");
        for (const QByteArray &answer :
             {QByteArray(), QByteArray("<html>ec</html>"), json(QStringLiteral("['ec']")),
              QByteArray("\"ec\""), json(QStringLiteral("{'error':429}")), json(QStringLiteral("{'ec':1}")),
              json(QStringLiteral("{'fanyi':{'tran':'x'}} x")), json(QStringLiteral("{'fanyi':{'tran':'x'}")),
              QByteArray("{\"fanyi\":{\"tran\":\"\xff\"}}"), QByteArray("{\"fanyi\":{\"tran\":\"\\ud800\"}}"),
              QByteArray(1'000'000, '\0'), QByteArray(1'000'000, '{')})
            QTest::addRow("%.30s %d", answer.constData(), static_cast<int>(answer.size())) << answer;
    }

    void notYoudao() {
        QFETCH(const QByteArray, answer);
        QVERIFY(!isYoudaoAnswer(answer));
        QVERIFY(!parseYoudaoJSON(answer, QStringLiteral("q")));
    }

    void aHugeNumberCostsNothingElse() {
        for (const char *number : {"123456789012345678901", "-99999999999999999999999", "1e999", "-2E+400",
                                   "18446744073709551616"}) {
            const auto entry =
                parseYoudaoJSON(QByteArray("{\"9e999\\\"1\":") + number + ",\"fanyi\":{\"tran\":\"1e999\"}}",
                                QStringLiteral("q"));
            QVERIFY2(entry, number);
            QCOMPARE(entry->rawText, QStringLiteral("1e999"));
        }
        for (const char *number : {"12345678901234567890123.", "-", "1e", "0x9999999999999999999", "--1e999"})
            QVERIFY2(!parseYoudaoJSON(QByteArray("{\"x\":") + number + ",\"fanyi\":{\"tran\":\"a\"}}",
                                      QStringLiteral("q")),
                     number);
    }

    void isYoudao() {
        QVERIFY(isYoudaoAnswer(json(QStringLiteral("{'input':'qqqq','simple':{'query':'qqqq'}}"))));
        QVERIFY(isYoudaoAnswer("\xef\xbb\xbf" + json(QStringLiteral("{'ec':{}}"))));
    }

    void server_data() {
        addRows(
            "{'success':true,'entry':{'word':'W'}}                                       | W/-: raw(q)\n"
            "{'success':true,'entry':{'word':' W ','phonetic':'','posGroups':[{'pos':' N.','meanings':[' 甲 "
            "','甲',''"
            "]},{'pos':'n.','meanings':[]}],'rawDefinition':'raw','conciseSummary':'sum','examples':[{'en':' "
            "e ','cn':''}]"
            ",'audio':'a','more':1},'more':2}  |  W /:  N.{1  甲 ; 2 甲; 3 } n.{} raw(raw)  e =\n"
            "{'success':true,'entry':{'word':'W','rawDefinition':''}}                     | W/-: raw(q)\n"
            "{'success':true,'entry':{'word':'W','rawDefinition':'','conciseSummary':''}} | W/-: raw()\n"
            "{'success':true,'entry':{'word':'W','conciseSummary':'sum'}}                 | W/-: raw(sum)\n"
            "{'success':true,'entry':{'word':'W','phonetic':null,'posGroups':null,'audio':null}} | W/-: "
            "raw(q)\n"
            "{'success':false,'entry':{'word':'W'}}                   | none\n"
            "{'entry':{'word':'W'}}                                   | none\n"
            "{'success':1,'entry':{'word':'W'}}                       | none\n"
            "{'success':'true','entry':{'word':'W'}}                  | none\n"
            "{'success':true}                                         | none\n"
            "{'success':true,'entry':null}                            | none\n"
            "{'success':true,'entry':[]}                              | none\n"
            "{'success':true,'entry':{}}                              | none\n"
            "{'success':true,'entry':{'word':null}}                   | none\n"
            "{'success':true,'entry':{'word':'W','phonetic':1}}       | none\n"
            "{'success':true,'entry':{'word':'W','audio':1}}          | none\n"
            "{'success':true,'entry':{'word':'W','conciseSummary':1}} | none\n"
            "{'success':true,'entry':{'word':'W','posGroups':{}}}     | none\n"
            "{'success':true,'entry':{'word':'W','posGroups':[{'pos':'n.'}]}}                 | none\n"
            "{'success':true,'entry':{'word':'W','posGroups':[{'pos':'n.','meanings':[1]}]}}  | none\n"
            "{'success':true,'entry':{'word':'W','posGroups':[null]}}                         | none\n"
            "{'success':true,'entry':{'word':'W','examples':[{'en':'e'}]}}                    | none\n"
            "{'success':true,'entry':{'word':'W','examples':[{'en':'e','cn':1}]}}             | none\n"
            "[{'success':true,'entry':{'word':'W'}}]                  | none\n"
            "<html>                                                   | none\n");
    }

    void server() {
        QFETCH(const QStringList, cells);
        QCOMPARE(describe(parseWorkerResponse(json(cells[0]), QStringLiteral("q"))).trimmed(), cells[1]);
    }

    void serverLimits() {
        const QString answer = QStringLiteral(
            "{'success':true,'entry':{'word':'W','posGroups':[{'pos':'n.','meanings':[%1]}]}}");
        const auto meanings = [&](int count) {
            return json(answer.arg(QStringList(count, QStringLiteral("'x'")).join(u',')));
        };
        const auto entry = parseWorkerResponse(meanings(9'999), QStringLiteral("q"));
        QVERIFY(entry && entry->posGroups.first().senses.last().number == 9'999);
        QVERIFY(!parseWorkerResponse(meanings(2'000'000), QStringLiteral("q")));
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

    void brokenQuery() { QVERIFY(!queryEncoded(QString(QChar(0xd800)))); }
};

QTEST_GUILESS_MAIN(OnlineAnswersTest)
#include "online_answers_test.moc"

#include "dictionaries/article/formatted_article.h"
#include "support/test.h"

using namespace lexiquill;
using article::Form;

class FormattedArticleTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void forms_data() {
        columns<Form, QString, QString>("form", "article", "formatted");
        const auto row = [](const char *name, Form form, const char *article, const char *formatted) {
            QTest::newRow(name) << form << QString::fromUtf8(article) << QString::fromUtf8(formatted);
        };
        row("paragraphs", Form::Text, "a <b>\nb\n\nc & \"d\"",
            "<p>a &lt;b&gt;<br>b</p><p>c &amp; &quot;d&quot;</p>");
        row("lists", Form::Text, "n.\n1. 甲\n▸ A. 一\n2. 乙\n- x\n- y\n5. z",
            "<p>n.</p><ol><li>甲<br>▸ A. 一</li><li>乙</li></ol><ul><li>x</li><li>y</li></ul><p>5. z</p>");
        row("html in plain text", Form::Text, "<b>n.</b> 甲 &amp; <i>x\n乙",
            "<p><b>n.</b> 甲 &amp; <i>x<br>乙</i></p>");
        row("phonetic", Form::Phonetic, "rʌn", "<p>/rʌn/</p>");
        row("html", Form::Html,
            "<style>p{}</style><h1>Run</h1><div>a<strong>b</strong><p>c<br>d</div>"
            "<ol><li>e<ul><li>f</ul><li>g</ol>",
            "<h3>Run</h3><p>a<b>b</b></p><p>c<br>d</p><ol><li>e<ul><li>f</li></ul></li><li>g</li></ol>");
        row("formatting over paragraphs", Form::Html, "<i>a<p>b</p></i>c",
            "<p><i>a</i></p><p><i>b</i></p><p>c</p>");
        row("nothing is loaded", Form::Html,
            "<script>x()</script><object data='http://a/'></object><p onclick='x()' style='x'>a</p>"
            "<a href='http://a/'>b</a><link href='http://a/x.css'>",
            "<p>a</p><p>b</p>");
        row("pictures", Form::Html,
            "<img src='a/b&quot;.png'><img src='http://a/b.png'><img src='/a.png'><img src='data:x'>"
            "<img src='../a.png'><img src='a/%2e%2e/b'><img src='\\a'><img src='dict:a'>x",
            "<p><img src=\"dict:a/b&quot;.png\">x</p>");
        row("direction marks", Form::Html, "a&#x202e;b&#x2066;c&#7;d", "<p>abcd</p>");
        row("xdxf", Form::Xdxf, "<k>run</k>\n<b>n.</b> 甲\n<ex>A. 一</ex><rref>x.wav</rref>",
            "<p><b>run</b></p><p><b>n.</b> 甲</p><p><i>A. 一</i></p>");
        row("pango", Form::Pango, "<b>a</b>\n<span font='x'>b</span>", "<p><b>a</b><br>b</p>");
        row("wiki", Form::MediaWiki, "== Noun ==\n# '''a'''\n#: ''b''\nc",
            "<h3>Noun</h3><ol><li>a<br><i>b</i></li></ol><p>c</p>");
        row("PowerWord", Form::PowerWord, "<单词词性>n.</单词词性><解释项><![CDATA[&b{甲}]]></解释项>",
            "<h3>n.</h3><ol><li>甲</li></ol>");
        row("text between items", Form::Html, "<ul>a\n<li>b</li>\n</ul>", "<ul><li>a\n</li><li>b</li></ul>");
        row("heading between items", Form::Html, "<ul><li>a</li><h3>b</h3><li>c</li></ul>",
            "<ul><li>a</li><li><b>b</b></li><li>c</li></ul>");
        row("unclosed", Form::Html, "a<ul><li><u>b<h2>c",
            "<p>a</p><ul><li><u>b</u><br><u><b>c</b></u></li></ul>");
    }
    void forms() {
        QFETCH(const Form, form);
        QFETCH(const QString, article);
        QTEST(article::formattedArticle({{{form, article}}}), "formatted");
    }

    /// The size and the nesting are limited, and every element is closed.
    void hugeArticles() {
        for (const QString &unit : {u"<b><i>x"_s, u"<ul><li>x"_s, u"<p>x</p>"_s, u"<h1>x"_s, u"1. x\n"_s}) {
            for (const Form form : {Form::Html, Form::Text, Form::Xdxf}) {
                const QString text = article::formattedArticle({{{form, unit.repeated(100'000)}}});
                QVERIFY(text.size() < 1'300'000);
                for (const QString &name : {u"p"_s, u"b"_s, u"i"_s, u"ul"_s, u"ol"_s, u"li"_s, u"h3"_s})
                    QCOMPARE(text.count(u'<' + name + u'>'), text.count(u"</"_s + name + u'>'));
            }
        }
    }

    /// Without a break, the layout of a text takes quadratic time.
    void longLines() {
        const QString text =
            article::formattedArticle({{{Form::Html, u"<li>"_s + u"😀x"_s.repeated(10'000)}}});
        for (const QString &paragraph : text.split(u'<'))
            QVERIFY(paragraph.size() < 5'000 && paragraph.isValidUtf16());
        QCOMPARE(text.count(u"😀"_s), 10'000);
    }

    void sounds() {
        const QString html =
            u"<a href='sound://us/a.mp3'>x</a><a href='SOUND://b c.spx'></a>"
            "<a href='http://x/y'></a><a href='sound://../x'></a><a href='sound:///x'></a>"_s;
        QCOMPARE(article::soundLinks({{{Form::Html, html}, {Form::Pango, html}}}),
                 (QStringList{u"us/a.mp3"_s, u"b c.spx"_s}));
    }
};

QTEST_GUILESS_MAIN(FormattedArticleTest)
#include "formatted_article_test.moc"

#include "dictionaries/article/article_reader.h"
#include "dictionaries/described.h"
#include "support/test.h"

using namespace lexiquill;
using article::Form;

/// Articles in the styles of the dictionaries that learners own, all written for this test.
class ArticleStylesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// The entry's examples follow "|".
    void styles_data() {
        columns<Form, QString, QString, QString>("form", "headword", "article", "understood");
        const auto row = [](const char *name, const char *headword, const char *article,
                            const char *understood, Form form = Form::Text) {
            QTest::newRow(name) << form << QString::fromUtf8(headword) << QString::fromUtf8(article)
                                << QString::fromUtf8(understood);
        };
        row("short lines", "pear",
            "*[peə] -K5 (中高 275/289)\nn. 梨; 梨树\n[医] 梨; 梨子\n[网络] 水果\n[级别] 中考 CET4\n"
            "[时态] 复数: pears",
            "pear/peə: noun{1 梨; 2 梨树; 3 (医) 梨; 4 (医) 梨子; 5 (网络) 水果}");
        row("a field below the only part of speech", "quit", "vt. 离开\n[计] 退出",
            "quit: transitive verb{1 离开; 2 (计) 退出}");
        row("a field below another part of speech", "leaf", "n. 叶子\nvt. 翻阅\n[植] 叶片\n[印] 叶子",
            "leaf: noun{1 叶子; 2 (印) 叶子} transitive verb{1 翻阅} 释义{1 (植) 叶片}");
        row("only a tag", "pears", "[原型] pear", "pears:");
        row("sections", "note",
            "n. 笔记\nv. 注意\n相关词组:\n  take note 注意；留意\n  of note: 重要的\n  note down\n  记下\n"
            "派生词:\nnoted adj. 著名的\n反义词: ignore\n例句:\n1. Take a note. 记一下。\n"
            "\"Note this,\" he said.\n“注意，”他说。",
            "note: noun{1 笔记} verb{1 注意} phrase{1 (take note) 注意；留意; 2 (of note) 重要的; 3 (note "
            "down) 记下} | Take a note. = 记一下。 | \"Note this,\" he said. = “注意，”他说。");
        row("sections in brackets", "word",
            "【音标】[wɜːd]\n【词性】n.\n【释义】词；话\n【词组】in a word 总之; word by word "
            "逐字【例句】Say a "
            "word. 说句话。",
            "word/wɜːd: noun{1 词; 2 话} phrase{1 (in a word) 总之; 2 (word by word) 逐字} | Say a word. = "
            "说句话。");
        row("Chinese headword", "本", "本 本 [ben3] /stem/(bound form) this/CL:個|个[ge4]/see 書|书[shu1]/",
            "本/ben3: 释义{1 stem; 2 (bound form) this; 3 see 书}");
        row("learner's dictionary", "wish",
            "wish1 /wɪʃ/\nn ~ (to do sth) 1 [U] a strong feeling of wanting 愿望；希望: She had a wish to "
            "go. "
            "她想走。* make a wish 许愿 2 [C] thing wished for 所愿之物\n> wishful adj 渴望的\n"
            "v ~ for sth (fml) want sth 想要\n* I wish to leave. 我想离开。",
            "wish/wɪʃ: noun{1 (~ (to do sth)，[U]，a strong feeling of wanting) 愿望；希望 > She had a wish "
            "to "
            "go. 她想走。 > make a wish 许愿; 2 ([C]，thing wished for) 所愿之物} verb{1 (~ for "
            "sth，fml，want sth) 想要 > I wish to leave. 我想离开。}");
        row("overview and idioms", "dawn",
            "dawn /dɔːn/ noun, verb\n■ noun\n1 [U] the first light of day 黎明\n◇ at dawn 在黎明\nIDM the "
            "crack of dawn 破晓\n■ verb\n(a) start to shine 破晓\n(b) become clear 变得清楚",
            "dawn/dɔːn: noun{1 ([U]，the first light of day) 黎明 > at dawn 在黎明} verb{1 (start to shine) "
            "破晓; 2 (become clear) 变得清楚} phrase{1 (the crack of dawn) 破晓}");
        row("learner's HTML", "leap",
            "<h1>leap<sup>1</sup></h1>★★★ BrE /liːp/ NAmE /liːp/<div class='pos'>verb</div><ol><li>to jump "
            "high 跳<ul><li>He leapt up.<br>他跳了起来。</li></ul></li><li>to rise fast "
            "激增</li></ol><h3>常用短语</h3><ul><li>leap at 抓住</li></ul>",
            "leap/liːp: verb{1 (to jump high) 跳 > He leapt up. 他跳了起来。; 2 (to rise fast) 激增} "
            "phrase{1 (leap at) 抓住}",
            Form::Html);
        row("sentences as definitions", "leap",
            "<div>leap ★★☆</div><div>1. V-T 及物动词 If you leap a wall, you jump over it. "
            "跃过</div><div>The "
            "dog leapt the fence.</div><div>狗跳过了篱笆。</div><div>2. N-UNCOUNT 不可数名词 A leap is a "
            "long "
            "jump.</div><div>跳跃</div>",
            "leap: transitive verb{1 (If you leap a wall, you jump over it.) 跃过 > The dog leapt the fence. "
            "狗跳过了篱笆。} noun{1 (不可数，A leap is a long jump.) 跳跃}",
            Form::Html);
        row("classes", "leap",
            "<span class='phon'>/liːp/</span><span class='pos'>verb</span><div><span>1</span><span "
            "class='def'>to jump</span><span>跳</span><div class='example'><span>He leapt.</span>"
            "<span>他跳了。</span></div></div><div class='idm'>leap year</div><div>闰年</div>",
            "leap/liːp: verb{1 (to jump) 跳 > He leapt. 他跳了。} phrase{1 (leap year) 闰年}", Form::Html);
        row("HTML in plain text", "taste",
            "[teɪst]<br><font color=\"red\">n.</font> 味道; 体验 &amp; 爱好\n<b>vt.</b> 尝\n<i>Taste it.</i> "
            "尝尝。",
            "taste/teɪst: noun{1 味道; 2 体验 & 爱好} transitive verb{1 尝 > Taste it. 尝尝。}");
        row("references and marks in plain text", "tag", "n. <b> 标签; R&amp;D; <计> 甲 <i\nabbr. A&#39;B",
            "tag: noun{1 <b> 标签; 2 R&D; 3 (计) 甲 <i} abbr.{1 A'B}");
        row("visual XDXF", "moon",
            "<k>moon</k> [<tr>muːn</tr>]\n<b>n.</b> 月亮; 卫星\n<ex>The moon rose. "
            "月亮升起。</ex>\n<kref>month</kref>",
            "moon/muːn: noun{1 月亮; 2 卫星 > The moon rose. 月亮升起。}", Form::Xdxf);
        row("logical XDXF", "moon",
            "<ar><k>moon</k><def><gr>n.</gr><def><deftext>月亮；月球</deftext><ex><ex_orig>Full moon."
            "</ex_orig><ex_tran>满月。</ex_tran></ex></def><def><co>天文</co><deftext>卫星</deftext></def>"
            "</def><sr><kref>sun</kref></sr></ar>",
            "moon: noun{1 月亮；月球 > Full moon. 满月。; 2 (天文) 卫星}", Form::Xdxf);
        row("WordNet", "eat",
            "eat\n     v 1: take in food; \"She ate a\n          pear\"; \"He eats\" [syn: {take in},\n "
            "{feed}]\n     2: have a meal; dine [also: ate]\n     n : food; stuff",
            "eat: verb{1 take in food > She ate a pear > He eats; 2 have a meal; dine} noun{1 food; stuff}");
        row("Webster", "nettle",
            "Nettle \\Net\"tle\\ (n[e^]t\"t'l), n. [From\n   old words.] (Bot.)\n   1. A plant ({Urtica\n"
            "      minor}) that stings. [Obs.] \"A tall nettle.\" --B.\n      Writer. [1913 Webster]\n\n"
            "            Grasp the nettle,\n            friend.      --Poet.\n      [1913 Webster]\n\n"
            "   Note: It grows\n         anywhere.\n\n   2. (Zo[\"o]l.)\n      (a) A jelly.\n      (b) A "
            "fish.\n\n   {Nettle tree}, or {Nettle bush} (Bot.), a tree;\n      a bush. See {Tree}.\n\n"
            "   {Dead nettle}. See under {Dead}.\n      [1913 Webster] -- {Net\"tly}, a.\n\n"
            "Nettle \\Net\"tle\\, v. t. [imp. {Nettled};\n   p. p. {Nettled}.]\n   To vex. -- "
            "{Net\"tler}, n.\n\n   Syn: Irk; vex.",
            "nettle: noun{1 (Bot.，Obs.) A plant (Urtica minor) that stings. > \"A tall nettle.\" --B. "
            "Writer. > Grasp the nettle, friend. --Poet.; 2 (Bot.，Zoöl.) A jelly.; 3 (Bot.，Zoöl.) A fish.} "
            "transitive verb{1 To vex.} phrase{1 (Nettle tree, or Nettle bush) a tree; a bush. See Tree.}");
        row("WordNet as elements", "eat",
            "<type>v</type><wordgroup><word>eat</word></wordgroup><gloss>take in food; \"She ate\"</gloss>",
            "eat: verb{1 take in food > She ate}", Form::WordNet);
        row("PowerWord", "note",
            "<词条><单词原型>note</单词原型><词典音标><![CDATA[nəʊt]]></词典音标><单词词性><![CDATA[n.]]>"
            "</单词词性><解释项><![CDATA[&b{笔记}；便条]]></解释项><例句><例句原型>Take notes.</例句原型>"
            "<例句解释>做笔记</例句解释></例句><惯用型原型>of "
            "note</惯用型原型><惯用型解释>著名的</惯用型解释>"
            "</词条>",
            "note/nəʊt: noun{1 笔记；便条 > Take notes. 做笔记} phrase{1 (of note) 著名的}", Form::PowerWord);
        row("MediaWiki", "moon",
            "==English==\n===Etymology===\nFrom {{x|{{y}}}} old words.\n===Noun===\n# The [[Earth|earth]]'s "
            "'''satellite'''.\n#: ''The moon rose.''\n# A month.\n[[File:x.png]]",
            "moon: noun{1 The earth's satellite. > The moon rose.; 2 A month.}", Form::MediaWiki);
        row("Chinese with English examples", "打",
            "[拃] dǎ (动) ①beat; hit: ~门 knock at a door | ~鼓 beat a drum ②fight\n②（介）since: ~今天起 "
            "from "
            "now\n打包 pack up",
            "打/dǎ: verb{1 beat; hit > ~门 knock at a door > ~鼓 beat a drum; 2 fight} preposition{1 since > "
            "~今天起 from now} phrase{1 (打包) pack up}");
        row("Chinese title with parts of speech", "开",
            "开(開) kāi Ⅰ(动)①open: ~门 open the door②start Ⅱ(量)carat\n名\n1 <名> opening",
            "开/kāi: verb{1 open > ~门 open the door; 2 start} 量{1 carat} noun{1 opening}");
        row("Chinese homographs", "行",
            "行 行 [xing2] /to go/see also 行[hang2]/\n行 行 [hang2] /row/CL:個|个[ge4]/",
            "行/xing2: 释义{1 to go; 2 see also 行; 3 row}");
        row("tildes of a Chinese word", "苹果", "píng guǒ\napple:\n~树 apple tree\n这是~。 It is an apple.",
            "苹果/píng guǒ: 释义{1 apple > 这是~。 It is an apple.} phrase{1 (~树) apple tree}");
        row("compounds", "pay", "v. 付款\npay phone 付费电话\n~ back 偿还\n~-day 发薪日\n~ sth 支付",
            "pay: verb{1 付款; 2 (~ sth) 支付} phrase{1 (pay phone) 付费电话; 2 (~ back) 偿还; 3 (~-day) "
            "发薪日}");
        row("definitions below and behind meanings", "calm",
            "adj. 平静的\nfree from wind\nv. 使平静 make less angry\nHe calmed down.\nn. quiet 平静",
            "calm: adjective{1 (free from wind) 平静的} verb{1 (make less angry) 使平静 > He calmed down.} "
            "noun{1 (quiet) 平静}");
        row("codes and letters", "grow",
            "v [Tn, Tn.pr]\n1 (a) get big 长大: How you grow! 你长了! (b) [I] become 变得[C][(+of)]\n2 end "
            "结束 → "
            "stop\n3 (idm 习语) grow up 成年\n~er n.",
            "grow: verb{1 ([Tn, Tn.pr]，get big) 长大 > How you grow! 你长了!; 2 ([I]，become，[C]，[(+of)]) "
            "变得; 3 (end) 结束} phrase{1 (grow up) 成年}");
        row("homographs with other sections", "bow",
            "bow1 [bəu] n. 弓\nIDM bow and arrow 弓箭 in the bow 在弓里\nbow2 /baʊ/ n. 鞠躬\nbow [英 bau "
            "美 "
            "baʊ]\nadj. 弯的\nOPP straight\n复数: bows\n[good] 比较级",
            "bow/bəu: noun{1 弓; 2 鞠躬} adjective{1 弯的} phrase{1 (bow and arrow) 弓箭; 2 (in the "
            "bow) "
            "在弓里}");
        row("marks within a line", "snow",
            "n. 雪【医】雪疗；《口》白粉【v.】下雪 | adv. 多雪地 . <adj.> 多雪的\n1. NOUN 词 "
            "[INFORMAL]\n[snəʊ]",
            "snow/snəʊ: noun{1 雪; 2 (医) 雪疗; 3 (口) 白粉} verb{1 下雪} adverb{1 多雪地} adjective{1 "
            "多雪的} "
            "noun{1 (INFORMAL) 词}");
        row("homographs in a line", "lead", "lead¹ [liːd] v. 带领; lead² [led] n. 铅\n[lɛd] vt. 加铅",
            "lead/liːd: verb{1 带领} noun{1 铅} transitive verb{1 加铅}");
        row("plain phonetics", "set",
            "/set/\nn. 一套\n词性 释义\nSYN group\n◆ a set of keys 一串钥匙\n▸ 意思。",
            "set/set: noun{1 一套 > a set of keys 一串钥匙 > 意思。}");
        row("title and sentence", "eye",
            "n. 眼睛\neye [ai]\nv. [math 数] 看; a. 眼的\n我看见了。 I have seen it.",
            "eye/ai: noun{1 眼睛} verb{1 (math 数) 看} adjective{1 眼的 > 我看见了。 I have seen it.}");
        row("outlines", "drink",
            "一、动词\n1. 喝\n【近义词】sip\n2. 喝酒\nB\nII n\n· 饮料\n· drink milk 喝牛奶",
            "drink: verb{1 喝; 2 喝酒} noun{1 饮料 > drink milk 喝牛奶}");
        row("marks", "fish", "n. [C,U] 鱼\n(pl. fishes) 鱼类\n〈口〉家伙\n（名）鱼肉\n鱼食 [U]",
            "fish: noun{1 ([C,U]) 鱼; 2 (pl. fishes) 鱼类; 3 (口) 家伙; 4 (名) 鱼肉; 5 ([U]) 鱼食}");
        row("terms with numbers", "go",
            "v. (went, gone)\n1. 去\n2. 走 [I]\ngo home\n回家\n[计] ①运行 ②执行\n[反] come",
            "go: verb{1 去; 2 ([I]) 走 > go home 回家; 3 (计) 运行; 4 (计) 执行}");
        row("homographs", "lie",
            "lie1\n/laɪ/ v\n(pt lay, pp lain)\n1. 躺\n2. 位于\nlie2\n/laɪ/ n\n谎言\n变形 复数: lies",
            "lie/laɪ: verb{1 躺; 2 位于} noun{1 谎言}");
        row("syllables", "apple", "ap·ple ［ˈæpl］ n．苹果", "apple/ˈæpl: noun{1 苹果}");
        row("letters in front of labels", "dance", "D.J.[dɑːns] K.K.[dæns]\nA. n. 舞蹈 B. vi. 跳舞",
            "dance/dɑːns: noun{1 舞蹈} intransitive verb{1 跳舞}");
        row("phonetics behind labels", "record", "record\n1. n. ['rekɔːd] 记录 2. v. [rɪˈkɔːd] 录制",
            "record/'rekɔːd: noun{1 记录} verb{1 录制}");
        row("rarer labels", "x", "(US) /eks/\n〈n.〉 甲\nun. 乙\nvbl. 丙\nweb. 丁；戊\nsuff. 己\nna. 庚",
            "x/eks: noun{1 甲; 2 乙} verb{1 丙} 释义{1 (网络) 丁; 2 (网络) 戊} suf.{1 己} 释义{1 庚}");
        row("Latin letters in glosses", "x", "n. T恤衫；X 射线；be 的现在式\nabbr. 脱氧核糖核酸 (=acid)",
            "x: noun{1 T恤衫; 2 X 射线; 3 be 的现在式} abbr.{1 脱氧核糖核酸 (=acid)}");
        row("prose", "moon",
            "The moon is the only natural satellite of the earth. It moves around it in a month. Many people "
            "have looked at it, and some have been there.",
            "moon:");
        row("Chinese prose", "moon",
            "月球是地球唯一的天然卫星，平均距离约三十八万公里。它的表面布满了环形山。人类在二十世纪登上了月球"
            "。",
            "moon:");
        row("prose below a title", "moon",
            "== History ==\nThe moon is old. Nobody knows how old it is, but many have guessed over the "
            "years, and they still do.",
            "moon:", Form::MediaWiki);
    }
    void styles() {
        QFETCH(const Form, form);
        QFETCH(const QString, headword);
        QFETCH(const QString, article);
        const auto entry = article::readArticles(headword, {{{form, article}}});
        QVERIFY(entry);
        QString understood = described(*entry);
        for (const ExampleSentence &example : entry->examples)
            understood += u" | "_s + example.en + u" = "_s + example.cn;
        QTEST(understood, "understood");
    }

    void rawTexts_data() {
        columns<Form, QString, QString>("form", "article", "rawText");
        const auto row = [](const char *name, Form form, const char *article, const char *rawText) {
            QTest::newRow(name) << form << QString::fromUtf8(article) << QString::fromUtf8(rawText);
        };
        row("lists", Form::Html, "<p>a</p><ol><li>b<ul><li>c</li></ul></li><li>d</li></ol>",
            "a\n1. b\n• c\n2. d");
        row("PowerWord", Form::PowerWord,
            "<单词词性>n.</单词词性><解释项><![CDATA[&b{甲}]]></解释项><x>y</x>", "n.\n甲\ny");
        row("wiki", Form::MediaWiki, "== A ==\n# [[b]]\n\n''c'' {{d}}e", "A\n• b\n\nc e");
    }
    void rawTexts() {
        QFETCH(const Form, form);
        QFETCH(const QString, article);
        QTEST(article::readArticles(u"run"_s, {{{form, article}}})->rawText, "rawText");
    }
};

QTEST_GUILESS_MAIN(ArticleStylesTest)
#include "article_styles_test.moc"

#include "dictionaries/english/base_forms.h"
#include "support/test.h"

#include <QHash>

using namespace lexiquill;

namespace {

/// A line of ordinary_words.txt, which explains its format.
struct Headword {
    QString word;
    QStringList partsOfSpeech, origins, forms;
};

QStringList split(const QString &text) {
    return text.split(u' ', Qt::SkipEmptyParts);
}

QList<Headword> ordinaryWords() {
    QList<Headword> words;
    const QString text = QString::fromUtf8(readFile(QFINDTESTDATA("ordinary_words.txt")));
    for (const QString &line : text.split(u'\n')) {
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        const QString description = line.section(u':', 0, 0);
        QStringList parts = split(description.section(u'<', 0, 0));
        const QString word = parts.takeFirst();
        words.append({word, parts, split(description.section(u'<', 1)), split(line.section(u':', 1))});
    }
    return words;
}

using Dictionary = QHash<QString, QStringList>;

/// The base form that the program finds if the dictionary does not contain the word itself.
QString answer(const Dictionary &dictionary, const QString &typed) {
    const auto partsOfSpeechOf = [&](const QString &word) {
        return dictionary.contains(word) ? std::optional(dictionary[word]) : std::nullopt;
    };
    return english::firstKnown(typed, partsOfSpeechOf).value_or(QString());
}

} // namespace

class BaseFormsTest : public QObject {
    Q_OBJECT

    const QList<Headword> m_words = ordinaryWords();

    Dictionary dictionary(bool namesPartsOfSpeech) const {
        Dictionary entries;
        for (const Headword &word : m_words)
            entries[word.word] = namesPartsOfSpeech ? word.partsOfSpeech : QStringList{u"释义"_s};
        return entries;
    }

private Q_SLOTS:
    void formsLeadToTheirWords() {
        QHash<QString, QStringList> wordsOfForm;
        for (const Headword &word : m_words) {
            for (const QString &form : word.forms)
                wordsOfForm[form].append(word.word);
        }
        QVERIFY(wordsOfForm.size() > 6000);
        QStringList wrong;
        for (const bool namesPartsOfSpeech : {true, false}) {
            const Dictionary entries = dictionary(namesPartsOfSpeech);
            for (auto form = wordsOfForm.cbegin(); form != wordsOfForm.cend(); ++form) {
                const QString base = answer(entries, form.key());
                if (!entries.contains(form.key()) && !form->contains(base))
                    wrong.append(form.key() + u" leads to "_s + base);
            }
        }
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(u'\n')));
    }

    void noWordLeadsToAnUnrelatedOne() {
        QVERIFY(m_words.size() > 3000);
        QStringList wrong;
        for (const bool namesPartsOfSpeech : {true, false}) {
            const Dictionary entries = dictionary(namesPartsOfSpeech);
            for (const Headword &word : m_words) {
                // Its own entry does not matter, as a word is never among its bases.
                const QString base = answer(entries, word.word);
                if (!base.isEmpty() && !word.origins.contains(base))
                    wrong.append(word.word + u" leads to "_s + base);
            }
        }
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(u'\n')));
    }

    /// The parts of speech of the only entry; typed words that must find that entry; typed words that must
    /// not.
    void answers_data() {
        addRows(
            "释义 | cats=cat, boxes=box, buses=bus, houses=house, ties=tie, gloves=glove, cities=city |\n"
            "释义 | tomatoes=tomato, quizzes=quiz, knives=knife, leaves=leaf, leaves=leave, axes=axe |\n"
            "释义 | axes=axis, bases=base, bases=basis, analyses=analysis, analyses=analyse, lay=lie |\n"
            "释义 | stopped=stop, called=call, loved=love, tried=try, died=die, freed=free, agreed=agree |\n"
            "释义 | running=run, making=make, lying=lie, studying=study, picnicking=picnic, saw=see |\n"
            "[计] | panicked=panic, paintings=paint, handled=handle, traveled=travel, written=write |\n"
            " ; | bigger=big, happiest=happy, nicer=nice, pricier=pricey, better=good, better=well |\n"
            "? | Children=child, WENT=go, Boxes=box, BOXES=box, Germans=German, TVs=TV, TV's=TV |\n"
            " | James's=James, James'=James, boy’s=boy, girls'=girl, girlsʼ=girls, women's=woman |\n"
            "释义 | | forest=for, seed=see, herring=her, inning=in, toes=to, outs=out, glass=glas\n"
            " | | modest=mode, these=the, shed=she, 's=s, butter=but, offer=off, liver=live, Mars=mar\n"
            "n. | girl's=girl, points of view=point of view, passers-by=passer-by, sit-ins=sit-in |\n"
            "名词 | ice creams=ice cream | worse=bad\nN; pron. | children=child | faster=fast\n数 | "
            "hundreds=hundred | went=go\n"
            "vt. | boxes=box | girl's=girl, children=child\n"
            "transitive verb | stopped=stop | faster=fast\n不及物动词 | went=go | worse=bad\n"
            "n.&v.i. | stopped=stop | bigger=big\nmodal verb | could=can | better=well\n"
            "phrasal verb | gave up=give up, looks after=look after | better off=well off\n"
            "短语 | taking care of=take care of, better off=well off |\na. | worse=bad | boxes=box\n"
            "【形】 | faster=fast | stopped=stop\nadv. | worse=badly, faster=fast | cats=cat\n"
            "prep. | | gave up=give up\n释义; 连词 | | went=go");
    }

    void answers() {
        QFETCH(const QStringList, cells);
        for (const int answered : {1, 2}) {
            for (const QString &pair : cells[answered].split(u", "_s, Qt::SkipEmptyParts)) {
                const QStringList words = pair.split(u'=');
                const Dictionary entry{{words[1], cells[0].split(u"; "_s)}};
                QCOMPARE(answer(entry, words[0]), answered == 1 ? words[1] : QString());
            }
        }
    }

    void anyInputIsSafe() {
        const QStringList pieces =
            u", s, ', ’s,  , -, e, ied, ing, es, est, Q, İ, run, \xd83d"_s.split(u", "_s);
        const qsizetype count = pieces.size();
        for (qsizetype i = 0; i < count * count * count; ++i) {
            const QString word = pieces[i % count] + pieces[i / count % count] + pieces[i / count / count];
            QStringList words;
            for (const auto &form : english::baseForms(word))
                words.append(form.word);
            QVERIFY(words.size() <= 8 && !words.contains(word) && !words.contains(QString()));
            QCOMPARE(words.removeDuplicates(), 0);
        }
        QVERIFY(english::baseForms(QString(100'000, u's')).isEmpty());
    }
};

QTEST_GUILESS_MAIN(BaseFormsTest)

#include "base_forms_test.moc"

#include "platform/linux/stardict/definition_text.h"

#include "platform/linux/stardict/gloss.h"
#include "platform/linux/stardict/markup.h"
#include "platform/linux/stardict/part_of_speech.h"
#include "platform/linux/stardict/phonetics.h"
#include "platform/linux/stardict/senses.h"
#include "platform/linux/stardict/shielding.h"
#include "platform/linux/stardict/text_scan.h"

namespace lexiquill::stardict {

namespace {

/// Drops control characters other than line feed and tab, and invisible ones that only disturb.
QString readable(QByteArrayView bytes) {
    QString text = QString::fromUtf8(bytes);
    text.removeIf([](QChar c) {
        const bool control = c.category() == QChar::Other_Control && c != u'\n' && c != u'\t';
        return control || c == QChar::ByteOrderMark || c == QChar(0x180e);
    });
    return text;
}

/// The headword at the start of a line, with what may follow it there; 0 when the line begins otherwise.
qsizetype headwordLength(const QString &line, const QString &headword) {
    if (!line.startsWith(headword, Qt::CaseInsensitive))
        return 0;
    const QStringView rest = QStringView(line).sliced(headword.size());
    const QStringView next = rest.sliced(skipBlanks(rest, 0));
    if (next.isEmpty())
        return line.size();
    if (isAsciiLetter(rest[0]) || isHan(rest[0]))
        return 0;
    const bool opensArticle = next[0] == u'*' || leadingPhonetic(next, headword).length > 0 ||
                              (rest[0].isSpace() && labelAtStart(next, false));
    return opensArticle ? line.size() - next.size() : 0;
}

/// The lines of an article, without the headword and the phonetic in front.
class ArticleLines {
public:
    explicit ArticleLines(const QString &headword) : m_headword(headword) {}

    void add(const QString &text) {
        QString prepared = text;
        // An example mark begins a line wherever it stands.
        prepared.replace(u'▸', QStringLiteral("\n▸"));
        bool opening = true;
        for (const QStringView raw : QStringView(prepared).tokenize(u'\n')) {
            QString line = raw.toString().simplified();
            if (opening && !line.isEmpty())
                opening = trimOpening(line);
            if (!line.isEmpty())
                m_lines.append(line);
        }
    }

    void takePhonetic(QStringView text) {
        if (m_phonetic.isEmpty())
            m_phonetic = cleanPhonetic(text);
    }

    const QStringList &lines() const { return m_lines; }
    const QString &phonetic() const { return m_phonetic; }

private:
    /// Takes the headword and the phonetic off a line; true while the article has not really begun.
    bool trimOpening(QString &line) {
        line.remove(0, headwordLength(line, m_headword));
        const LeadingPhonetic leading = leadingPhonetic(line, m_headword);
        if (leading.length > 0) {
            takePhonetic(leading.phonetic);
            line = line.sliced(leading.length).trimmed();
        }
        return line.isEmpty();
    }

    QString m_headword;
    QStringList m_lines;
    QString m_phonetic;
};

/// Gathers the articles on one word.
class Definition {
public:
    explicit Definition(const QString &headword) : m_headword(headword) {}

    void add(const std::vector<Field> &fields) {
        ArticleLines article(m_headword);
        // A field of its own is more reliable than what the text begins with.
        for (const char type : {'t', 'y'}) {
            for (const Field &field : fields) {
                if (field.type == type)
                    article.takePhonetic(readable(field.data));
            }
        }
        for (const Field &field : fields)
            addField(field, article);
        if (m_phonetic.isEmpty())
            m_phonetic = article.phonetic();
        addGroups(readSenses(article.lines()));
        m_rawText += article.lines();
    }

    std::optional<QString> line() const {
        const QString body = renderBody();
        QString headword = m_headword.simplified();
        headword.replace(u'|', u'｜');
        if (body.isEmpty() || headword.isEmpty())
            return std::nullopt;
        const QString phonetic = m_phonetic.isEmpty() ? QString() : m_phonetic + QStringLiteral(" | ");
        return headword + QStringLiteral(" | ") + phonetic + body;
    }

private:
    void addField(const Field &field, ArticleLines &article) {
        const auto addMarkup = [&](MarkupKind kind) {
            const PlainArticle plain = readMarkup(readable(field.data), kind, m_headword);
            article.takePhonetic(plain.phonetic);
            article.add(readable(plain.text.toUtf8()));
        };
        switch (field.type) {
        case 'm':
        case 'l':
            // Some converters leave line breaks as the two characters that they were escaped to.
            article.add(readable(field.data).replace(QStringLiteral("\\n"), QStringLiteral("\n")));
            break;
        case 'x':
            addMarkup(MarkupKind::Xdxf);
            break;
        case 'h':
            addMarkup(MarkupKind::Html);
            break;
        case 'g':
            addMarkup(MarkupKind::Pango);
            break;
        default:
            break;
        }
    }

    void addGroups(const QList<SenseGroup> &groups) {
        m_loose += groups.first().senses;
        for (const SenseGroup &group : groups.sliced(1)) {
            if (!m_groups.isEmpty() && m_groups.last().label == group.label)
                m_groups.last().senses += group.senses;
            else
                m_groups.append(group);
        }
    }

    QString renderBody() const {
        QList<SenseGroup> groups = m_groups;
        if (groups.isEmpty())
            groups.append({QString(), m_loose});
        else
            groups.first().senses += m_loose;
        // An article of nothing but a label still says something.
        if (groups.first().senses.isEmpty() && !m_rawText.isEmpty())
            groups.first().senses = splitGlosses(m_rawText.join(u' '));
        QString body;
        for (const SenseGroup &group : groups) {
            if (!group.label.isEmpty() && !group.senses.isEmpty())
                body += group.label + u' ';
            for (qsizetype i = 0; i < group.senses.size(); ++i)
                renderSense(body, group.senses[i], i + 1, group.label);
        }
        return body.simplified();
    }

    static void renderSense(QString &body, const Sense &sense, qsizetype number, const QString &label) {
        constexpr qsizetype lastCircled = 20;
        if (number <= lastCircled)
            body += QChar(static_cast<char16_t>(u'①' + number - 1));
        else
            body += QString::number(number) + u'.';
        body += u' ';
        if (!sense.contexts.isEmpty())
            body += u'(' + shieldedContext(sense.contexts.join(u'，')) + QStringLiteral(") ");
        body += shielded(sense.meaning, label) + u' ';
        for (const QString &example : sense.examples)
            body += QStringLiteral("▸ ") + shielded(example, label) + u' ';
    }

    QString m_headword;
    QString m_phonetic;
    QList<SenseGroup> m_groups;
    QList<Sense> m_loose;
    QStringList m_rawText;
};

} // namespace

std::optional<QString> definitionText(const QString &headword,
                                      const std::vector<std::vector<Field>> &articles) {
    Definition definition(headword);
    for (const std::vector<Field> &fields : articles)
        definition.add(fields);
    return definition.line();
}

} // namespace lexiquill::stardict

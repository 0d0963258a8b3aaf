#pragma once

#include <QRegularExpression>
#include <QString>
#include <QStringList>

/// Reads a definition line the way the program does and writes down what it found, so that tests see what a
/// user would: "headword/phonetic: noun{(context) meaning > example; meaning} verb{...}".
inline QString describeDefinition(const QString &line) {
    static const auto unicode = QRegularExpression::UseUnicodePropertiesOption;
    static const QRegularExpression labels(
        QStringLiteral("\\b(intransitive verb|transitive verb|noun|verb|adjective|adverb|pronoun|preposition|"
                       "conjunction|interjection|phrasal verb|idiom|名|动|形|副|代|数|量|连|介|叹)\\b"),
        unicode | QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression numbers(QStringLiteral("(?:(?<=\\s)|^)([①-⑳]|\\d+[\\.\\s])\\s*"),
                                            unicode);
    static const QRegularExpression context(QStringLiteral("^\\(([^)]*)\\)\\s+"), unicode);
    static const QRegularExpression hidden(QStringLiteral("‹[^›]*›"), unicode);

    const QStringList parts = line.split(u'|');
    QString result = parts.first().trimmed();
    if (parts.size() > 2)
        result += u'/' + parts[1].trimmed();
    result += u':';
    const QString body = parts.mid(parts.size() > 2 ? 2 : 1).join(u'|').trimmed();

    const auto pieces = [](const QString &text, const QRegularExpression &marks, QStringList &names) {
        QStringList found;
        qsizetype start = -1;
        for (const QRegularExpressionMatch &match : marks.globalMatch(text)) {
            if (start >= 0)
                found.append(text.sliced(start, match.capturedStart() - start));
            names.append(match.captured(1));
            start = match.capturedEnd();
        }
        if (start >= 0)
            found.append(text.sliced(start));
        return found;
    };

    QStringList groupNames;
    QStringList groups = pieces(body, labels, groupNames);
    if (groups.isEmpty()) {
        groups = QStringList{body};
        groupNames = QStringList{QStringLiteral("释义")};
    }
    for (qsizetype i = 0; i < groups.size(); ++i) {
        QStringList ignored;
        QStringList senses = pieces(groups[i].trimmed(), numbers, ignored);
        if (senses.isEmpty())
            senses = QStringList{groups[i]};
        QStringList described;
        for (const QString &sense : senses) {
            QString text = sense.trimmed();
            QString label;
            if (const auto match = context.match(text); match.hasMatch()) {
                label = u'(' + match.captured(1) + QStringLiteral(") ");
                text = text.sliced(match.capturedEnd());
            }
            const QStringList examples = text.split(u'▸');
            const QString meaning = QString(examples.first()).remove(hidden).trimmed();
            if (meaning.isEmpty())
                continue;
            described.append(label + meaning);
            for (const QString &example : examples.mid(1))
                described.last() += QStringLiteral(" > ") + example.trimmed();
        }
        result += u' ' + groupNames[i] + u'{' + described.join(QStringLiteral("; ")) + u'}';
    }
    return result;
}

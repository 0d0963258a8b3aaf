#include "starter/source_reader.h"

#include <QFile>
#include <QRegularExpression>
#include <QStringDecoder>

#include <algorithm>
#include <utility>

namespace lexiquill::tools {

namespace {

QRegularExpression pattern(const char *text) {
    return QRegularExpression(QRegularExpression::anchoredPattern(QString::fromUtf8(text)),
                              QRegularExpression::UseUnicodePropertiesOption);
}

} // namespace

bool StarterSourceReader::read(const QString &path) {
    const auto fail = [this, &path](const QString &problem) {
        m_message = QStringLiteral("%1:%2: %3").arg(path, QString::number(m_line), problem);
        return false;
    };
    m_line = 0;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return fail(file.errorString());
    QStringDecoder decoder(QStringDecoder::Utf8, QStringConverter::Flag::Stateless);
    const QString text = decoder(file.readAll());
    if (decoder.hasError())
        return fail(QStringLiteral("not valid UTF-8"));
    const QString problem = readText(text);
    return problem.isEmpty() || fail(problem);
}

QString StarterSourceReader::readText(const QString &text) {
    QStringList lines = text.split(u'\n');
    if (!lines.last().isEmpty())
        return QStringLiteral("no line feed at the end");
    lines.removeLast();
    for (const QString &line : std::as_const(lines)) {
        ++m_line;
        if (QString problem = readLine(line); !problem.isEmpty())
            return problem;
    }
    return endEntry();
}

QString StarterSourceReader::readLine(const QString &line) {
    if (line.isEmpty())
        return endEntry();
    if (line != line.simplified())
        return QStringLiteral("stray blanks, tabs or line ends");
    if (!m_inEntry)
        return readHead(line);
    for (const auto *const key : {u"forms: ", u"also: "}) {
        if (line.startsWith(QStringView(key)))
            return readForms(line.sliced(QStringView(key).size()));
    }
    if (line.startsWith(u'▸'))
        return readExample(line.sliced(1).trimmed());
    return line.at(0).isDigit() ? readSense(line) : readPartOfSpeech(line);
}

QString StarterSourceReader::readHead(const QString &line) {
    static const QRegularExpression head =
        pattern("(\\p{Latin}[\\p{Latin}'. -]*) \\[([a-zæɑɒɔəɜɪʊʌθðʃʒŋɡɑ̃ɔ̃ːˈˌ(), ]+(?:; US "
                "[a-zæɑɔəɜɪʊʌθðʃʒŋɡɑ̃ɔ̃ːˈˌ(), ]+)?)\\] ([1-5])");
    const QRegularExpressionMatch match = head.match(line);
    if (!match.hasMatch())
        return QStringLiteral("expected \"headword [British; US American] level\"");
    StarterEntry entry;
    entry.headword = match.captured(1);
    entry.phonetic = match.captured(2);
    entry.level = match.captured(3).toInt();
    if (m_headwords.contains(entry.headword))
        return QStringLiteral("\"%1\" stands twice").arg(entry.headword);
    m_headwords.insert(entry.headword);
    m_entries.push_back(entry);
    m_inEntry = true;
    return {};
}

QString StarterSourceReader::readForms(const QString &list) {
    static const QRegularExpression word = pattern("\\p{Latin}[\\p{Latin}'. -]*");
    StarterEntry &entry = m_entries.back();
    if (!entry.groups.empty())
        return QStringLiteral("forms behind a part of speech");
    for (const QString &form : list.split(QStringLiteral(", "))) {
        if (!word.match(form).hasMatch() || form == entry.headword)
            return QStringLiteral("\"%1\" is no form").arg(form);
        if (!entry.forms.contains(form))
            entry.forms += form;
    }
    return {};
}

QString StarterSourceReader::readPartOfSpeech(const QString &line) {
    static const QSet<QString> known{
        QStringLiteral("n."),    QStringLiteral("v."),     QStringLiteral("adj."),
        QStringLiteral("adv."),  QStringLiteral("pron."),  QStringLiteral("prep."),
        QStringLiteral("conj."), QStringLiteral("int."),   QStringLiteral("num."),
        QStringLiteral("det."),  QStringLiteral("aux v."), QStringLiteral("modal v."),
        QStringLiteral("abbr."), QStringLiteral("phr v."), QStringLiteral("phr."),
    };
    std::vector<StarterGroup> &groups = m_entries.back().groups;
    if (!known.contains(line))
        return QStringLiteral("neither a part of speech, a sense, an example nor forms");
    if (std::any_of(groups.begin(), groups.end(),
                    [&line](const StarterGroup &group) { return group.label == line; }))
        return QStringLiteral("%1 stands twice in this entry").arg(line);
    if (!groups.empty() && groups.back().senses.empty())
        return QStringLiteral("a part of speech without a sense");
    groups.push_back({.label = line, .senses = {}});
    return {};
}

namespace {

/// The remark in brackets around the glosses of a sense, and the glosses without it: "（轮船的）舱房；客舱",
/// "离弃（某地）". A summary would cut the bracket in two.
std::pair<QString, QString> dividedGlosses(const QString &text) {
    static const QRegularExpression before = pattern("（([^（）]*)）([^；，].*)");
    static const QRegularExpression behind = pattern("([^（）；]+)（([^（）]*)）");
    if (const auto match = before.match(text); match.hasMatch())
        return {match.captured(1), match.captured(2)};
    if (const auto match = behind.match(text); match.hasMatch())
        return {match.captured(2), match.captured(1)};
    return {QString(), text};
}

} // namespace

QString StarterSourceReader::readSense(const QString &line) {
    static const QRegularExpression sense =
        pattern("(\\d{1,2})\\. (\\[[A-Za-z, +]+\\] )?(\\([^()\\p{Han}]+\\) "
                ")?([^()\\[\\]A-Za-z0-9,;:!?▸|]*\\p{Han}[^()\\[\\]A-Za-z0-9,;:!?▸|]*)");
    std::vector<StarterGroup> &groups = m_entries.back().groups;
    if (groups.empty())
        return QStringLiteral("a sense before the first part of speech");
    const QRegularExpressionMatch match = sense.match(line);
    if (!match.hasMatch())
        return QStringLiteral("expected \"1. [grammar] (pattern) \" and Chinese glosses separated by \"；\"");
    std::vector<StarterSense> &senses = groups.back().senses;
    const auto [remark, glosses] = dividedGlosses(match.captured(4));
    if (match.captured(1).toULongLong() != senses.size() + 1)
        return QStringLiteral("expected sense %1").arg(senses.size() + 1);
    for (const StarterSense &other : senses) {
        if (other.glosses == glosses && other.remark == remark)
            return QStringLiteral("the glosses of an earlier sense");
    }
    senses.push_back({.grammar = match.captured(2).trimmed(),
                      .pattern = match.captured(3).trimmed().remove(u'(').remove(u')'),
                      .remark = remark,
                      .glosses = glosses,
                      .examples = {}});
    return {};
}

QString StarterSourceReader::readExample(const QString &line) {
    static const QRegularExpression example =
        pattern("[^\\p{Han}▸|]+[.!?][\"'’”)]* [“《‘（]?[\\p{Han}\\p{L}\\d][^▸|]*[。！？…][”’》）]?");
    std::vector<StarterGroup> &groups = m_entries.back().groups;
    if (groups.empty() || groups.back().senses.empty())
        return QStringLiteral("an example before the first sense");
    if (!example.match(line).hasMatch())
        return QStringLiteral("expected \"▸ \", an English sentence, a blank and its translation");
    groups.back().senses.back().examples += line;
    return {};
}

QString StarterSourceReader::endEntry() {
    if (!m_inEntry)
        return QStringLiteral("more than one blank line");
    m_inEntry = false;
    const StarterEntry &entry = m_entries.back();
    if (entry.groups.empty() || entry.groups.back().senses.empty())
        return QStringLiteral("the entry ends without a sense");
    const bool hasExample =
        std::any_of(entry.groups.begin(), entry.groups.end(), [](const StarterGroup &group) {
            return std::any_of(group.senses.begin(), group.senses.end(),
                               [](const StarterSense &sense) { return !sense.examples.isEmpty(); });
        });
    return hasExample ? QString() : QStringLiteral("the entry has no example");
}

} // namespace lexiquill::tools

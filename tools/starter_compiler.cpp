#include "stardict_writer.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QStringDecoder>
#include <QTextStream>

#include <cstdio>
#include <utility>
#include <vector>

// Compiles the readable source of the starter dictionary into StarDict files. Entries are separated by one
// blank line; an entry is "headword [ipa]", then for every part of speech a line such as "n.", its numbered
// senses and the examples below them.

using lexiquill::tools::StarDictEntry;

namespace {

QRegularExpression pattern(const QString &text) {
    return QRegularExpression(QRegularExpression::anchoredPattern(text),
                              QRegularExpression::UseUnicodePropertiesOption);
}

/// Reads the source line by line and stops at the first line that violates the format.
class SourceReader {
public:
    /// False when the source has an error; message() then says where and why.
    bool read(const QString &text) {
        const QStringList lines = text.split(u'\n');
        qsizetype count = lines.size();
        if (count > 0 && lines.last().isEmpty())
            --count;
        for (qsizetype i = 0; i < count; ++i) {
            m_line = i + 1;
            if (const QString problem = readLine(lines[i]); !problem.isEmpty())
                return fail(problem);
        }
        if (m_entries.empty())
            return fail(QStringLiteral("no entries"));
        if (const QString problem = endEntry(); !problem.isEmpty())
            return fail(problem);
        return true;
    }

    const QString &message() const { return m_message; }
    std::vector<StarDictEntry> takeEntries() { return std::move(m_entries); }

private:
    bool fail(const QString &problem) {
        m_message = QStringLiteral("line %1: %2").arg(m_line).arg(problem);
        return false;
    }

    QString readLine(const QString &line) {
        if (line.isEmpty())
            return endEntry();
        if (line != line.simplified())
            return QStringLiteral("stray blanks, tabs or line ends");
        if (line.contains(u'|'))
            return QStringLiteral("a vertical bar");
        if (!m_inEntry)
            return readHead(line);
        if (line.startsWith(QStringLiteral("▸")))
            return readExample(line);
        if (line.at(0).isDigit())
            return readSense(line);
        return readPartOfSpeech(line);
    }

    QString readHead(const QString &line) {
        static const QRegularExpression head =
            pattern(QStringLiteral("([A-Za-z][A-Za-z' -]*) (\\[[^\\[\\]]+\\])"));
        static const QRegularExpression transcription =
            pattern(QStringLiteral("\\[[a-zæɑɒɔəɜɪʊʌθðʃʒŋɡːˈˌ(), ]+\\]"));
        const QRegularExpressionMatch match = head.match(line);
        if (!match.hasMatch())
            return QStringLiteral("expected \"headword [transcription]\"");
        if (!transcription.match(match.captured(2)).hasMatch())
            return QStringLiteral("unusual character in the transcription");
        const QString word = match.captured(1);
        if (m_seen.contains(word))
            return QStringLiteral("\"%1\" stands twice").arg(word);
        m_seen.insert(word);
        m_entries.push_back(lexiquill::tools::plainEntry(word.toUtf8(), match.captured(2).toUtf8()));
        m_inEntry = true;
        return {};
    }

    QString readPartOfSpeech(const QString &line) {
        static const QSet<QString> known{
            QStringLiteral("n."),    QStringLiteral("v."),    QStringLiteral("adj."),
            QStringLiteral("adv."),  QStringLiteral("pron."), QStringLiteral("prep."),
            QStringLiteral("conj."), QStringLiteral("int."),  QStringLiteral("num."),
        };
        if (!known.contains(line))
            return QStringLiteral("neither a part of speech, a sense nor an example");
        if (m_partsOfSpeech.contains(line))
            return QStringLiteral("%1 stands twice in this entry").arg(line);
        if (!m_partsOfSpeech.isEmpty() && m_senses == 0)
            return QStringLiteral("a part of speech without a sense");
        m_partsOfSpeech.insert(line);
        m_senses = 0;
        append(line);
        return {};
    }

    QString readSense(const QString &line) {
        static const QRegularExpression sense = pattern(
            QStringLiteral("(\\d{1,2})\\. (\\([^()]+\\) )?[^()a-zA-Z0-9,;‹›▸]*\\p{Han}[^()a-zA-Z0-9,;‹›▸]*"));
        if (m_partsOfSpeech.isEmpty())
            return QStringLiteral("a sense before the first part of speech");
        const QRegularExpressionMatch match = sense.match(line);
        if (!match.hasMatch())
            return QStringLiteral("expected \"1. \" and Chinese glosses separated by \"；\"");
        if (match.captured(1).toInt() != m_senses + 1)
            return QStringLiteral("expected sense %1").arg(m_senses + 1);
        ++m_senses;
        append(line);
        return {};
    }

    QString readExample(const QString &line) {
        static const QRegularExpression example =
            pattern(QStringLiteral("▸ [^\\p{Han}▸]+[.!?][\"'’”)]* [“《‘]?\\p{Han}[^▸]*[。！？…][”’》]?"));
        if (m_senses == 0)
            return QStringLiteral("an example before the first sense");
        if (!example.match(line).hasMatch())
            return QStringLiteral("expected \"▸ \", an English sentence, a blank and its translation");
        append(line);
        return {};
    }

    QString endEntry() {
        if (!m_inEntry)
            return QStringLiteral("more than one blank line");
        if (m_senses == 0)
            return QStringLiteral("the entry ends without a sense");
        m_inEntry = false;
        m_senses = 0;
        m_partsOfSpeech.clear();
        return {};
    }

    void append(const QString &line) { m_entries.back().fields.front().data += '\n' + line.toUtf8(); }

    std::vector<StarDictEntry> m_entries;
    QSet<QString> m_seen;
    QSet<QString> m_partsOfSpeech;
    QString m_message;
    qsizetype m_line = 0;
    int m_senses = 0;
    bool m_inEntry = false;
};

int complain(const QString &text) {
    QTextStream(stderr) << text << Qt::endl;
    return 1;
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 3)
        return complain(QStringLiteral("usage: starter_compiler SOURCE OUTPUT_DIR"));
    const QString sourcePath = QFile::decodeName(argv[1]);
    const QString outputPath = QFile::decodeName(argv[2]);
    QFile file(sourcePath);
    if (!file.open(QIODevice::ReadOnly))
        return complain(QStringLiteral("%1: %2").arg(sourcePath, file.errorString()));
    QStringDecoder decoder(QStringDecoder::Utf8, QStringConverter::Flag::Stateless);
    const QString text = decoder(file.readAll());
    if (decoder.hasError())
        return complain(QStringLiteral("%1: not valid UTF-8").arg(sourcePath));

    SourceReader reader;
    if (!reader.read(text))
        return complain(QStringLiteral("%1: %2").arg(sourcePath, reader.message()));
    if (!QDir().mkpath(outputPath))
        return complain(QStringLiteral("%1: cannot be created").arg(outputPath));
    lexiquill::tools::StarDictOptions options;
    options.bookName = "Lexiquill 英汉入门词典";
    options.dictzip = true;
    const QString problem = lexiquill::tools::writeStarDict(outputPath, QStringLiteral("lexiquill-starter"),
                                                            reader.takeEntries(), options);
    return problem.isEmpty() ? 0 : complain(problem);
}

#include "stardict_writer.h"
#include "starter/chinese_index.h"
#include "starter/source_reader.h"

#include <QDir>
#include <QFile>
#include <QMap>
#include <QTextStream>

#include <algorithm>

// Compiles the readable source of the starter dictionary into two dictionaries in StarDict's format: the
// English–Chinese one, and a Chinese–English one that is made from it; and into the list of how common its
// words are.

using namespace lexiquill::tools;

namespace {

int complain(const QString &text) {
    QTextStream(stderr) << text << Qt::endl;
    return 1;
}

/// The article of an entry, as its source has it.
StarDictEntry compiled(const StarterEntry &entry) {
    QString text;
    for (const StarterGroup &group : entry.groups) {
        text += group.label + u'\n';
        int number = 0;
        for (const StarterSense &sense : group.senses) {
            text += QString::number(++number) + QStringLiteral(". ");
            if (!sense.grammar.isEmpty())
                text += sense.grammar + u' ';
            if (!sense.pattern.isEmpty())
                text += u'(' + sense.pattern + QStringLiteral(") ");
            text += sense.glosses + u'\n';
            for (const QString &example : sense.examples)
                text += QStringLiteral("▸ ") + example + u'\n';
        }
    }
    StarDictEntry result{.word = entry.headword.toUtf8(),
                         .fields = {{'t', entry.phonetic.toUtf8()}, {'m', text.toUtf8()}},
                         .synonyms = {}};
    for (const QString &form : entry.forms)
        result.synonyms.push_back(form.toUtf8());
    return result;
}

/// A line for each word: its folded form, a tab, and its level.
QByteArray wordRanks(const std::vector<StarterEntry> &entries) {
    QMap<QByteArray, int> levels;
    for (const StarterEntry &entry : entries) {
        QString key = entry.headword.normalized(QString::NormalizationForm_KD).toCaseFolded();
        key.removeIf([](QChar c) { return c.category() == QChar::Mark_NonSpacing; });
        int &level = levels[key.toUtf8()];
        level = level == 0 ? entry.level : std::min(level, entry.level);
    }
    QByteArray text;
    for (auto level = levels.cbegin(); level != levels.cend(); ++level)
        text += level.key() + '\t' + QByteArray::number(level.value()) + '\n';
    return text;
}

} // namespace

int main(int argc, char **argv) {
    if (argc < 3)
        return complain(QStringLiteral("usage: starter_compiler OUTPUT_DIR SOURCE..."));
    const QString output = QFile::decodeName(argv[1]);
    StarterSourceReader reader;
    for (int i = 2; i < argc; ++i) {
        if (!reader.read(QFile::decodeName(argv[i])))
            return complain(reader.message());
    }
    if (!QDir().mkpath(output))
        return complain(QStringLiteral("%1: cannot be created").arg(output));
    QFile ranks(QDir(output).filePath(QStringLiteral("word-ranks.txt")));
    const QByteArray rankText = wordRanks(reader.entries());
    if (!ranks.open(QIODevice::WriteOnly) || ranks.write(rankText) != rankText.size() || !ranks.flush())
        return complain(QStringLiteral("%1: cannot be written").arg(ranks.fileName()));
    std::vector<StarDictEntry> english;
    for (const StarterEntry &entry : reader.entries())
        english.push_back(compiled(entry));
    StarDictOptions options;
    options.dictzip = true;
    options.bookName = "Lexiquill 英汉入门词典";
    options.typeSequence = "tm";
    QString problem = writeStarDict(output, QStringLiteral("lexiquill-starter"), std::move(english), options);
    options.bookName = "Lexiquill 汉英入门词典";
    options.typeSequence = "m";
    if (problem.isEmpty())
        problem = writeStarDict(output, QStringLiteral("lexiquill-starter-chinese"),
                                chineseIndex(reader.entries()), options);
    return problem.isEmpty() ? 0 : complain(problem);
}

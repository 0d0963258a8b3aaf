#include "cli/terminal.h"

#include "support/text.h"

#include <algorithm>
#include <cstdio>

namespace lexiquill::terminal {

namespace {

constexpr qsizetype longestAnswer = 4096;

bool steersTerminal(QChar character) {
    return character.category() == QChar::Other_Control && character != u'\n' && character != u'\t';
}

void write(QString text) {
    std::replace_if(text.begin(), text.end(), steersTerminal, QChar(QChar::ReplacementCharacter));
    const QByteArray bytes = text.toUtf8();
    // Ignore errors: the work goes on even if nobody reads the output.
    [[maybe_unused]] const std::size_t written =
        std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout);
}

} // namespace

void printLine(const QString &text) {
    // One write per line, because other threads print lines, too.
    write(text + u'\n');
}

void printLine(std::initializer_list<QStringView> pieces) {
    QString line;
    for (const QStringView piece : pieces)
        line += piece;
    printLine(line);
}

void printPrompt(const QString &text) {
    write(text);
    std::fflush(stdout);
}

std::optional<QString> readAnswer() {
    QByteArray line;
    qsizetype pendingBlanks = 0;
    bool isTooLong = false;
    int character = std::getc(stdin);
    if (character == EOF)
        return std::nullopt;
    for (; character != EOF && character != '\n'; character = std::getc(stdin)) {
        if (character == ' ' || character == '\t') {
            pendingBlanks += line.isEmpty() ? 0 : 1;
            continue;
        }
        isTooLong = isTooLong || line.size() + pendingBlanks >= longestAnswer;
        if (!isTooLong)
            line += QByteArray(pendingBlanks, ' ') + static_cast<char>(character);
        pendingBlanks = 0;
    }
    if (line.endsWith('\r') && pendingBlanks == 0)
        line.chop(1);
    // Marks a cut line, so that it does not equal any real word.
    if (isTooLong)
        line += "…";
    return trimmedOfBlanks(QString::fromUtf8(line)).toString();
}

} // namespace lexiquill::terminal

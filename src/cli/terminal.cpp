#include "cli/terminal.h"

#include <algorithm>
#include <cstdio>

namespace lexiquill::terminal {

namespace {

constexpr qsizetype longestAnswer = 4096;

/// Words come from files and servers; none of them may steer the terminal.
bool steersTerminal(QChar character) {
    return character.category() == QChar::Other_Control && character != u'\n' && character != u'\t';
}

void write(QString text) {
    std::replace_if(text.begin(), text.end(), steersTerminal, QChar(QChar::ReplacementCharacter));
    const QByteArray bytes = text.toUtf8();
    // A reader that has gone away is no reason to stop working.
    [[maybe_unused]] const std::size_t written =
        std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout);
}

} // namespace

void printLine(const QString &text) {
    write(text);
    std::fputc('\n', stdout);
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

std::optional<QString> readLine() {
    QByteArray line;
    bool isTooLong = false;
    int character = std::getc(stdin);
    if (character == EOF)
        return std::nullopt;
    for (; character != EOF && character != '\n'; character = std::getc(stdin)) {
        isTooLong = isTooLong || line.size() == longestAnswer;
        if (!isTooLong)
            line += static_cast<char>(character);
    }
    if (line.endsWith('\r'))
        line.chop(1);
    // Marks a cut line as different from every complete one that might be looked for.
    if (isTooLong)
        line += "…";
    return QString::fromUtf8(line);
}

} // namespace lexiquill::terminal

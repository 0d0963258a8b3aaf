#pragma once

#include <QString>
#include <QStringView>

#include <initializer_list>
#include <optional>

namespace lexiquill::terminal {

/// Prints text and a line feed as UTF-8, in every locale. Control characters other than line feed and tab are
/// replaced with U+FFFD, because words may come from outside and must not control the terminal.
void printLine(const QString &text);
/// The same for a line given in pieces.
void printLine(std::initializer_list<QStringView> pieces);

/// Prints text without a line feed and flushes the output.
void printPrompt(const QString &text);

/// Reads one line and returns it without its line break and without blanks and tabs at both ends. A line of
/// more than 4096 bytes is cut and ends with "…". No value at the end of input.
std::optional<QString> readAnswer();

} // namespace lexiquill::terminal

#pragma once

#include <QString>
#include <QStringView>

#include <initializer_list>
#include <optional>

namespace lexiquill::terminal {

/// Prints text as UTF-8, whatever the locale, with a line feed behind it. Control characters other than line
/// feed and tab come out as U+FFFD, for words may come from outside and must not steer the terminal.
void printLine(const QString &text);
/// The same for a line given in pieces.
void printLine(std::initializer_list<QStringView> pieces);

/// Prints text without a line feed and makes it visible at once.
void printPrompt(const QString &text);

/// Reads one line and gives it without its line break and without blanks and tabs at both ends. A line too
/// long for any answer is read to its end, but only its beginning is kept. Nothing at the end of input.
std::optional<QString> readAnswer();

} // namespace lexiquill::terminal

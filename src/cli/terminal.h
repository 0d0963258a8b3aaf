#pragma once

#include <QString>
#include <QStringView>

#include <initializer_list>
#include <optional>

namespace lexiquill::terminal {

/// Prints text as UTF-8, whatever the locale, with a line feed behind it.
void printLine(const QString &text);
/// The same for a line given in pieces.
void printLine(std::initializer_list<QStringView> pieces);

/// Prints text without a line feed and makes it visible at once.
void printPrompt(const QString &text);

/// Reads one line without its line break. Only so much of a line is kept as an answer can be long; the rest
/// is read and dropped. Nothing at the end of input.
std::optional<QString> readLine();

} // namespace lexiquill::terminal

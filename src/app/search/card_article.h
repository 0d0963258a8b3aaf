#pragma once

#include <QString>

#include <stop_token>

namespace lexiquill {

class DictionaryShelf;

/// The formatted article from which a definition without structure was made, as rich text for the screens.
/// Empty when no dictionary has it. Takes a moment; may be called on any thread.
QString articleOf(DictionaryShelf &shelf, const QString &word, const QString &rawDefinition,
                  const std::stop_token &stop);

} // namespace lexiquill

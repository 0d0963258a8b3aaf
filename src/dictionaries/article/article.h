#pragma once

#include <QString>

#include <vector>

namespace lexiquill::article {

/// How a part of an article is written.
enum class Form {
    Text,     ///< plain lines
    Phonetic, ///< nothing but a transcription
    Xdxf,
    Html,
    Pango,
};

/// What a dictionary says on a word, as it stands in its file.
struct Part {
    Form form = Form::Text;
    QString text;
};
using Article = std::vector<Part>;

} // namespace lexiquill::article

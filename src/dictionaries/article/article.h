#pragma once

#include <QString>

#include <vector>

namespace lexiquill::article {

/// The format of a part of an article.
enum class Form {
    Text,     ///< plain lines
    Phonetic, ///< only a transcription
    Xdxf,
    Html,
    Pango,
    PowerWord, ///< XML with elements such as 解释项
    MediaWiki,
    WordNet, ///< the text of WordNet, or its elements
};

/// A part of a dictionary's article on a word, as stored in its file.
struct Part {
    Form form = Form::Text;
    QString text;
};
using Article = std::vector<Part>;

} // namespace lexiquill::article

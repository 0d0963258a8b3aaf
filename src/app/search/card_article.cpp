#include "app/search/card_article.h"

#include "app/search/article_markup.h"
#include "dictionaries/dictionary_shelf.h"

namespace lexiquill {

QString articleOf(DictionaryShelf &shelf, const QString &word, const QString &rawDefinition,
                  const std::stop_token &stop) {
    for (const DictionaryShelf::Answer &answer : shelf.answers(word, stop)) {
        if (answer.entry.rawText == rawDefinition)
            return shownArticle(shelf.formattedArticle(answer.path, word), answer.path);
    }
    return {};
}

} // namespace lexiquill

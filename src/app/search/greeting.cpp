#include "app/search/greeting.h"

#include "app/shell/services.h"
#include "settings/user_defaults.h"
#include "storage/storage_manager.h"

#include <algorithm>

namespace lexiquill {

namespace {

const QString greetedKey = QStringLiteral("lexiquill_greeted");
/// A new wordbook begins with a few words that nobody has looked up.
constexpr qsizetype mostFirstWords = 10;

bool isNew(const QList<WordRecord> &words) {
    return words.size() <= mostFirstWords && std::ranges::all_of(words, [](const WordRecord &word) {
               return word.searchCount <= 1 && word.reviewHistory.isEmpty();
           });
}

} // namespace

Greeting::Greeting(QObject *parent)
    : QObject(parent),
      m_services(Services::current()),
      m_isShown(m_services.defaults.string(greetedKey).isEmpty() && isNew(m_services.storage.words())) {}

void Greeting::dismiss() {
    if (!m_isShown)
        return;
    m_isShown = false;
    m_services.defaults.set(greetedKey, QStringLiteral("true"));
    Q_EMIT isShownChanged();
}

} // namespace lexiquill

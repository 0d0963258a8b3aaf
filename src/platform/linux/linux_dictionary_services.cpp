#include "platform/linux/linux_dictionary_services.h"

#include "platform/linux/stardict/definition_text.h"
#include "platform/linux/stardict/dictionary.h"
#include "platform/linux/stardict/dictionary_finder.h"
#include "platform/linux/stardict/inflection.h"
#include "support/text.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <QStandardPaths>

#include <algorithm>
#include <chrono>
#include <iterator>
#include <utility>

namespace lexiquill {

namespace {

bool isChineseEnglish(const QString &bookName) {
    static const QStringList marks{
        QStringLiteral("chinese"), QStringLiteral("英汉"), QStringLiteral("汉英"), QStringLiteral("英漢"),
        QStringLiteral("漢英"),    QStringLiteral("英中"), QStringLiteral("中英"), QStringLiteral("双解"),
        QStringLiteral("雙解"),    QStringLiteral("英华"), QStringLiteral("華英"), QStringLiteral("英華"),
        QStringLiteral("华英"),
    };
    return std::any_of(marks.begin(), marks.end(), [&bookName](const QString &mark) {
        return bookName.contains(mark, Qt::CaseInsensitive);
    });
}

std::optional<QString> definitionFrom(stardict::Dictionary &dictionary, const QString &word) {
    const auto answer = dictionary.find(word);
    if (!answer)
        return std::nullopt;
    std::vector<std::vector<stardict::Field>> articles;
    articles.reserve(answer->articles.size());
    for (const QByteArray &article : answer->articles)
        articles.push_back(stardict::splitArticle(article, answer->typeSequence));
    return stardict::definitionText(answer->headword, articles);
}

constexpr std::chrono::milliseconds maxSimilarTime{330};

void addOnce(QStringList &words, const QString &word, QSet<QString> &seen, qsizetype limit) {
    const QString key = word.toCaseFolded();
    if (words.size() >= limit || seen.contains(key))
        return;
    seen.insert(key);
    words += word;
}

} // namespace

LinuxDictionaryServices::LinuxDictionaryServices(QStringList directories, QStringList bundledDirectories,
                                                 QString cacheDirectory)
    : m_directories(std::move(directories)),
      m_bundledDirectories(std::move(bundledDirectories)),
      m_cacheDirectory(std::move(cacheDirectory)) {}

LinuxDictionaryServices::~LinuxDictionaryServices() = default;

std::optional<QString> LinuxDictionaryServices::copyTextDefinition(const QString &word) {
    const QString typed = word.simplified();
    if (typed.isEmpty())
        return std::nullopt;
    const std::lock_guard lock(m_definitions.mutex);
    scan(m_definitions);
    // "Apple!" or full-width letters as an input method leaves them mean the word all the same.
    const QString normalized = typed.normalized(QString::NormalizationForm_KC);
    const QString plain = trimmedOfPunctuation(normalized, true).toString();
    QStringList forms{typed};
    if (!plain.isEmpty() && plain != typed)
        forms += plain;
    forms += stardict::baseForms(forms.last());
    for (const QString &form : std::as_const(forms)) {
        if (auto text = firstAnswer(form))
            return text;
    }
    return std::nullopt;
}

std::optional<QString> LinuxDictionaryServices::firstAnswer(const QString &word) {
    for (const auto &dictionary : m_definitions.dictionaries) {
        if (auto text = definitionFrom(*dictionary, word))
            return text;
    }
    return std::nullopt;
}

QStringList LinuxDictionaryServices::headwordsStartingWith(const QString &prefix, qsizetype limit,
                                                           const std::stop_token &stop) {
    const QByteArray typed = prefix.simplified().toUtf8();
    QStringList words;
    if (typed.isEmpty())
        return words;
    const std::lock_guard lock(m_headwords.mutex);
    scan(m_headwords);
    QSet<QString> seen;
    for (const auto &dictionary : m_headwords.dictionaries) {
        if (stop.stop_requested() || words.size() >= limit)
            break;
        const stardict::Headwords *headwords = dictionary->headwords();
        if (headwords == nullptr)
            continue;
        for (const QString &word : headwords->startingWith(typed, static_cast<size_t>(limit)))
            addOnce(words, word, seen, limit);
    }
    return words;
}

QStringList LinuxDictionaryServices::headwordsSimilarTo(const QString &word, qsizetype limit,
                                                        const std::stop_token &stop) {
    const auto deadline = std::chrono::steady_clock::now() + maxSimilarTime;
    const QString typed = word.simplified();
    std::vector<stardict::SimilarWord> found;
    {
        const std::lock_guard lock(m_headwords.mutex);
        scan(m_headwords);
        for (const auto &dictionary : m_headwords.dictionaries) {
            if (stop.stop_requested() || std::chrono::steady_clock::now() > deadline)
                break;
            if (const stardict::Headwords *headwords = dictionary->headwords()) {
                auto some = headwords->similarTo(typed, deadline, stop);
                std::move(some.begin(), some.end(), std::back_inserter(found));
            }
        }
    }
    std::stable_sort(found.begin(), found.end());
    QStringList words;
    QSet<QString> seen;
    for (const stardict::SimilarWord &each : found)
        addOnce(words, each.word, seen, limit);
    return words;
}

void LinuxDictionaryServices::scan(Shelf &shelf) const {
    if (std::exchange(shelf.isScanned, true))
        return;
    QSet<QString> seen;
    const auto add = [this, &seen, &shelf](const QStringList &directories) {
        for (const QString &directory : directories) {
            for (const QString &path : stardict::findDictionaries(directory)) {
                const QString real = QFileInfo(path).canonicalFilePath();
                if (seen.contains(real))
                    continue;
                seen.insert(real);
                if (auto dictionary = stardict::Dictionary::fromIfo(path, m_cacheDirectory))
                    shelf.dictionaries.push_back(std::move(dictionary));
            }
        }
    };
    add(m_directories);
    add(m_bundledDirectories);
    std::stable_partition(shelf.dictionaries.begin(), shelf.dictionaries.end(),
                          [](const auto &dictionary) { return isChineseEnglish(dictionary->bookName()); });
}

QList<DictionaryServices::ActiveDictionary> LinuxDictionaryServices::activeDictionaries() {
    const std::lock_guard lock(m_headwords.mutex);
    scan(m_headwords);
    QList<ActiveDictionary> active;
    for (const auto &dictionary : m_headwords.dictionaries)
        active += ActiveDictionary{.name = dictionary->bookName(),
                                   .wordCount = dictionary->wordCount(),
                                   .path = dictionary->ifoPath()};
    return active;
}

QStringList LinuxDictionaryServices::directoryContents(const QString &path) {
    // QDir would take an empty path for the current directory.
    if (path.isEmpty())
        return {};
    return QDir(path).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

void LinuxDictionaryServices::setPersistentDomain(const QString &domain, const QString &key,
                                                  const QStringList &values) {
    Q_UNUSED(domain)
    Q_UNUSED(key)
    Q_UNUSED(values)
}

QStringList LinuxDictionaryServices::standardDirectories() {
    return {
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
            QStringLiteral("/stardict/dic"),
        QDir::homePath() + QStringLiteral("/.stardict/dic"),
        QStringLiteral("/usr/share/stardict/dic"),
    };
}

} // namespace lexiquill

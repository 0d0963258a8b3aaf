#include "dictionaries/dictionary.h"
#include "support/files.h"
#include "support/test.h"

using namespace lexiquill;

namespace {

/// Two entries "a", of which the first leads to "b". Reading it removes the dictionary.
class VanishingReader : public DictionaryReader {
public:
    explicit VanishingReader(QString path) : m_path(std::move(path)) {}

    DictionaryProblem readHeadwords(HeadwordSink &sink) override {
        sink.addWord("a", {0, 1});
        sink.addWord("a", {1, 1});
        sink.addWord("b", {2, 1});
        return DictionaryProblem::None;
    }
    std::optional<StoredArticle> article(const ArticlePlace &place) override {
        if (isWanted && place.offset == 0)
            QFile::remove(m_path);
        const article::Article text{{article::Form::Text, u"n. 词"_s + QString::number(place.offset)}};
        return place.offset == 0 ? StoredArticle{{}, u"b"_s} : StoredArticle{text, {}};
    }

    static inline bool isWanted = false;

private:
    QString m_path;
};

} // namespace

class DictionaryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void filesVanishWhileLinksAreFollowed() {
        const QTemporaryDir directory;
        const QString path = directory.filePath(u"d"_s);
        writeFile(path, "x");
        const auto open = [](const QString &file) -> OpenedReader {
            if (!QFile::exists(file))
                return {nullptr, DictionaryProblem::Unreadable};
            return {std::make_unique<VanishingReader>(file)};
        };
        const DictionaryFormat format{.name = u"Vanishing"_s,
                                      .suffix = {},
                                      .files = [](const QString &file) { return QStringList(file); },
                                      .describe = [](const QString &) { return DictionaryDescription(); },
                                      .open = open};
        Dictionary dictionary(format, path, directory.filePath(u"cache"_s));
        QCOMPARE(dictionary.prepare(), DictionaryProblem::None);
        VanishingReader::isWanted = true;
        QCOMPARE(dictionary.articles(u"a"_s).articles.size(), size_t(2));
        QVERIFY(dictionary.articles(u"a"_s).articles.empty());
        QCOMPARE(dictionary.knownProblem(), DictionaryProblem::Unreadable);
    }
};

QTEST_GUILESS_MAIN(DictionaryTest)
#include "dictionary_test.moc"

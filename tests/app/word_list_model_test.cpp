#include "app/test_services.h"
#include "app/wordbook/review_history.h"
#include "app/wordbook/word_list_model.h"
#include "model/record_codec.h"
#include "support/test.h"

#include <QAbstractItemModelTester>

using namespace lexiquill;

namespace {

const Instant now = Instant::now();

WordRecord record(const char *word, int daysAgo, MemoryStatus status, const char *gloss,
                  const char *note = "") {
    const Instant date = now.adding(-daysAgo * secondsPerDay);
    return {
        .word = QString::fromUtf8(word),
        .conciseSummary = u"n. "_s + QString::fromUtf8(gloss),
        .posGroups = {PartOfSpeechGroup::named(u"noun"_s, {{.chineseMeaning = QString::fromUtf8(gloss)}})},
        .rawDefinition = {},
        .examples = {},
        .firstSearchedDate = date.adding(-(40 - daysAgo) * 60.0),
        .lastSearchedDate = date,
        .searchCount = daysAgo * 7 % 5 + 1,
        .nextReviewDate = now.adding((daysAgo - 2) * secondsPerDay),
        .isMastered = status == MemoryStatus::Mastered,
        .memoryStatus = status,
        .reviewHistory = {},
        .userNotes = QString::fromUtf8(note)};
}

QByteArray wordbook() {
    return encodeWordRecords(
        {record("banana", 0, MemoryStatus::New, "香蕉"),
         record("Apple", 1, MemoryStatus::Learning, "苹果；苹果树", "An APPLE a day #fruit"),
         record("élan", 3, MemoryStatus::Reviewing, "活力"),
         record("cherry", 4, MemoryStatus::Mastered, "樱桃",
                "see apple #Fruit #red https://example.com/#top")},
        JsonForm::File);
}

/// The model of a wordbook, with a tester that checks its signals.
struct Place {
    TestServices services{wordbook()};
    WordListModel model{services.storage()};
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::QtTest};

    StorageManager &storage() { return services.storage(); }
    QByteArray words(bool onlySelected = false) const {
        QByteArrayList list;
        for (int row = 0; row < model.count(); ++row) {
            if (!onlySelected || text(row, WordListModel::SelectedRole) == "true"_L1)
                list += text(row, WordListModel::WordRole).toUtf8();
        }
        return list.join(' ');
    }
    QString text(int row, int role) const { return model.index(row).data(role).toString(); }
    void search(const char *word) {
        storage().addOrUpdateSearch({.headword = QString::fromUtf8(word), .posGroups = {}, .rawText = {}});
    }
};

} // namespace

class WordListModelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void choices_data() {
        // text | filter | order | words
        addRows("|全部|最近查询|banana Apple élan cherry\n"
                "|全部|下次复习|banana Apple élan cherry\n"
                "|全部|查询次数|cherry Apple élan banana\n"
                "|全部|字母顺序|Apple banana cherry élan\n"
                " aPPLE |全部|字母顺序|Apple cherry\n"
                "苹果树|全部|最近查询|Apple\n"
                "apple|已掌握|最近查询|cherry\n"
                "|新查询|最近查询|banana\n"
                "|学习中|最近查询|Apple\n"
                "|待复习|最近查询|banana Apple\n"
                "#FRUIT|全部|最近查询|Apple cherry\n"
                "#fruit #red|全部|最近查询|cherry\n"
                "#fr|全部|最近查询|Apple cherry\n"
                "#fruit 樱桃|全部|最近查询|cherry\n"
                "#top|全部|最近查询|\n"
                "durian|全部|最近查询|\n");
    }
    void choices() {
        QFETCH(const QStringList, cells);
        Place place;
        place.model.setSearchText(cells.at(0));
        place.model.setFilter(static_cast<int>(WordListModel::filterNames().indexOf(cells.at(1))));
        place.model.setOrder(static_cast<int>(WordListModel::orderNames().indexOf(cells.at(2))));
        QCOMPARE(place.words(), cells.at(3).toUtf8());
        QCOMPARE(place.model.totalCount(), 4);
    }

    void rowsSpeakForPeople() {
        Place place;
        QCOMPARE(place.text(1, WordListModel::SummaryRole), u"n. 苹果；苹果树"_s);
        QCOMPARE(place.text(1, WordListModel::DetailRole), u"昨天查询"_s);
        QCOMPARE(place.text(1, WordListModel::BadgeRole), u"orange"_s);
        QCOMPARE(place.text(3, WordListModel::SpokenRole),
                 u"cherry，n. 樱桃，已掌握，4 天前查询，#Fruit #red"_s);
        place.model.setOrder(static_cast<int>(WordOrder::NextReview));
        QCOMPARE(place.text(1, WordListModel::DetailRole), u"已逾期 1 天"_s);
        QCOMPARE(place.text(2, WordListModel::DetailRole), u"明天复习"_s);
        QCOMPARE(place.text(3, WordListModel::DetailRole), u"已完全掌握"_s);
        place.model.setFilter(static_cast<int>(WordFilter::Due));
        QCOMPARE(place.model.countText(), u"2 / 4 个单词"_s);
    }

    void tags() {
        Place place;
        WordListModel &model = place.model;
        QCOMPARE(model.tagNames(), QStringList({u"全部标签"_s, u"#fruit（2）"_s, u"#red（1）"_s}));
        QCOMPARE(place.text(3, WordListModel::TagsRole), u"#Fruit #red"_s);
        model.filterByTag(u"Red"_s);
        QCOMPARE(model.tag(), 2);
        QCOMPARE(place.words(), "cherry");
        model.setSearchText(u"apple"_s);
        model.setTag(1);
        QCOMPARE(place.words(), "Apple cherry");
        // When the last word loses the tag, all words are listed.
        place.storage().setUserNotes(place.storage().words().at(1).id, u"#green"_s);
        QCOMPARE(place.words(), "cherry");
        model.setSearchText({});
        place.storage().deleteWord(u"cherry"_s);
        QCOMPARE(model.tag(), 0);
        QCOMPARE(place.words(), "banana Apple élan");
        QCOMPARE(model.tagNames(), QStringList({u"全部标签"_s, u"#green（1）"_s}));
        model.filterByTag(u"unknown"_s);
        QCOMPARE(model.count(), 3);
    }

    /// A large wordbook is read in the background; what happens meanwhile is not lost.
    void largeWordbook() {
        QList<WordRecord> records;
        for (int i = 0; i < 3000; ++i)
            records +=
                record(qPrintable(u"word%1"_s.arg(i)), 3, MemoryStatus::New, "词", i % 2 ? "#odd" : "");
        TestServices services(encodeWordRecords(records, JsonForm::File));
        WordListModel model(services.storage());
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QVERIFY(model.isLoading());
        QCOMPARE(model.countText(), u"3000 个单词"_s);
        model.filterByTag(u"odd"_s);
        model.setOrder(static_cast<int>(WordOrder::Alphabet));
        services.storage().deleteWord(u"word1"_s);
        QTRY_VERIFY(!model.isLoading());
        QCOMPARE(model.countText(), u"1499 / 2999 个单词"_s);
        QCOMPARE(model.index(0).data(WordListModel::WordRole).toString(), u"word1001"_s);
    }

    void wordbookChangesAreReportedByRow() {
        Place place;
        const QSignalSpy resets(&place.model, &QAbstractItemModel::modelReset);
        const QSignalSpy inserted(&place.model, &QAbstractItemModel::rowsInserted);
        const QSignalSpy removed(&place.model, &QAbstractItemModel::rowsRemoved);
        const QSignalSpy changed(&place.model, &QAbstractItemModel::dataChanged);
        const QPersistentModelIndex cherry = place.model.index(3);

        place.search("fig");
        QCOMPARE(place.words(), "fig banana Apple élan cherry");
        QCOMPARE(inserted.size(), 1);
        QCOMPARE(cherry.row(), 4);

        // A changed note does not move the row.
        place.storage().setUserNotes(place.storage().words().at(4).id, u"red"_s);
        QCOMPARE(changed.size(), 1);
        QCOMPARE(changed.first().first().toModelIndex().row(), 4);

        // Another search moves one row.
        place.search("élan");
        QCOMPARE(place.words(), "élan fig banana Apple cherry");
        QCOMPARE(inserted.size(), 2);
        QCOMPARE(removed.size(), 1);

        place.storage().deleteWord(u"banana"_s);
        QCOMPARE(removed.size(), 2);
        QCOMPARE(cherry.row(), 3);
        QCOMPARE(resets.size(), 0);

        // A new word appears only if it matches the filter text.
        place.model.setSearchText(u"appl"_s);
        place.search("grape");
        place.search("appliance");
        QCOMPARE(place.words(), "appliance Apple");
    }

    void selection() {
        using Selection = WordListModel::Selection;
        Place place;
        WordListModel &model = place.model;
        const auto selected = [&] {
            return place.words(true);
        };
        model.choose(1, Selection::Replace);
        QCOMPARE(selected(), "Apple");
        QCOMPARE(model.selectedId(), place.storage().words().at(1).id.toString(QUuid::WithoutBraces));
        model.choose(99, Selection::Extend);
        QCOMPARE(selected(), "Apple élan cherry");
        QCOMPARE(model.currentRow(), 3);
        model.choose(0, Selection::Extend);
        QCOMPARE(selected(), "banana Apple");
        model.choose(3, Selection::Toggle);
        model.choose(0, Selection::Toggle);
        QCOMPARE(selected(), "Apple cherry");
        QCOMPARE(model.selectedId(), QString());

        // The selection stays with its records; records that are not listed do not count.
        model.setOrder(static_cast<int>(WordOrder::Alphabet));
        QCOMPARE(selected(), "Apple cherry");
        model.setSearchText(u"樱桃"_s);
        QCOMPARE(model.selectedCount(), 1);
        model.setSearchText({});
        QCOMPARE(model.selectedCount(), 2);
        model.selectAll();
        QCOMPARE(model.selectedCount(), 4);
        model.clearSelection();
        QCOMPARE(model.selectedCount(), 0);
    }

    void deletions() {
        using Selection = WordListModel::Selection;
        Place place;
        WordListModel &model = place.model;
        QCOMPARE(model.deleteSelected(), QString());
        model.choose(0, Selection::Replace);
        model.choose(1, Selection::Extend);
        QCOMPARE(model.deleteSelected(), u"已删除 2 个单词"_s);
        QCOMPARE(place.words(true), "élan");
        model.choose(1, Selection::Replace);
        QCOMPARE(model.deleteSelected(), u"已删除“cherry”"_s);
        QCOMPARE(place.words(), "élan");
        QCOMPARE(place.words(true), "élan");
        // What the filter hides is not deleted.
        model.selectAll();
        model.setSearchText(u"durian"_s);
        QCOMPARE(model.deleteSelected(), QString());
        model.setSearchText({});

        model.undoDeletion();
        QCOMPARE(place.words(true), "cherry");
        model.undoDeletion();
        model.undoDeletion();
        QCOMPARE(place.words(), "banana Apple élan cherry");
        QCOMPARE(place.words(true), "banana Apple");
        QCOMPARE(place.storage().words().at(1).userNotes, u"An APPLE a day #fruit"_s);
    }

    void reviewHistory() {
        Place place;
        ReviewHistory history(place.services);
        QCOMPARE(history.summary(), u"还没有复习记录"_s);
        const QUuid id = place.storage().words().at(1).id;
        history.setWordId(id.toString(QUuid::WithoutBraces));
        QVERIFY(history.searches().endsWith(u"最近查询 昨天"_s));
        const QSignalSpy changes(&history, &ReviewHistory::changed);
        place.storage().recordReview(id, ReviewFeedback::Remembered);
        place.storage().recordReview(id, ReviewFeedback::Forgot);
        place.storage().recordReview(place.storage().words().at(0).id, ReviewFeedback::Forgot);
        QCOMPARE(changes.size(), 2);
        QCOMPARE(history.summary(), u"复习 2 次，记住 1 次，间隔 1 天，难度系数 2.35"_s);
        QCOMPARE(history.latest().first().toMap().value(u"answer"_s).toString(), u"没记住"_s);
        place.storage().deleteWord(id);
        QCOMPARE(history.count(), 0);
    }
};

QTEST_GUILESS_MAIN(WordListModelTest)
#include "word_list_model_test.moc"

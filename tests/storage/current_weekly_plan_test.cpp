#include "storage/current_weekly_plan.h"
#include "storage/place.h"

using namespace lexiquill;

class CurrentWeeklyPlanTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void followsEveryChange() {
        Place place;
        place.setWords({u"apple"_s, u"pear"_s});
        const auto store = place.open();
        CurrentWeeklyPlan plan(*store);
        const QSignalSpy changes(&plan, &CurrentWeeklyPlan::weeklyPlanChanged);
        const auto total = [&plan] {
            return plan.weeklyPlan()->totalCount();
        };
        QCOMPARE(total(), 2);
        store->addOrUpdateSearch(entryFor(u"plum"_s));
        QCOMPARE(total(), 3);
        store->recordReview(store->words().at(0).id, ReviewFeedback::Forgot);
        QCOMPARE(plan.weeklyPlan()->difficultWords.size(), 1);
        store->deleteWord(u"apple"_s);
        QCOMPARE(total(), 2);
        QVERIFY(store->restoreBackup({}));
        QCOMPARE(total(), 0);
        QCOMPARE(changes.size(), 4);
    }

    void isOfTheWeekOfTheRefresh() {
        Place place;
        place.setWords({});
        const auto store = place.open();
        CurrentWeeklyPlan plan(*store);
        QCOMPARE(plan.weeklyPlan()->weekNumber, 11);
        place.now = place.now.adding(7 * secondsPerDay);
        QCOMPARE(plan.weeklyPlan()->weekNumber, 11);
        plan.refreshWeeklyPlan();
        QCOMPARE(plan.weeklyPlan()->weekNumber, 12);
    }
};

QTEST_GUILESS_MAIN(CurrentWeeklyPlanTest)
#include "current_weekly_plan_test.moc"

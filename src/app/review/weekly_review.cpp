#include "app/review/weekly_review.h"

#include "app/shell/services.h"
#include "platform/durable_file.h"
#include "storage/current_weekly_plan.h"
#include "storage/storage_manager.h"
#include "support/background_task.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace lexiquill {

namespace {

QString dayText(const std::optional<QDate> &day, bool hasYear) {
    if (!day)
        return QStringLiteral("—");
    return day->toString(hasYear ? QStringLiteral("yyyy年M月d日") : QStringLiteral("M月d日"));
}

QString reasonOf(DurableFile::Problem problem) {
    switch (problem) {
    case DurableFile::Problem::NoPermission:
    case DurableFile::Problem::NoDirectory:
        return QStringLiteral("无法写入该位置（文件夹不存在、只读或没有权限）");
    case DurableFile::Problem::NoSpace:
        return QStringLiteral("磁盘空间或系统资源不足");
    case DurableFile::Problem::None:
    case DurableFile::Problem::Other:
        break;
    }
    return QStringLiteral("写入文件时出错");
}

/// Overwrites the file itself. Some folders allow that but do not allow new files.
bool writeInPlace(const QString &path, const QByteArray &text) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::ExistingOnly) && file.write(text) == text.size() &&
           file.flush();
}

/// Returns why it failed, for the user; empty after success.
QString write(const std::optional<WeeklyReviewPlan> &plan, const Calendar &calendar, const QUrl &file) {
    if (!file.isLocalFile())
        return QStringLiteral("导出失败：只能保存到本机的文件");
    if (!plan)
        return QStringLiteral("导出失败：还没有复习计划");
    const QString path = resolvedFile(file.toLocalFile());
    const QByteArray text = WeeklyReviewScheduler::exportMarkdown(*plan, calendar).toUtf8();
    const auto problem = replaceFile(path, text, {.access = DurableFile::Access::Ordinary});
    const bool isWritten = problem == DurableFile::Problem::None ||
                           (problem == DurableFile::Problem::NoPermission && writeInPlace(path, text));
    return isWritten ? QString() : QStringLiteral("导出失败：") + reasonOf(problem);
}

} // namespace

WeeklyReview::WeeklyReview(QObject *parent) : WeeklyReview(Services::current(), parent) {}

WeeklyReview::WeeklyReview(Services &services, QObject *parent)
    : QObject(parent),
      m_storage(services.storage),
      m_plan(services.plan),
      m_day([&storage = services.storage] { return storage.now(); }) {
    connect(&m_plan, &CurrentWeeklyPlan::weeklyPlanChanged, this, [this] {
        m_isOutdated = true;
        update();
    });
    connect(&m_day, &Expiry::expired, &m_plan, &CurrentWeeklyPlan::refreshWeeklyPlan);
}

void WeeklyReview::setActive(bool isActive) {
    if (isActive == m_isActive)
        return;
    m_isActive = isActive;
    Q_EMIT activeChanged();
    update();
}

void WeeklyReview::update() {
    if (!m_isActive || !m_isOutdated)
        return;
    const auto &plan = m_plan.weeklyPlan();
    if (!plan)
        return;
    m_isOutdated = false;
    const Calendar calendar = m_storage.calendar();
    const auto first = calendar.date(plan->startOfWeek);
    auto last = calendar.date(plan->endOfWeek);
    if (last)
        last = last->addDays(-1);
    const bool isWithinYear = first && last && first->year() == last->year();
    m_week = QStringLiteral("%1年第%2周").arg(plan->year).arg(plan->weekNumber);
    m_period = dayText(first, !isWithinYear) + QStringLiteral(" 至 ") + dayText(last, !isWithinYear);
    m_totalCount = static_cast<int>(plan->totalCount());
    m_dueCount = static_cast<int>(plan->dueWords.size());
    m_difficultCount = static_cast<int>(plan->difficultWords.size());
    m_newCount = static_cast<int>(plan->newSearches.size());
    const auto today = calendar.date(m_storage.now());
    if (const auto tomorrow = today ? calendar.startOfDay(today->addDays(1)) : std::nullopt)
        m_day.start(*tomorrow);
    Q_EMIT planChanged();
}

QUrl WeeklyReview::suggestedFile() const {
    const auto &plan = m_plan.weeklyPlan();
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const QDir directory(QDir(documents).exists() ? documents : QDir::homePath());
    return QUrl::fromLocalFile(directory.filePath(plan ? plan->markdownFileName() : QString()));
}

void WeeklyReview::exportTo(const QUrl &chosen) {
    // When the user types a name, Qt's own dialog returns a path without a scheme.
    const bool isPath = chosen.scheme().isEmpty() && chosen.path().startsWith(u'/');
    const QUrl file = isPath ? QUrl::fromLocalFile(chosen.path(QUrl::FullyDecoded)) : chosen;
    const auto writeCopy = [plan = m_plan.weeklyPlan(), calendar = m_storage.calendar(), file] {
        return write(plan, calendar, file);
    };
    runInBackground(this, writeCopy, [this, file](const QString &error) { Q_EMIT exported(file, error); });
}

} // namespace lexiquill

#include "app/statistics/statistics.h"

#include "app/components/small_wordbook.h"
#include "app/shell/services.h"
#include "storage/storage_manager.h"
#include "support/text.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace lexiquill {

namespace {

double shareOf(const ReviewMonth &month) {
    return month.reviews == 0 ? 0 : static_cast<double>(month.remembered) / month.reviews;
}

QString percentOf(const ReviewMonth &month) {
    return QStringLiteral("%1%").arg(qRound(shareOf(month) * 100));
}

QString hourName(int hour) {
    return QStringLiteral("%1:00–%2:00").arg(hour).arg(hour + 1);
}

} // namespace

Statistics::Statistics(QObject *parent) : Statistics(Services::current().storage, parent) {}

Statistics::Statistics(StorageManager &storage, QObject *parent)
    : QObject(parent),
      m_storage(storage),
      m_expiry([&storage] { return storage.now(); }) {
    m_updating.setSingleShot(true);
    connect(&m_updating, &QTimer::timeout, this, &Statistics::update);
    connect(&m_storage, &StorageManager::wordsChanged, this, [this] {
        m_isOutdated = true;
        // A large wordbook is counted in an event of its own, so that no single one takes longer than a
        // frame.
        if (m_storage.words().size() > smallWordbook)
            m_updating.start(0);
        else
            update();
    });
    connect(&m_expiry, &Expiry::expired, this, [this] {
        m_isOutdated = true;
        update();
    });
}

void Statistics::setActive(bool isActive) {
    if (isActive == m_isActive)
        return;
    m_isActive = isActive;
    Q_EMIT activeChanged();
    update();
}

void Statistics::update() {
    if (!m_isActive || !m_isOutdated)
        return;
    m_isOutdated = false;
    m_statistics = MemoryStatistics::of(m_storage.words(), m_storage.now(), m_storage.calendar());
    m_expiry.start(m_statistics.validUntil);
    Q_EMIT changed();
    updateCurve();
}

void Statistics::updateCurve() {
    const QList<WordRecord> &words = m_storage.words();
    const qsizetype index = m_selectedId.isNull() ? -1 : indexOfWord(words, m_selectedId, m_selectedWord);
    m_selectedId = index < 0 ? QUuid() : words.at(index).id;
    m_selectedWord = index < 0 ? QString() : words.at(index).word;
    m_curve = index < 0 ? ForgettingCurve::ofAverage(words, m_storage.now())
                        : ForgettingCurve::of(words.at(index), m_storage.now());
    Q_EMIT curveChanged();
}

bool Statistics::selectWord(const QString &text) {
    const QString key = wordKey(text);
    m_selectedWord.clear();
    if (key.isEmpty()) {
        m_selectedId = {};
        updateCurve();
        return true;
    }
    const WordRecord *found = nullptr;
    for (const WordRecord &record : m_storage.words()) {
        const bool isBetter = found == nullptr || record.word.size() < found->word.size();
        if (isBetter && record.word.startsWith(key, Qt::CaseInsensitive))
            found = &record;
    }
    m_selectedId = found != nullptr ? found->id : QUuid();
    updateCurve();
    return found != nullptr;
}

QVariantList Statistics::nextSevenDaysForecast() const {
    QVariantList days;
    for (const ForecastDay &day : m_statistics.nextSevenDaysForecast)
        days += QVariantMap{{QStringLiteral("label"), day.label}, {QStringLiteral("count"), day.count}};
    return days;
}

QVariantList Statistics::months() const {
    const QList<ReviewMonth> months = m_statistics.reviews.months();
    QVariantList bars;
    if (std::ranges::all_of(months, [](const ReviewMonth &month) { return month.reviews == 0; }))
        return bars;
    for (const ReviewMonth &month : months) {
        const QString name = month.firstDay.toString(QStringLiteral("yyyy年M月"));
        const QString text = month.reviews == 0
                                 ? QStringLiteral("%1：没有复习").arg(name)
                                 : QStringLiteral("%1：复习 %2 次，记住 %3 次，占 %4")
                                       .arg(name, QString::number(month.reviews),
                                            QString::number(month.remembered), percentOf(month));
        bars += QVariantMap{{QStringLiteral("label"), QStringLiteral("%1月").arg(month.firstDay.month())},
                            {QStringLiteral("count"), month.reviews},
                            {QStringLiteral("share"), shareOf(month)},
                            {QStringLiteral("top"), month.reviews == 0 ? QString() : percentOf(month)},
                            {QStringLiteral("text"), text}};
    }
    return bars;
}

QString Statistics::monthSummary() const {
    ReviewMonth all;
    for (const ReviewMonth &month : m_statistics.reviews.months()) {
        all.reviews += month.reviews;
        all.remembered += month.remembered;
    }
    return all.reviews == 0
               ? QStringLiteral("过去 12 个月还没有复习记录")
               : QStringLiteral("过去 12 个月复习 %1 次，记住了 %2").arg(all.reviews).arg(percentOf(all));
}

QVariantList Statistics::hours() const {
    const QList<int> &counts = m_statistics.reviews.perHour;
    QVariantList bars;
    if (std::ranges::all_of(counts, [](int count) { return count == 0; }))
        return bars;
    for (int hour = 0; hour < counts.size(); ++hour)
        bars += QVariantMap{{QStringLiteral("label"), QString::number(hour)},
                            {QStringLiteral("count"), counts.at(hour)},
                            {QStringLiteral("text"),
                             QStringLiteral("%1：复习 %2 次").arg(hourName(hour)).arg(counts.at(hour))}};
    return bars;
}

QString Statistics::hourSummary() const {
    const QList<int> &counts = m_statistics.reviews.perHour;
    const auto most = std::ranges::max_element(counts);
    if (most == counts.cend() || *most == 0)
        return QStringLiteral("还没有复习记录");
    return QStringLiteral("过去一年最常在 %1 复习").arg(hourName(static_cast<int>(most - counts.cbegin())));
}

QVariantList Statistics::hardestWords() const {
    QVariantList words;
    for (const HardWord &word : m_statistics.reviews.hardestWords)
        words += QVariantMap{{QStringLiteral("word"), word.word},
                             {QStringLiteral("text"), QStringLiteral("没记住 %1 次，难度系数 %2")
                                                          .arg(QString::number(word.forgotten),
                                                               QString::number(word.easeFactor, 'f', 2))}};
    return words;
}

QString Statistics::reviewSummary() const {
    const QList<int> &counts = m_statistics.reviews.perDay;
    const qint64 reviews = std::accumulate(counts.cbegin(), counts.cend(), qint64{0});
    if (reviews == 0)
        return QStringLiteral("过去一年还没有复习记录");
    const auto days = std::ranges::count_if(counts, [](int count) { return count > 0; });
    // Today is not over, so a day without reviews does not end the run yet.
    const auto from = counts.constLast() > 0 ? counts.crbegin() : counts.crbegin() + 1;
    const auto run = std::find(from, counts.crend(), 0) - from;
    return QStringLiteral("过去一年复习 %1 次，共 %2 天，已连续 %3 天").arg(reviews).arg(days).arg(run);
}

QString Statistics::curveSummary() const {
    if (m_curve.isEmpty())
        return QStringLiteral("还没有复习过的单词");
    const auto percent = qRound(m_curve.retention(m_curve.today) * 100);
    const QString name = m_selectedWord.isEmpty() ? QStringLiteral("平均单词") : m_selectedWord;
    return QStringLiteral("%1：间隔 %2 天，当前保持率约 %3%")
        .arg(name,
             QString::number(m_curve.reviews.constLast().interval, 'f', m_selectedWord.isEmpty() ? 1 : 0),
             QString::number(percent));
}

QString Statistics::retentionOn(qint64 day, double retention) {
    const QString name = day == 0  ? QStringLiteral("今天")
                         : day > 0 ? QStringLiteral("%1 天后").arg(day)
                                   : QStringLiteral("%1 天前").arg(-day);
    return QStringLiteral("%1：保持率约 %2%").arg(name).arg(qRound(retention * 100));
}

QString Statistics::curveOutlook() const {
    QStringList values;
    for (const int day : {0, 1, 3, 7, 14, 30}) {
        if (!m_curve.isEmpty())
            values += retentionOn(day, m_curve.retention(m_curve.today + day));
    }
    return values.join(u'；');
}

} // namespace lexiquill

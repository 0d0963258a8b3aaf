#include "app/statistics/statistics.h"

#include "app/shell/services.h"
#include "storage/storage_manager.h"
#include "support/text.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace lexiquill {

Statistics::Statistics(QObject *parent) : Statistics(Services::current().storage, parent) {}

Statistics::Statistics(StorageManager &storage, QObject *parent)
    : QObject(parent),
      m_storage(storage),
      m_expiry([&storage] { return storage.now(); }) {
    const auto makeAnew = [this] {
        m_isOutdated = true;
        update();
    };
    connect(&m_storage, &StorageManager::wordsChanged, this, makeAnew);
    connect(&m_expiry, &Expiry::expired, this, makeAnew);
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

QString Statistics::reviewSummary() const {
    const QList<int> &counts = m_statistics.reviewsPerDay;
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

} // namespace lexiquill

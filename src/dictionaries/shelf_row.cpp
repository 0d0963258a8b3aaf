#include "dictionaries/shelf_row.h"

#include <QFileInfo>

#include <algorithm>
#include <iterator>
#include <utility>

namespace lexiquill {

namespace {

/// Avoids opening a dictionary whose name already shows that it explains in Chinese.
bool hasChineseName(const QString &name) {
    static const QStringList marks{
        QStringLiteral("chinese"), QStringLiteral("英汉"), QStringLiteral("汉英"), QStringLiteral("英漢"),
        QStringLiteral("漢英"),    QStringLiteral("英中"), QStringLiteral("中英"), QStringLiteral("双解"),
        QStringLiteral("雙解"),    QStringLiteral("英华"), QStringLiteral("華英"), QStringLiteral("英華"),
        QStringLiteral("华英"),
    };
    return std::any_of(marks.begin(), marks.end(),
                       [&name](const QString &mark) { return name.contains(mark, Qt::CaseInsensitive); });
}

} // namespace

ShelfRow::ShelfRow(const DictionaryPlaces &places, const std::vector<DictionaryFormat> &formats,
                   ShelfChoices &choices)
    : m_places(places),
      m_formats(formats),
      m_choices(choices) {}

const std::vector<ShelfRow::Slot> &ShelfRow::dictionaries() {
    if (!isCurrent())
        scan();
    return m_slots;
}

bool ShelfRow::isCurrent() {
    return m_isScanned && m_choices.current() == m_chosen &&
           std::all_of(m_searched.begin(), m_searched.end(), [](const SearchedDirectory &each) {
               return stampOfDirectory(each.first) == each.second;
           });
}

/// Dictionaries that are still there stay open.
void ShelfRow::scan() {
    m_isScanned = true;
    m_chosen = m_choices.current();
    m_searched.clear();
    std::vector<Slot> old = std::exchange(m_slots, {});
    add(m_places.installed, false, old);
    add(m_places.bundled, true, old);
    arrange();
}

void ShelfRow::add(const QStringList &directories, bool areBundled, std::vector<Slot> &old) {
    for (const QString &directory : directories) {
        for (const FoundDictionary &found : findDictionaries(directory, m_formats, m_searched)) {
            const QString path = QFileInfo(found.path).absoluteFilePath();
            const auto isThis = [&path](const Slot &slot) {
                return slot.dictionary && slot.dictionary->path() == path;
            };
            if (std::any_of(m_slots.begin(), m_slots.end(), [&found](const Slot &slot) {
                    return QFileInfo(slot.dictionary->path()) == QFileInfo(found.path);
                }))
                continue;
            const auto known = std::find_if(old.begin(), old.end(), isThis);
            m_slots.push_back({.dictionary = known != old.end() ? std::move(known->dictionary)
                                                                : std::make_unique<Dictionary>(
                                                                      *found.format, path, m_places.cache),
                               .isOn = !m_chosen.isOff(path),
                               .isBundled = areBundled});
        }
    }
}

/// Only dictionaries that are asked are opened.
void ShelfRow::arrange() {
    enum Rank : qsizetype { InstalledChinese, Bundled, OtherInstalled };
    std::vector<std::pair<qsizetype, Slot>> ranked;
    for (Slot &slot : m_slots) {
        Dictionary &dictionary = *slot.dictionary;
        qsizetype rank = m_chosen.rankOf(dictionary.path(), dictionary.about().name);
        if (rank < 0) {
            const bool isChinese =
                !slot.isBundled && m_slots.size() > 1 &&
                (hasChineseName(dictionary.about().name) || (slot.isOn && dictionary.holdsChinese()));
            rank = m_chosen.order.size() + (slot.isBundled ? Bundled
                                            : isChinese    ? InstalledChinese
                                                           : OtherInstalled);
        }
        if (ranked.size() >= mostOpen)
            dictionary.close();
        ranked.emplace_back(rank, std::move(slot));
    }
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const auto &left, const auto &right) { return left.first < right.first; });
    std::transform(ranked.begin(), ranked.end(), m_slots.begin(),
                   [](auto &each) { return std::move(each.second); });
}

} // namespace lexiquill

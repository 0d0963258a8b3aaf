#pragma once

#include <QAbstractListModel>
#include <QHash>
#include <QList>

#include <algorithm>
#include <utility>
#include <vector>

namespace lexiquill {

/// A list model that reports exactly which rows change. A `Row` must be comparable; its member `id`
/// identifies it.
template <typename Row, auto id = &Row::id> class RowListModel : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex &parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
    }
    const QList<Row> &rows() const { return m_rows; }

protected:
    /// Replaces the rows with `rows`. Rows that keep their order stay; the others are removed and inserted.
    void setRows(QList<Row> rows) {
        const Span span = differing(rows);
        const std::vector<qsizetype> targets = keptTargets(rows, span);
        std::vector<bool> isKept(static_cast<std::size_t>(span.newEnd - span.first), false);
        for (const qsizetype target : targets) {
            if (target >= 0)
                isKept[static_cast<std::size_t>(target - span.first)] = true;
        }
        const auto removed = ranges(span.first, span.oldEnd, [&](auto row) { return targets[row] < 0; });
        const auto inserted = ranges(span.first, span.newEnd, [&](auto row) { return !isKept[row]; });
        if (removed.size() + inserted.size() > mostRanges) {
            replaceRows(std::move(rows));
            return;
        }
        for (auto range = removed.crbegin(); range != removed.crend(); ++range) {
            beginRemoveRows({}, static_cast<int>(range->first), static_cast<int>(range->second) - 1);
            m_rows.remove(range->first, range->second - range->first);
            endRemoveRows();
        }
        for (const auto &[from, to] : inserted)
            insert(rows, from, to);
        const auto changed = ranges(span.first, span.newEnd, [&](auto row) {
            const qsizetype at = span.first + static_cast<qsizetype>(row);
            return !(m_rows.at(at) == rows.at(at));
        });
        m_rows = std::move(rows);
        for (const auto &[from, to] : changed)
            Q_EMIT dataChanged(index(static_cast<int>(from)), index(static_cast<int>(to) - 1));
    }

    /// Moves one row; the view keeps its item.
    void moveRow(qsizetype from, qsizetype to) {
        beginMoveRows({}, static_cast<int>(from), static_cast<int>(from), {},
                      static_cast<int>(to > from ? to + 1 : to));
        m_rows.move(from, to);
        endMoveRows();
    }

    /// Replaces the rows with those of a different list. Row n overwrites row n, so that a view reuses its
    /// items. That is faster than creating new ones.
    void replaceRows(QList<Row> rows) {
        const qsizetype common = std::min(m_rows.size(), rows.size());
        std::move(rows.begin(), rows.begin() + common, m_rows.begin());
        if (common > 0)
            Q_EMIT dataChanged(index(0), index(static_cast<int>(common) - 1));
        if (m_rows.size() > common) {
            beginRemoveRows({}, static_cast<int>(common), static_cast<int>(m_rows.size()) - 1);
            m_rows.resize(common);
            endRemoveRows();
        } else if (rows.size() > common) {
            insert(rows, common, rows.size());
        }
    }

private:
    using Range = std::pair<qsizetype, qsizetype>; ///< first row, and the row after the last

    /// The part in which the current and the new rows differ: from `first` up to, but not including, the
    /// ends.
    struct Span {
        qsizetype first;
        qsizetype oldEnd;
        qsizetype newEnd;
    };

    /// With more changed ranges than this, overwriting all rows is faster.
    static constexpr std::size_t mostRanges = 64;

    Span differing(const QList<Row> &rows) const {
        const auto heads = std::mismatch(m_rows.cbegin(), m_rows.cend(), rows.cbegin(), rows.cend());
        const auto tails = std::mismatch(m_rows.crbegin(), std::make_reverse_iterator(heads.first),
                                         rows.crbegin(), std::make_reverse_iterator(heads.second));
        return {.first = heads.first - m_rows.cbegin(),
                .oldEnd = tails.first.base() - m_rows.cbegin(),
                .newEnd = tails.second.base() - rows.cbegin()};
    }

    void insert(const QList<Row> &rows, qsizetype from, qsizetype to) {
        beginInsertRows({}, static_cast<int>(from), static_cast<int>(to) - 1);
        m_rows.insert(from, to - from, Row());
        std::copy(rows.cbegin() + from, rows.cbegin() + to, m_rows.begin() + from);
        endInsertRows();
    }

    /// The ranges of rows in [first, end) for which `holds` is true. `holds` gets the row's offset from
    /// `first`.
    template <typename Holds> static std::vector<Range> ranges(qsizetype first, qsizetype end, Holds holds) {
        std::vector<Range> result;
        for (qsizetype row = first; row < end; ++row) {
            if (!holds(static_cast<std::size_t>(row - first)))
                continue;
            if (!result.empty() && result.back().second == row)
                ++result.back().second;
            else
                result.emplace_back(row, row + 1);
        }
        return result;
    }

    /// For each current row of the span its position in `rows`, or -1 when it is removed or must move. The
    /// rows that stay are a longest increasing subsequence.
    std::vector<qsizetype> keptTargets(const QList<Row> &rows, const Span &span) const {
        using Id = std::decay_t<decltype(std::declval<Row>().*id)>;
        QHash<Id, qsizetype> places;
        places.reserve(span.newEnd - span.first);
        for (qsizetype row = span.first; row < span.newEnd; ++row)
            places.insert(rows.at(row).*id, row);
        const auto count = static_cast<std::size_t>(span.oldEnd - span.first);
        std::vector<qsizetype> targets(count, -1);
        std::vector<std::size_t> ends; // last row of the best subsequence of each length
        std::vector<std::size_t> previous(count, count);
        for (std::size_t row = 0; row < count; ++row) {
            const Row &present = m_rows.at(span.first + static_cast<qsizetype>(row));
            const qsizetype target = places.value(present.*id, -1);
            targets[row] = target;
            if (target < 0)
                continue;
            // Usually the row comes after all others.
            const bool isLast = ends.empty() || targets[ends.back()] < target;
            const auto end =
                isLast ? ends.end()
                       : std::lower_bound(ends.begin(), ends.end(), target,
                                          [&](std::size_t a, qsizetype b) { return targets[a] < b; });
            if (end != ends.begin())
                previous[row] = *(end - 1);
            if (end == ends.end())
                ends.push_back(row);
            else
                *end = row;
        }
        std::vector<qsizetype> kept(count, -1);
        for (std::size_t row = ends.empty() ? count : ends.back(); row < count; row = previous[row])
            kept[row] = targets[row];
        return kept;
    }

    QList<Row> m_rows;
};

} // namespace lexiquill

#pragma once

#include <QAbstractListModel>
#include <QHash>
#include <QList>

#include <algorithm>
#include <utility>
#include <vector>

namespace lexiquill {

/// A list of values that tells views exactly which rows change. A `Row` can be compared and has an identity,
/// the member `id`.
template <typename Row, auto id = &Row::id> class RowListModel : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex &parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
    }
    const QList<Row> &rows() const { return m_rows; }

protected:
    /// Makes `rows` the rows: what keeps its order stays, the rest is removed and inserted.
    void setRows(QList<Row> rows) {
        const std::vector<qsizetype> targets = keptTargets(rows);
        std::vector<bool> isKept(static_cast<std::size_t>(rows.size()), false);
        for (const qsizetype target : targets) {
            if (target >= 0)
                isKept[static_cast<std::size_t>(target)] = true;
        }
        const auto removed = ranges(m_rows.size(), [&](auto row) { return targets[row] < 0; });
        const auto inserted = ranges(rows.size(), [&](auto row) { return !isKept[row]; });
        if (removed.size() + inserted.size() > mostRanges) {
            resetRows(std::move(rows));
            return;
        }
        for (auto range = removed.crbegin(); range != removed.crend(); ++range) {
            beginRemoveRows({}, static_cast<int>(range->first), static_cast<int>(range->second) - 1);
            m_rows.remove(range->first, range->second - range->first);
            endRemoveRows();
        }
        for (const auto &[from, to] : inserted) {
            beginInsertRows({}, static_cast<int>(from), static_cast<int>(to) - 1);
            m_rows.insert(from, to - from, Row());
            std::copy(rows.cbegin() + from, rows.cbegin() + to, m_rows.begin() + from);
            endInsertRows();
        }
        const auto changed = ranges(rows.size(), [&](auto row) {
            const auto at = static_cast<qsizetype>(row);
            return !(m_rows.at(at) == rows.at(at));
        });
        m_rows = std::move(rows);
        for (const auto &[from, to] : changed)
            Q_EMIT dataChanged(index(static_cast<int>(from)), index(static_cast<int>(to) - 1));
    }

    /// Makes `rows` the rows of a list that is shown from its beginning.
    void resetRows(QList<Row> rows) {
        beginResetModel();
        m_rows = std::move(rows);
        endResetModel();
    }

private:
    using Range = std::pair<qsizetype, qsizetype>; ///< first, and behind the last

    /// More changes than this are cheaper to show anew.
    static constexpr std::size_t mostRanges = 200;

    template <typename Holds> static std::vector<Range> ranges(qsizetype count, Holds holds) {
        std::vector<Range> result;
        for (qsizetype row = 0; row < count; ++row) {
            if (!holds(static_cast<std::size_t>(row)))
                continue;
            if (!result.empty() && result.back().second == row)
                ++result.back().second;
            else
                result.emplace_back(row, row + 1);
        }
        return result;
    }

    /// For each present row its place among `rows`, or -1 when it is gone or is to be moved: the rows left
    /// are a longest increasing subsequence.
    std::vector<qsizetype> keptTargets(const QList<Row> &rows) const {
        using Id = std::decay_t<decltype(std::declval<Row>().*id)>;
        QHash<Id, qsizetype> places;
        places.reserve(rows.size());
        for (qsizetype row = 0; row < rows.size(); ++row)
            places.insert(rows.at(row).*id, row);
        const auto count = static_cast<std::size_t>(m_rows.size());
        std::vector<qsizetype> targets(count, -1);
        std::vector<std::size_t> ends; // of the best subsequence of each length
        std::vector<std::size_t> previous(count, count);
        for (std::size_t row = 0; row < count; ++row) {
            const qsizetype target = places.value(m_rows.at(static_cast<qsizetype>(row)).*id, -1);
            targets[row] = target;
            if (target < 0)
                continue;
            const auto end = std::lower_bound(ends.begin(), ends.end(), target,
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

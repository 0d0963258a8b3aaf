#pragma once

#include "model/word_record.h"

#include <QList>

namespace lexiquill {

/// Some records of a wordbook in their own order. This is a value: it shares the wordbook's list at the time
/// of the selection, so nothing is copied as long as that list does not change.
class RecordSelection {
public:
    class const_iterator {
    public:
        const_iterator(const RecordSelection *selection, qsizetype index)
            : m_selection(selection),
              m_index(index) {}

        const WordRecord &operator*() const { return m_selection->at(m_index); }
        const WordRecord *operator->() const { return &m_selection->at(m_index); }
        const_iterator &operator++() {
            ++m_index;
            return *this;
        }
        friend bool operator==(const const_iterator &, const const_iterator &) = default;

    private:
        const RecordSelection *m_selection;
        qsizetype m_index;
    };

    RecordSelection() = default;
    /// `positions`: indexes into `records`.
    RecordSelection(QList<WordRecord> records, QList<qsizetype> positions)
        : m_records(std::move(records)),
          m_positions(std::move(positions)) {}

    qsizetype size() const { return m_positions.size(); }
    bool isEmpty() const { return m_positions.isEmpty(); }
    const WordRecord &at(qsizetype index) const { return m_records.at(m_positions.at(index)); }
    const WordRecord &first() const { return at(0); }
    const_iterator begin() const { return {this, 0}; }
    const_iterator end() const { return {this, size()}; }

private:
    QList<WordRecord> m_records;
    QList<qsizetype> m_positions;
};

} // namespace lexiquill

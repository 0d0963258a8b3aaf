#include "storage/record_texts.h"

namespace lexiquill {

qsizetype RecordTexts::find(const WordRecord &record) {
    if (m_positions.isEmpty()) {
        m_positions.reserve(m_words.size());
        for (qsizetype i = 0; i < m_words.size(); ++i)
            m_positions.insert(m_words.at(i).id, i);
    }
    const qsizetype position = m_positions.value(record.id, -1);
    return isAt(position, record) ? position : -1;
}

bool RecordTexts::isAt(qsizetype position, const WordRecord &record) const {
    return position >= 0 && position < m_texts.size() && haveSameContent(m_words.at(position), record);
}

} // namespace lexiquill

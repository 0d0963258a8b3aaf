#pragma once

#include <QHash>
#include <QString>

#include <optional>

namespace lexiquill::mdict {

/// Texts that stand around parts of articles. An article has `NUMBER` in front of each part.
class StyleSheet {
public:
    StyleSheet() = default;
    /// `text`: for each style a line with its number, the text before and the text after.
    explicit StyleSheet(const QString &text);

    bool isEmpty() const { return m_styles.isEmpty(); }

    /// The article with the texts in place of the numbers. Numbers of no style stay as they are. No value
    /// when the result has more than `limit` characters.
    std::optional<QString> applied(const QString &article, qsizetype limit) const;

private:
    struct Style {
        QString before;
        QString after;
    };
    QHash<quint32, Style> m_styles;
};

} // namespace lexiquill::mdict

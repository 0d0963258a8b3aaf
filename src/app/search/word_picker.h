#pragma once

#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QQmlEngine>
#include <QQuickItem>
#include <QString>
#include <QStringList>
#include <QStringView>

namespace lexiquill {

class SystemDictionaryService;

/// The words of a text that may be meant by a position in it, the likeliest first: the Latin word with inner
/// apostrophes and hyphens, or each run of up to four Chinese characters around the position, longer ones
/// first. Empty between words.
QStringList wordsAt(QStringView text, qsizetype position);

/// Tells which word of a text item the user means by a double click or a Ctrl+click.
class WordPicker : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// A text item in which a position can be found, such as TextEdit.
    Q_PROPERTY(QQuickItem *target READ target WRITE setTarget REQUIRED)

public:
    explicit WordPicker(QObject *parent = nullptr);

    QQuickItem *target() const { return m_target; }
    void setTarget(QQuickItem *target);
    /// The word at a place in the target: the first candidate that an offline dictionary knows, or else the
    /// Latin word. Empty if there is none.
    Q_INVOKABLE QString wordAt(QPointF place) const;

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void picked(const QString &word);

private:
    SystemDictionaryService &m_dictionary;
    QPointer<QQuickItem> m_target;
    QPointF m_pressed; ///< where the button was pressed
};

} // namespace lexiquill

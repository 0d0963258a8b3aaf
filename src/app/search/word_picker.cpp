#include "app/search/word_picker.h"

#include "app/shell/services.h"
#include "dictionaries/system_dictionary_service.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QStyleHints>

#include <algorithm>

namespace lexiquill {

namespace {

/// Longer runs of letters are no words.
constexpr qsizetype longestWord = 64;
constexpr qsizetype longestChineseWord = 4;

bool isLatin(QChar c) {
    return c.isLetter() && c.script() == QChar::Script_Latin;
}

bool isHan(QChar c) {
    return c.script() == QChar::Script_Han;
}

/// Whether a character joins two parts of one word, such as "don't" or "well-known".
bool isJoint(QChar c) {
    return c == u'\'' || c == u'’' || c == u'-';
}

bool belongsToWord(QStringView text, qsizetype place) {
    const QChar c = text[place];
    if (isLatin(c) || c.isMark())
        return true;
    return isJoint(c) && place > 0 && place + 1 < text.size() && isLatin(text[place - 1]) &&
           isLatin(text[place + 1]);
}

/// The largest range around `place` whose characters all belong; at most `limit` to each side.
template <typename Belongs>
QStringView run(QStringView text, qsizetype place, qsizetype limit, Belongs belongs) {
    qsizetype begin = place;
    while (begin > 0 && place - begin < limit && belongs(begin - 1))
        --begin;
    qsizetype end = place;
    while (end < text.size() && end - place < limit && belongs(end))
        ++end;
    return text.sliced(begin, end - begin);
}

} // namespace

QStringList wordsAt(QStringView text, qsizetype position) {
    qsizetype place = std::clamp<qsizetype>(position, 0, text.size());
    // The position after the last letter still means the word.
    const auto isInside = [&](qsizetype at) {
        return at < text.size() && (belongsToWord(text, at) || isHan(text[at]));
    };
    if (!isInside(place) && place > 0 && isInside(place - 1))
        --place;
    if (!isInside(place))
        return {};
    if (!isHan(text[place])) {
        const QStringView word =
            run(text, place, longestWord, [&](qsizetype at) { return belongsToWord(text, at); });
        return word.size() > longestWord ? QStringList() : QStringList{word.toString()};
    }
    QStringList words;
    for (qsizetype length = longestChineseWord; length > 0; --length) {
        for (qsizetype begin = place - length + 1; begin <= place; ++begin) {
            if (begin < 0 || begin + length > text.size())
                continue;
            const QStringView word = text.sliced(begin, length);
            if (std::ranges::all_of(word, isHan))
                words += word.toString();
        }
    }
    return words;
}

WordPicker::WordPicker(QObject *parent)
    : QObject(parent),
      m_dictionary(Services::current().offlineDictionaries) {}

void WordPicker::setTarget(QQuickItem *target) {
    if (m_target)
        m_target->removeEventFilter(this);
    m_target = target;
    if (m_target)
        m_target->installEventFilter(this);
}

QString WordPicker::wordAt(QPointF place) const {
    int position = -1;
    QString text;
    if (!m_target ||
        !QMetaObject::invokeMethod(m_target, "positionAt", Q_RETURN_ARG(int, position),
                                   Q_ARG(double, place.x()), Q_ARG(double, place.y())) ||
        !QMetaObject::invokeMethod(m_target, "getText", Q_RETURN_ARG(QString, text), Q_ARG(int, 0),
                                   Q_ARG(int, m_target->property("length").toInt())))
        return {};
    const QStringList words = wordsAt(text, position);
    if (words.isEmpty() || !isHan(words.constFirst().front()))
        return words.value(0);
    const auto known = std::ranges::find_if(
        words, [this](const QString &word) { return m_dictionary.lookup(word).has_value(); });
    return known == words.cend() ? QString() : *known;
}

// Not a pointer handler: the text takes the mouse for the selection, which ends the handlers' taps.
bool WordPicker::eventFilter(QObject *watched, QEvent *event) {
    const bool isPress = event->type() == QEvent::MouseButtonPress;
    const bool isRelease = event->type() == QEvent::MouseButtonRelease;
    const bool isDoubleClick = event->type() == QEvent::MouseButtonDblClick;
    if (watched != m_target || !(isPress || isRelease || isDoubleClick))
        return QObject::eventFilter(watched, event);
    const auto &mouse = static_cast<const QMouseEvent &>(*event);
    if (isPress)
        m_pressed = mouse.position();
    const bool isClick =
        (mouse.position() - m_pressed).manhattanLength() < QGuiApplication::styleHints()->startDragDistance();
    const bool isMeant =
        mouse.button() == Qt::LeftButton &&
        (isDoubleClick || (isRelease && isClick && mouse.modifiers() == Qt::ControlModifier));
    if (const QString word = isMeant ? wordAt(mouse.position()) : QString(); !word.isEmpty())
        QMetaObject::invokeMethod(
            this, [this, word] { Q_EMIT picked(word); }, Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}

} // namespace lexiquill

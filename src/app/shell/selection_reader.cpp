#include "app/shell/selection_reader.h"

#include <QClipboard>
#include <QGuiApplication>

#include <utility>

namespace lexiquill {

namespace {

constexpr std::chrono::milliseconds lookInterval{20};

QString selectedText() {
    const QClipboard *const clipboard = QGuiApplication::clipboard();
    return clipboard->supportsSelection() ? clipboard->text(QClipboard::Selection) : QString();
}

} // namespace

SelectionReader::SelectionReader(Access access, SelectionPatience patience)
    : m_access(access),
      m_patience(patience) {
    m_timer.setInterval(lookInterval);
    connect(&m_timer, &QTimer::timeout, this, &SelectionReader::look);
}

void SelectionReader::read(std::function<void(const QString &)> take) {
    m_take = std::move(take);
    m_focusDeadline = QDeadlineTimer(m_patience.focus);
    m_selectionDeadline.reset();
    m_timer.start();
    look();
}

void SelectionReader::look() {
    if (m_access == Access::WithFocus && QGuiApplication::focusWindow() == nullptr) {
        if (m_focusDeadline.hasExpired())
            finish({});
        return;
    }
    if (!m_selectionDeadline)
        m_selectionDeadline = QDeadlineTimer(m_access == Access::WithFocus ? m_patience.selection
                                                                           : std::chrono::milliseconds{});
    const QString text = selectedText();
    if (!text.trimmed().isEmpty())
        finish(text);
    else if (m_selectionDeadline->hasExpired() || !QGuiApplication::clipboard()->supportsSelection())
        finish(QGuiApplication::clipboard()->text(QClipboard::Clipboard));
}

void SelectionReader::finish(const QString &text) {
    m_timer.stop();
    std::exchange(m_take, {})(text);
}

} // namespace lexiquill

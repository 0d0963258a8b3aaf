#pragma once

#include <QDeadlineTimer>
#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>
#include <functional>
#include <optional>

namespace lexiquill {

/// How long to wait before the next step.
struct SelectionPatience {
    std::chrono::milliseconds focus{10'000};  ///< for the focus; a start takes a while
    std::chrono::milliseconds selection{600}; ///< for the selection, which is told after the focus
};

/// Reads the text that is selected in any program, or the text on the clipboard if none is selected.
class SelectionReader : public QObject {
    Q_OBJECT

public:
    /// Whether the selection can be read at any time, or only while a window of this program has the focus.
    enum class Access { Always, WithFocus };

    explicit SelectionReader(Access access, SelectionPatience patience = {});

    bool needsFocus() const { return m_access == Access::WithFocus; }
    /// Passes the text to `take`, at once or when a window has the focus; an empty text if there is none.
    /// Replaces a read that still waits, which then takes nothing.
    void read(std::function<void(const QString &)> take);

private:
    void look();
    void finish(const QString &text);

    Access m_access;
    SelectionPatience m_patience;
    std::function<void(const QString &)> m_take;
    QTimer m_timer;
    QDeadlineTimer m_focusDeadline;
    std::optional<QDeadlineTimer> m_selectionDeadline; ///< no value before there is the focus
};

} // namespace lexiquill

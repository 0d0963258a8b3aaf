#pragma once

#include "settings/user_defaults.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <mutex>

namespace lexiquill {

/// What the user has chosen about the dictionaries, as stored in the settings. Reads what other processes
/// have written. All members may be called on any thread.
class ShelfChoices {
public:
    struct Choices {
        /// Names or paths of the dictionaries that are asked first, in their order.
        QStringList order;
        /// Paths of the dictionaries that are not asked.
        QStringList off;

        bool operator==(const Choices &) const = default;

        /// The place of a dictionary in the user's order; -1 if it is not in it.
        qsizetype rankOf(const QString &path, const QString &name) const;
        bool isOff(const QString &path) const;
    };

    /// `settingsFile`: see UserDefaults; an empty path means that there are no choices.
    explicit ShelfChoices(const QString &settingsFile);

    Choices current();
    void setOrder(const QStringList &paths);
    void setOn(const QString &path, bool isOn);

    static const QString orderKey; ///< "lexiquill_dictionary_order"
    static const QString offKey;   ///< "lexiquill_dictionaries_off"

private:
    UserDefaults *defaults();

    QString m_settingsFile;
    std::mutex m_mutex;
    std::unique_ptr<UserDefaults> m_defaults;
};

} // namespace lexiquill

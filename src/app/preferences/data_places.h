#pragma once

#include <QObject>
#include <QQmlEngine>
#include <QString>

namespace lexiquill {

/// Where the program keeps the user's data.
class DataPlaces : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString wordbook READ wordbook CONSTANT)
    Q_PROPERTY(QString backups READ backups CONSTANT)
    Q_PROPERTY(QString dictionaries READ dictionaries CONSTANT)
    Q_PROPERTY(QString settings READ settings CONSTANT)
    Q_PROPERTY(QString caches READ caches CONSTANT)

public:
    explicit DataPlaces(QObject *parent = nullptr) : QObject(parent) {}

    static QString wordbook();
    static QString backups();
    /// Where added dictionaries are.
    static QString dictionaries();
    static QString settings();
    static QString caches();

    /// Opens the directory, or the directory of the file, in the desktop's file manager. If it does not
    /// exist, opens the nearest parent that does. Emits `failed` if that does not work, also later.
    Q_INVOKABLE void openFolder(const QString &path);

Q_SIGNALS:
    /// A folder cannot be shown; `message` is for the user.
    void failed(const QString &message);

private:
    void tellFailure(const QString &folder);
};

} // namespace lexiquill

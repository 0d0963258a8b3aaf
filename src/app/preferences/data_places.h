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
    Q_PROPERTY(QString settings READ settings CONSTANT)
    Q_PROPERTY(QString caches READ caches CONSTANT)

public:
    explicit DataPlaces(QObject *parent = nullptr) : QObject(parent) {}

    static QString wordbook();
    static QString backups();
    static QString settings();
    static QString caches();

    /// Opens the directory, or the directory of the file, in the desktop's file manager. If it does not
    /// exist, opens the nearest parent that does. False when the desktop has no file manager.
    Q_INVOKABLE static bool openFolder(const QString &path);
};

} // namespace lexiquill

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

    /// Shows the directory, or the one that the file lies in, in the desktop's file manager; the nearest one
    /// that exists. False when the desktop has none.
    Q_INVOKABLE static bool openFolder(const QString &path);
};

} // namespace lexiquill

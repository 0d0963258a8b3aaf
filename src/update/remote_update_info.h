#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

#include <optional>

namespace lexiquill {

/// The server's record of the newest release.
struct RemoteUpdateInfo {
    Q_GADGET
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString version MEMBER version)
    Q_PROPERTY(QString build MEMBER build)
    Q_PROPERTY(QString releaseDate MEMBER releaseDate)
    Q_PROPERTY(QString releaseNotes MEMBER releaseNotes)
    Q_PROPERTY(QString downloadUrl MEMBER downloadUrl)

public:
    QString name;
    QString version; ///< compared with the running one
    QString build;
    QString releaseDate;
    QString releaseNotes;
    QString downloadUrl;                                ///< of a zip archive with the new application bundle
    std::optional<QString> minOSVersion = std::nullopt; ///< stored, not checked

    bool operator==(const RemoteUpdateInfo &) const = default;
};

/// Decodes a record. No value when the text is not a JSON object, when a required member is missing, or when
/// a member is not a string (only "minOSVersion" may be null).
std::optional<RemoteUpdateInfo> decodeRemoteUpdateInfo(const QByteArray &json);
/// Compact, members in declared order, without an absent "minOSVersion".
QByteArray encodeRemoteUpdateInfo(const RemoteUpdateInfo &info);

} // namespace lexiquill

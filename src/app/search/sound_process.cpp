#include "app/search/sound_process.h"

#include <QCoreApplication>
#include <QDir>

#include <chrono>
#include <utility>

namespace lexiquill {

using namespace std::chrono_literals;

namespace {

/// Until the sound begins. A speech service takes some seconds to start.
constexpr std::chrono::seconds longestStart = 12s;
/// From the beginning of the sound to the end of the player.
constexpr std::chrono::seconds longestSound = 40s;
/// A player that does not stop by itself is killed after this time.
constexpr std::chrono::milliseconds longestStop = 500ms;

/// The player of this installation or build tree.
QString usualPlayer() {
    const QDir programs(QCoreApplication::applicationDirPath());
    const QString installed =
        programs.filePath(QStringLiteral(LEXIQUILL_LIBEXEC_FROM_BIN "/lexiquill-sound-player"));
    return QFile::exists(installed) ? installed
                                    : programs.filePath(QStringLiteral("../libexec/lexiquill-sound-player"));
}

} // namespace

SoundProcess::SoundProcess(QObject *parent) : QObject(parent) {
    m_patience.setSingleShot(true);
    m_patience.callOnTimeout(this, [this] {
        stop();
        Q_EMIT finished(SoundOutcome::Unplayable);
    });
}

SoundProcess::~SoundProcess() {
    stop();
}

void SoundProcess::start(const QStringList &arguments) {
    stop();
    m_player = new QProcess;
    m_player->setStandardErrorFile(QProcess::nullDevice());
    connect(m_player, &QProcess::readyReadStandardOutput, this, [this] {
        m_player->readAllStandardOutput();
        m_patience.start(longestSound);
        Q_EMIT started();
    });
    connect(m_player, &QProcess::finished, this, [this](int status, QProcess::ExitStatus exit) {
        end(exit == QProcess::NormalExit ? static_cast<SoundOutcome>(status) : SoundOutcome::Unplayable);
    });
    connect(m_player, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            end(SoundOutcome::NoPlayer);
    });
    m_patience.start(longestStart);
    m_player->start(usualPlayer(), arguments);
}

void SoundProcess::stop() {
    m_patience.stop();
    if (!m_player)
        return;
    QProcess *const player = std::exchange(m_player, nullptr);
    player->disconnect(this);
    if (player->state() == QProcess::NotRunning) {
        player->deleteLater();
        return;
    }
    // It lives on for a moment, so that it can end the speech, too.
    connect(player, &QProcess::finished, player, &QObject::deleteLater);
    QTimer::singleShot(longestStop, player, &QProcess::kill);
    player->closeWriteChannel();
}

void SoundProcess::end(SoundOutcome outcome) {
    m_patience.stop();
    std::exchange(m_player, nullptr)->deleteLater();
    Q_EMIT finished(outcome);
}

} // namespace lexiquill

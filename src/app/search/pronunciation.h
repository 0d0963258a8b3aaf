#pragma once

#include "app/preferences/window_preferences.h"
#include "app/search/sound_process.h"
#include "model/accent.h"
#include "network/http_client.h"
#include "support/cancellation.h"

#include <QObject>
#include <QQmlEngine>
#include <QTemporaryFile>
#include <QUrl>

#include <memory>

namespace lexiquill {

/// URL of the recording of a word; empty for a blank, invalid or very long word.
QUrl pronunciationUrl(const QString &youdaoBase, const QString &word, Accent accent);

/// Pronounces words: plays the recording of the online dictionary, or of an offline one if that is not
/// available (the other way round when words are looked up offline). Without any, the system's speech service
/// speaks. Creates nothing before the first request.
class Pronunciation : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool isFetching READ isFetching NOTIFY isFetchingChanged)
    /// Whether the speech service spoke, or speaks, the last word.
    Q_PROPERTY(bool isSynthetic READ isSynthetic NOTIFY isSyntheticChanged)

public:
    explicit Pronunciation(QObject *parent = nullptr);
    ~Pronunciation() override;

    bool isFetching() const { return m_isFetching; }
    bool isSynthetic() const { return m_isSynthetic; }

    /// Pronounces a word in the preferred accent, and stops any other that is playing. Emits failed() if that
    /// does not work.
    Q_INVOKABLE void play(const QString &word);
    /// The same in the given accent.
    Q_INVOKABLE void play(const QString &word, lexiquill::WindowPreferences::Accent accent);
    Q_INVOKABLE void cancel();

Q_SIGNALS:
    void isFetchingChanged();
    void isSyntheticChanged();
    /// `message`: a sentence that tells the user what to do.
    void failed(const QString &message);

private:
    enum class Source { Online, Dictionaries, Speech };

    void tryNext();
    /// Goes on to the next source. `reason` tells the user why this one failed; null if it just has none.
    void giveUpSource(const QString &reason);
    void fetch();
    QCoro::Task<> download(QUrl url, std::stop_token stop);
    void find();
    void speak();
    void playBytes(const QByteArray &sound, const QString &suffix);
    void onSoundFinished(SoundOutcome outcome);
    void setFetching(bool isFetching);
    void setSynthetic(bool isSynthetic);

    QString m_word;
    Accent m_accent = Accent::American;
    QList<Source> m_sources; ///< the ones that have not been tried
    bool m_isSpeaking = false;
    QString m_reason; ///< why the first source failed
    bool m_isFetching = false;
    bool m_isSynthetic = false;
    std::unique_ptr<QTemporaryFile> m_file;
    SoundProcess m_sound;
    std::unique_ptr<Cancellation> m_cancellation;
};

} // namespace lexiquill

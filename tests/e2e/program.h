#pragma once

#include "model/record_codec.h"
#include "support/files.h"

#include <QProcess>
#include <QTemporaryDir>

#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace lexiquill {

/// The result of a run of the program; the status is -1 when it did not exit by itself.
struct Outcome {
    int status = -1;
    QString output;
    QByteArray errors;
};

/// A separate home directory for runs of the real program, with blanks and Chinese in its name.
class Home {
public:
    Home() {
        QDir().mkpath(path());
        for (const char *name : {"PATH", "ASAN_OPTIONS", "UBSAN_OPTIONS"})
            environment.insert(QString::fromLatin1(name), qEnvironmentVariable(name));
        for (const char *name : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"})
            environment.insert(QString::fromLatin1(name), path(QString::fromLatin1(name)));
        environment.insert(u"TZ"_s, qEnvironmentVariable("TZ", u"UTC"_s));
        environment.insert(u"PROGRAM"_s, QStringLiteral(LEXIQUILL_PROGRAM));
        setOnlineBase(u"https://dictionary.invalid"_s);
    }

    QString path(const QString &name = {}) const {
        return QDir::cleanPath(m_directory.filePath(u"某人 的'家/"_s + name));
    }
    QString wordbookPath() const { return path(u"XDG_DATA_HOME/Lexiquill/vocabulary.json"_s); }
    QString settingsPath() const { return path(u"XDG_CONFIG_HOME/Lexiquill/Lexiquill.conf"_s); }

    /// Sets the base address of the Youdao dictionary, and more lines of the settings file. The initial
    /// address does not exist.
    void setOnlineBase(const QString &base, const QString &moreSettings = {}) const {
        const QString settings = u"[General]\nlexiquill_youdao_base=%1\n%2"_s.arg(base, moreSettings);
        writeFile(settingsPath(), settings.toUtf8());
    }

    /// The words in the wordbook; no value when there is no readable one.
    std::optional<QList<WordRecord>> words() const {
        return decodeWordRecords(readFile(wordbookPath()), JsonForm::File, Instant::now());
    }
    void setWordbook(const QByteArray &json) const { writeFile(wordbookPath(), json); }

    /// Starts the program, or another one, with this home as its working directory.
    std::unique_ptr<QProcess> start(const QStringList &arguments,
                                    const QString &program = QStringLiteral(LEXIQUILL_PROGRAM)) const {
        auto process = std::make_unique<QProcess>();
        process->setProcessEnvironment(environment);
        process->setWorkingDirectory(path());
        process->start(program, arguments);
        process->waitForStarted();
        return process;
    }
    static Outcome finish(QProcess &process, const QByteArray &input = {}) {
        process.write(input);
        process.closeWriteChannel();
        const bool hasExited = process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit;
        return {.status = hasExited ? process.exitCode() : -1,
                .output = QString::fromUtf8(process.readAllStandardOutput()),
                .errors = process.readAllStandardError()};
    }
    /// Runs the program with arguments that are separated by "|"; null means none.
    Outcome run(const char *arguments, const QByteArray &input = {}) const {
        const QStringList list = arguments ? QString::fromUtf8(arguments).split(u'|') : QStringList();
        return finish(*start(list), input);
    }
    /// Runs a shell script in which $PROGRAM is the program.
    Outcome shell(const QString &script) const { return finish(*start({u"-c"_s, script}, u"/bin/sh"_s)); }

    QProcessEnvironment environment;

private:
    QTemporaryDir m_directory;
};

} // namespace lexiquill

#include "update/update_script.h"

#include <QHash>
#include <QRegularExpression>
#include <QStringList>

namespace lexiquill {

namespace {

/// The text for use between double quotes.
QString escaped(QString text) {
    static const QRegularExpression special(QStringLiteral("([\\\\\"$`])"));
    return text.replace(special, QStringLiteral("\\\\1"));
}

/// The text with values instead of their names in braces. Done in one pass, because a value may contain such
/// a name.
QString filled(const QString &text, const QHash<QString, QString> &values) {
    static const QRegularExpression placeholder(QStringLiteral("\\{([A-Z]+)\\}"));
    QString result;
    qsizetype end = 0;
    for (auto each = placeholder.globalMatch(text); each.hasNext();) {
        const QRegularExpressionMatch match = each.next();
        result += QStringView(text).sliced(end, match.capturedStart() - end);
        result += values.value(match.captured(1));
        end = match.capturedEnd();
    }
    return result + text.sliced(end);
}

/// The lines in which the platforms differ. {ARCHIVE}, {UNPACKED} and {APP} stand for the escaped paths.
struct PlatformLines {
    QStringList unpack;
    QString firstFound; ///< the end of the command that looks for the bundle
    QStringList makeRunnable;
    QString launch;
};

PlatformLines macOSLines() {
    return {.unpack = {QStringLiteral("rm -rf \"{UNPACKED}\""), QStringLiteral("mkdir -p \"{UNPACKED}\""),
                       QStringLiteral("/usr/bin/ditto -x -k \"{ARCHIVE}\" \"{UNPACKED}\"")},
            .firstFound = QStringLiteral("| head -n 1"),
            .makeRunnable = {QStringLiteral("    # 清除 macOS 隔离标记并赋予完全执行权限"),
                             QStringLiteral("    /usr/bin/xattr -cr \"{APP}\" 2>/dev/null || true"),
                             QStringLiteral("    chmod -R +x \"{APP}\"")},
            .launch = QStringLiteral("    /usr/bin/open \"{APP}\"")};
}

/// The unpack directory is emptied and not created again, because another user could create it first; it must
/// still belong to this user. An archive that cannot be unpacked completely (status 1 means only warnings)
/// counts as one without a bundle, so that no incomplete application replaces a complete one. A link does not
/// count as a bundle either, because its target is removed.
PlatformLines linuxLines() {
    const QString clear = QStringLiteral("find \"{UNPACKED}\" -mindepth 1 -delete");
    return {.unpack = {QStringLiteral("if [ -L \"{UNPACKED}\" ] || [ ! -O \"{UNPACKED}\" ] || "
                                      "[ -L \"{ARCHIVE}\" ] || [ ! -O \"{ARCHIVE}\" ]; then"),
                       QStringLiteral("    echo \"Error: The update files belong to somebody else.\""),
                       QStringLiteral("    exit 1"), QStringLiteral("fi"), clear,
                       QStringLiteral("unzip -q -o \"{ARCHIVE}\" -d \"{UNPACKED}\" </dev/null || "
                                      "[ $? -eq 1 ] || ") +
                           clear},
            .firstFound = QStringLiteral("-type d -print -quit"),
            .makeRunnable = {QStringLiteral("    # 赋予完全执行权限"),
                             QStringLiteral("    chmod -R +x \"{APP}\"")},
            .launch = QStringLiteral("    setsid nohup \"{APP}/AppRun\" </dev/null >/dev/null 2>&1 &")};
}

} // namespace

UpdatePaths UpdatePaths::in(const QString &directory) {
    return {.archive = directory + QStringLiteral("/Lexiquill_update.zip"),
            .unpackDirectory = directory + QStringLiteral("/Lexiquill_update_extracted"),
            .script = directory + QStringLiteral("/lexiquill_updater.sh"),
            .log = directory + QStringLiteral("/lexiquill_updater.log")};
}

QString shellWord(const QString &text) {
    static const QRegularExpression plain(QStringLiteral("\\A[A-Za-z0-9/._+-]+\\z"));
    return plain.match(text).hasMatch() ? text : u'"' + escaped(text) + u'"';
}

QByteArray updateScript(ScriptPlatform platform, const UpdatePaths &paths, const QString &applicationPath,
                        qint64 pid) {
    const PlatformLines own = platform == ScriptPlatform::MacOS ? macOSLines() : linuxLines();
    const QString empty;
    const QString indentOnly = QStringLiteral("    ");
    QStringList lines{
        QStringLiteral("#!/bin/bash"),
        QStringLiteral("exec > {LOG} 2>&1"),
        QStringLiteral("echo \"=== Lexiquill Auto-Updater started at $(date) ===\""),
        QStringLiteral("echo \"Target App: {APP}\""),
        QStringLiteral("echo \"Process PID: {PID}\""),
        empty,
        QStringLiteral("# 1. 监控旧进程，最多等待 3 秒；若未自行退出则强制 kill，杜绝卡死挂起"),
        QStringLiteral("for i in {1..15}; do"),
        QStringLiteral("    if ! kill -0 {PID} 2>/dev/null; then"),
        QStringLiteral("        echo \"Old process {PID} exited cleanly.\""),
        QStringLiteral("        break"),
        QStringLiteral("    fi"),
        QStringLiteral("    sleep 0.2"),
        QStringLiteral("done"),
        QStringLiteral("kill -9 {PID} 2>/dev/null || true"),
        QStringLiteral("sleep 0.2"),
        empty,
        QStringLiteral("# 2. 解压新版本到临时目录"),
        QStringLiteral("echo \"Extracting new version from {ARCHIVE}...\""),
    };
    lines += own.unpack;
    lines += {
        empty,
        QStringLiteral("# 3. 寻找解压包内的 Lexiquill.app"),
        QStringLiteral("NEW_APP=$(find \"{UNPACKED}\" -maxdepth 2 -name \"Lexiquill.app\" ") +
            own.firstFound + u')',
        QStringLiteral("echo \"Extracted App: $NEW_APP\""),
        empty,
        QStringLiteral("if [ -n \"$NEW_APP\" ] && [ -d \"$NEW_APP\" ]; then"),
        QStringLiteral("    echo \"Replacing old application at: {APP}\""),
        QStringLiteral("    rm -rf \"{APP}\""),
        QStringLiteral("    cp -R \"$NEW_APP\" \"{APP}\""),
        indentOnly,
    };
    lines += own.makeRunnable;
    lines += {
        indentOnly,
        QStringLiteral("    # 清理更新临时文件"),
        QStringLiteral("    rm -rf \"{ARCHIVE}\" \"{UNPACKED}\""),
        indentOnly,
        QStringLiteral("    echo \"Launching newly installed Lexiquill.app...\""),
        own.launch,
        QStringLiteral("    echo \"Auto-update and relaunch successful!\""),
        QStringLiteral("else"),
        QStringLiteral("    echo \"Error: Could not locate Lexiquill.app in update package.\""),
        QStringLiteral("fi"),
    };
    return filled(lines.join(u'\n'), {{QStringLiteral("APP"), escaped(applicationPath)},
                                      {QStringLiteral("PID"), QString::number(pid)},
                                      {QStringLiteral("ARCHIVE"), escaped(paths.archive)},
                                      {QStringLiteral("UNPACKED"), escaped(paths.unpackDirectory)},
                                      {QStringLiteral("LOG"), shellWord(paths.log)}})
        .toUtf8();
}

} // namespace lexiquill

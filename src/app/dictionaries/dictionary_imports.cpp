#include "app/dictionaries/dictionary_imports.h"

#include "app/dictionaries/dictionary_texts.h"
#include "app/shell/app_context.h"
#include "app/shell/lent.h"
#include "app/shell/services.h"
#include "dictionaries/dictionary_shelf.h"
#include "dictionaries/import/dictionary_importer.h"
#include "support/background_task.h"

#include <QFileInfo>

#include <chrono>
#include <utility>

namespace lexiquill {

using namespace std::chrono_literals;

namespace {

/// More files are not imported at once; each may be a dictionary.
constexpr qsizetype mostPaths = 200;
constexpr qsizetype mostResults = 50;

} // namespace

DictionaryImports::DictionaryImports(Services &services, DictionaryDownload::Limits limits, QObject *parent)
    : QObject(parent),
      m_services(services),
      m_limits(limits) {
    m_progressTimer.setInterval(100ms);
    connect(&m_progressTimer, &QTimer::timeout, this, &DictionaryImports::progressChanged);
}

DictionaryImports::~DictionaryImports() = default;

DictionaryImports *DictionaryImports::create(QQmlEngine *, QJSEngine *) {
    return lent(AppContext::current().imports());
}

QString DictionaryImports::names() const {
    const QStringList &paths = m_state == State::Asking ? m_asked : m_running;
    if (paths.isEmpty())
        return {};
    const QString first = QStringLiteral("“%1”").arg(shownName(QFileInfo(paths.first()).fileName()));
    return paths.size() == 1 ? first : first + QStringLiteral("等 %1 个文件").arg(paths.size());
}

QString DictionaryImports::stageText() const {
    switch (m_state) {
    case State::Downloading:
        return QStringLiteral("正在下载%1…").arg(names());
    case State::Importing:
        return m_counter->total > 0 && m_counter->done >= m_counter->total
                   ? QStringLiteral("正在为%1建立索引…").arg(names())
                   : QStringLiteral("正在添加%1…").arg(names());
    default:
        return {};
    }
}

double DictionaryImports::progress() const {
    if (m_state == State::Downloading)
        return m_downloaded;
    if (m_state != State::Importing)
        return -1;
    const auto done = static_cast<double>(m_counter->done);
    const auto total = static_cast<double>(m_counter->total);
    return total > 0 && done < total ? done / total : -1;
}

void DictionaryImports::open(const QList<QUrl> &files, bool inSheet) {
    QStringList paths;
    for (const QUrl &file : files) {
        if (file.isLocalFile())
            paths += file.toLocalFile();
    }
    if (paths.isEmpty())
        return;
    if (inSheet)
        setShowSheet(true);
    enqueue(paths);
}

void DictionaryImports::ask(const QStringList &paths) {
    if (paths.isEmpty())
        return;
    m_asked = (m_asked + paths).mid(0, mostPaths);
    m_asked.removeDuplicates();
    setShowSheet(true);
    if (m_state == State::Idle || m_state == State::Asking) {
        m_state = State::Asking;
        Q_EMIT stateChanged();
    }
}

void DictionaryImports::confirm() {
    if (m_state != State::Asking)
        return;
    setState(State::Idle);
    enqueue(std::exchange(m_asked, {}));
}

void DictionaryImports::openAddress(const QString &address, const QString &checksum) {
    const auto url = downloadUrl(address);
    const auto expected = readChecksum(checksum);
    if (!url || !expected || m_state != State::Idle)
        return;
    m_results.clear();
    Q_EMIT resultsChanged();
    m_running = {fileNameOf(*url)};
    m_downloaded = -1;
    setState(State::Downloading);
    m_download =
        std::make_unique<DictionaryDownload>(m_services.http, DictionaryShelf::importedDirectory(), m_limits);
    m_download->run(
        *url, *expected,
        [this](double part) {
            m_downloaded = part;
            if (!m_progressTimer.isActive())
                m_progressTimer.start();
        },
        [this](const DictionaryDownload::Outcome &outcome) { finishDownload(outcome); });
}

void DictionaryImports::finishDownload(const DictionaryDownload::Outcome &outcome) {
    if (!outcome.failure.isEmpty()) {
        m_download.reset();
        addResult(m_running.value(0), outcome.failure, false);
        setState(State::Idle);
        startNext();
        return;
    }
    runImport({outcome.path});
}

void DictionaryImports::cancel() {
    m_waiting.clear();
    m_asked.clear();
    m_download.reset();
    if (m_state == State::Importing) {
        // The import ends soon and reports what it has not done.
        m_import->cancel();
        return;
    }
    setState(State::Idle);
    dismiss();
}

void DictionaryImports::dismiss() {
    if (m_state == State::Asking) {
        m_asked.clear();
        setState(State::Idle);
    }
    setShowSheet(false);
    if (m_state == State::Idle && !m_results.isEmpty()) {
        m_results.clear();
        Q_EMIT resultsChanged();
    }
}

QString DictionaryImports::addressProblem(const QString &address) {
    return address.trimmed().isEmpty() || downloadUrl(address)
               ? QString()
               : QStringLiteral("请输入 https:// 开头的地址；只有本机地址可以用 http://");
}

QString DictionaryImports::checksumProblem(const QString &checksum) {
    return readChecksum(checksum) ? QString() : QStringLiteral("SHA-256 校验和是 64 位十六进制数字");
}

QStringList DictionaryImports::localPaths(const QStringList &urls) {
    QStringList paths;
    for (const QString &text : urls) {
        const QUrl url(text, QUrl::StrictMode);
        const bool isHere = url.host().isEmpty() || url.host() == QLatin1StringView("localhost");
        const QString path = text.startsWith(u'/')         ? text
                             : url.isLocalFile() && isHere ? url.path(QUrl::FullyDecoded)
                                                           : QString();
        if (path.startsWith(u'/') && !path.contains(QChar::Null))
            paths += path;
    }
    return paths;
}

void DictionaryImports::enqueue(const QStringList &paths) {
    m_waiting = (m_waiting + paths).mid(0, mostPaths);
    if (m_state == State::Idle || m_state == State::Asking) {
        m_results.clear();
        Q_EMIT resultsChanged();
        startNext();
    }
}

void DictionaryImports::startNext() {
    if (!m_waiting.isEmpty())
        return runImport(std::exchange(m_waiting, {}));
    if (m_asked.isEmpty())
        return;
    // The user may have closed the sheet while something else was being added.
    setShowSheet(true);
    setState(State::Asking);
}

void DictionaryImports::runImport(const QStringList &paths) {
    m_running = paths;
    m_import = std::make_unique<Cancellation>();
    m_counter = std::make_shared<Counter>();
    setState(State::Importing);
    m_progressTimer.start();
    const auto work = [paths, counter = m_counter, stop = m_import->token(), services = &m_services] {
        return services->importer.import(paths, stop, [&counter](qint64 done, qint64 total) {
            counter->total = total;
            counter->done = done;
        });
    };
    runInBackground(this, work, [this](const QList<ImportResult> &results) { finishImport(results); });
}

void DictionaryImports::finishImport(const QList<ImportResult> &results) {
    bool hasNew = false;
    for (const ImportResult &result : results) {
        const bool isSuccess = result.problem == ImportProblem::None;
        hasNew = hasNew || isSuccess;
        addResult(result.name, displayText(result), isSuccess);
    }
    m_download.reset();
    m_progressTimer.stop();
    if (hasNew)
        Q_EMIT imported();
    setState(State::Idle);
    startNext();
}

void DictionaryImports::setState(State state) {
    if (state == m_state)
        return;
    m_state = state;
    if (state == State::Idle || state == State::Asking)
        m_progressTimer.stop();
    Q_EMIT stateChanged();
    Q_EMIT progressChanged();
}

void DictionaryImports::setShowSheet(bool isShown) {
    if (std::exchange(m_showSheet, isShown) != isShown)
        Q_EMIT showSheetChanged();
}

void DictionaryImports::addResult(const QString &name, const QString &text, bool isSuccess) {
    if (m_results.size() == mostResults)
        return;
    m_results += QVariantMap{{QStringLiteral("name"), shownName(name)},
                             {QStringLiteral("text"), text},
                             {QStringLiteral("isSuccess"), isSuccess}};
    Q_EMIT resultsChanged();
}

} // namespace lexiquill

#include "steps.h"

#include "dictionaries/system_dictionary_service.h"
#include "http_server.h"
#include "model/record_codec.h"
#include "review/spaced_repetition_engine.h"
#include "stardict_headwords.h"
#include "storage/wordbook_change.h"

#include <QDragEnterEvent>
#include <QFile>
#include <QKeySequence>
#include <QMimeData>
#include <QTest>

#include <algorithm>
#include <random>

namespace lexiquill {

namespace {

QStringList starterWords() {
    return tools::stardictHeadwords(QStringLiteral(LEXIQUILL_STARTER_DIRECTORY "/lexiquill-starter.idx"));
}

/// A word that was looked up some time in the last year, and has been reviewed more or less on time since.
WordRecord sampleRecord(const DictionaryEntry &entry, std::mt19937 &random) {
    const auto below = [&random](unsigned limit) {
        return static_cast<int>(random() % limit);
    };
    const Instant now = Instant::now();
    const auto daysAgo = [now](double days) {
        return now.adding(-days * secondsPerDay);
    };
    const double age = below(4) == 0 ? below(10) : below(330);
    WordRecord record = newRecord({.entry = entry, .date = daysAgo(age + 0.2)});
    record.searchCount = 1 + below(5);
    for (double day = age - 1; day > 0.5 && !record.isMastered;) {
        const auto answer = below(5) == 0 ? ReviewFeedback::Forgot : ReviewFeedback::Remembered;
        SpacedRepetitionEngine::processReview(record, answer, daysAgo(day), Calendar::current());
        day -= static_cast<double>(record.intervalDays + (below(3) == 0 ? below(4) : 0));
    }
    record.lastSearchedDate = daysAgo(std::min<double>(age, below(60)));
    if (below(4) == 0)
        record.userNotes = record.searchCount % 2 == 0 ? QStringLiteral("和同事开会时听到的词 #工作")
                                                       : QStringLiteral("和同事开会时听到的词");
    return record;
}

} // namespace

QByteArray sampleWordbook(SystemDictionaryService &dictionary, int count) {
    QStringList words = starterWords();
    std::mt19937 random(7);
    std::shuffle(words.begin(), words.end(), random);
    QList<WordRecord> records;
    for (int i = 0; i < count && !words.isEmpty(); ++i) {
        const QString &word = words[i % words.size()];
        auto entry = dictionary.lookup(word);
        if (!entry)
            continue;
        const int round = i / static_cast<int>(words.size());
        entry->headword = round == 0 ? word : word + u' ' + QString::number(round);
        records += sampleRecord(*entry, random);
    }
    return encodeWordRecords(records, JsonForm::File);
}

void serveSamples(HttpServer &server, const QString &download) {
    server.setHandler([base = server.base(), download](const ServedRequest &request) -> ServedAnswer {
        if (request.target.startsWith("/version.json") && !download.isEmpty())
            return {.body = R"({"name": "Lexiquill", "version": "1.3.0", "build": "12",
                "releaseDate": "2026-11-01", "downloadUrl": ")" +
                            base.toUtf8() + R"(/Lexiquill.zip",
                "releaseNotes": "· 闪卡可以撤销上一次回答\n· 记忆曲线新增过去一年的复习日历\n· 查不到单词时给出拼写相近的词"})"};
        if (request.target.startsWith("/api/"))
            return {.body = R"({"success": true, "token": "t", "words": []})"};
        if (download == QLatin1StringView("stalled"))
            return {.body = QByteArray(1 << 20, 'x'), .manner = ServedAnswer::Manner::SilentInMiddle};
        return {.status = 404};
    });
}

bool takeSteps(QWindow &window, const QString &steps) {
    for (const QString &part : steps.split(u';', Qt::SkipEmptyParts)) {
        const QString step = part.trimmed();
        const QString what = step.section(u' ', 1);
        if (step.startsWith(QLatin1StringView("type "))) {
            for (const QChar character : what)
                QTest::sendKeyEvent(QTest::Click, &window, Qt::Key_unknown, QString(character),
                                    Qt::NoModifier);
        } else if (step.startsWith(QLatin1StringView("press "))) {
            const QKeyCombination keys = QKeySequence(what)[0];
            QTest::keyClick(&window, keys.key(), keys.keyboardModifiers());
        } else if (step.startsWith(QLatin1StringView("click "))) {
            QTest::mouseClick(&window, Qt::LeftButton, {},
                              {what.section(u' ', 0, 0).toInt(), what.section(u' ', 1).toInt()});
        } else if (step.startsWith(QLatin1StringView("drag "))) {
            QMimeData files;
            files.setUrls({QUrl::fromLocalFile(what)});
            QDragEnterEvent event({window.width() / 2, window.height() / 2}, Qt::CopyAction, &files,
                                  Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(&window, &event);
        } else if (step.startsWith(QLatin1StringView("wait "))) {
            QTest::qWait(what.toInt());
        } else {
            return false;
        }
        QTest::qWait(20);
    }
    return true;
}

} // namespace lexiquill

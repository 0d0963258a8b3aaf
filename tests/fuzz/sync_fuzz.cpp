#include "check.h"
#include "model/record_codec.h"
#include "model/record_merge.h"
#include "sync/protocol/sync_messages.h"

#include <cstddef>
#include <cstdint>

using namespace lexiquill;

namespace {

const Instant now{763637213.25};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    // With a copy of the exact size, the sanitizer detects every read beyond it.
    const QByteArray json(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const auto answer = decodeServerAnswer(json);
    const auto words = answer ? decodeCloudWords(*answer, now) : std::nullopt;
    if (!words)
        return 0;
    QList<WordRecord> wordbook = words->first(words->size() / 2);
    QSet<QString> deleted;
    if (!words->isEmpty())
        deleted += words->last().word.toLower();
    const qsizetype before = wordbook.size();
    mergeCloudWords(wordbook, *words, deleted);
    check(wordbook.size() >= before && wordbook.size() <= words->size());
    // The words sent to the server can be read back without change.
    const auto echo = decodeServerAnswer(encodeSync({}, wordbook, deleted));
    check(echo && !echo->isSuccess);
    const auto again = decodeCloudWords(*echo, now);
    check(again && encodeWordRecords(*again, JsonForm::Wire) == encodeWordRecords(wordbook, JsonForm::Wire));
    return 0;
}

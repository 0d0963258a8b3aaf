#pragma once

#include "model/record_codec.h"

namespace lexiquill {

/// Decodes a wordbook in the form that this program writes piece by piece, so that the parser's tables stay
/// small and in the processor's cache. The pieces are cut where one record seems to end and the next to
/// begin; a cut in the wrong place leaves pieces that are no lists of objects. Nothing when there is such a
/// piece, or the text is too short to be worth it. Changes `json` only for a while.
std::optional<QList<WordRecord>> decodeInPieces(QByteArray &json, Instant now, QList<RecordText> *texts,
                                                qsizetype pieceSize);

} // namespace lexiquill

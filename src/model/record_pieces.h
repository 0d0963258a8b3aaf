#pragma once

#include "model/record_codec.h"

namespace lexiquill {

/// Decodes a wordbook in the format that this program writes, piece by piece, so that the parser's tables
/// stay small and fit into the processor's cache. The text is cut where one record seems to end and the next
/// to begin. A cut in the wrong place results in pieces that are not lists of objects. No value if there is
/// such a piece, or if the text is too short for pieces. Changes `json` only temporarily.
std::optional<QList<WordRecord>> decodeInPieces(QByteArray &json, Instant now, QList<RecordText> *texts,
                                                qsizetype pieceSize);

} // namespace lexiquill

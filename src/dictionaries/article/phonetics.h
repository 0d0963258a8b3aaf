#pragma once

#include <QString>
#include <QStringView>

namespace lexiquill::article {

/// A transcription without the brackets, slashes or language marks around it, on one line; empty when the
/// text holds Chinese characters or nothing to read.
QString cleanPhonetic(QStringView text);

/// The transcriptions that a text may begin with ("[…]", "/…/", "\…\", "英 […] 美 […]").
struct LeadingPhonetic {
    /// The first of them, clean; empty when there is none.
    QString phonetic;
    /// Characters all of them take.
    qsizetype length = 0;
};
LeadingPhonetic leadingPhonetic(QStringView line, const QString &headword);

} // namespace lexiquill::article

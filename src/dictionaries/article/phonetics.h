#pragma once

#include <QString>
#include <QStringView>

namespace lexiquill::article {

/// A transcription on one line, without the brackets, slashes or language marks around it. Empty if the text
/// is blank, contains Chinese characters or is too long.
QString cleanPhonetic(QStringView text);

/// The text without a mark such as "BrE" or "英" at its end, and without separators there.
QStringView withoutLastSourceMark(QStringView text);

/// The transcriptions that a text may begin with ("[…]", "/…/", "\…\", "英 […] 美 […]").
struct LeadingPhonetic {
    /// The first of them, clean; empty when there is none.
    QString phonetic;
    /// Length of all of them.
    qsizetype length = 0;
};
/// `onlyCertain`: plain letters are no transcription, for example behind a part of speech.
LeadingPhonetic leadingPhonetic(QStringView line, const QString &headword, bool onlyCertain = false);

} // namespace lexiquill::article

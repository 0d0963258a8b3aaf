#pragma once

#include <QImage>
#include <QList>

namespace lexiquill {

/// The program's icon in the sizes that desktops use, smallest first. Drawn at each call, so it is for after
/// the first frame.
QList<QImage> windowIcon();

} // namespace lexiquill

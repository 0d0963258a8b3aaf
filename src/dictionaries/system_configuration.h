#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace lexiquill {

// How a system that keeps dictionaries of its own is told to use all of them.

/// Names of the entries of a directory.
using DirectoryContents = std::function<QStringList(const QString &path)>;

/// The paths of all dictionary bundles that the system has downloaded or that were installed by hand.
QStringList dictionaryBundles(const DirectoryContents &contentsOf);

/// The bundles in the order in which they are to be asked: Chinese-English ones first, the last found of
/// these in front.
QStringList activationOrder(const QStringList &bundles);

} // namespace lexiquill

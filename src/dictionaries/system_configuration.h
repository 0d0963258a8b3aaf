#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace lexiquill {

// Tells a system that has its own dictionaries to use all of them.

/// Names of the entries of a directory.
using DirectoryContents = std::function<QStringList(const QString &path)>;

/// The paths of all dictionary bundles that the system has downloaded or that were installed by hand.
QStringList dictionaryBundles(const DirectoryContents &contentsOf);

/// The bundles in the order in which they are to be asked: Chinese-English ones first, and of these the last
/// found one first.
QStringList activationOrder(const QStringList &bundles);

} // namespace lexiquill

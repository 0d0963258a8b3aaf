#pragma once

#include <QString>
#include <QStringList>

namespace lexiquill {

/// A socket of the user's by which a later start finds the running application where there is no session bus.
/// A message is a list of texts.
namespace StartSocket {

/// In the run-time directory of the user, or else in the cache directory.
QString path();

/// Sends a message. False when nobody listens.
bool send(const QStringList &message);

/// A listening descriptor, or -1 when another process listens already or nothing can be made. Removes what a
/// process that has ended left behind.
int listen();

/// Waits briefly for the next message at a listening descriptor; empty when there is none.
QStringList receive(int listener);

} // namespace StartSocket

} // namespace lexiquill

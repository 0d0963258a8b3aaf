#pragma once

#include <QString>
#include <QStringList>

namespace lexiquill {

/// A socket of the user by which a later start finds the running application if there is no session bus. A
/// message is a list of texts.
namespace StartSocket {

/// The path of the socket: in the user's runtime directory, or else in the cache directory.
QString path();

/// Sends a message. False when nobody listens.
bool send(const QStringList &message);

/// A listening descriptor, or -1 when another process listens already or the socket cannot be created.
/// Removes the socket of a process that has ended.
int listen();

/// Waits briefly for the next message at a listening descriptor; empty when there is none.
QStringList receive(int listener);

} // namespace StartSocket

} // namespace lexiquill

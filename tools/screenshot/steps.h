#pragma once

#include <QByteArray>
#include <QString>

class QWindow;

namespace lexiquill {

class HttpServer;
class SystemDictionaryService;

/// The JSON of a wordbook of `count` words of the starter dictionary with up to a year of reviews, the same
/// every day but for its dates.
QByteArray sampleWordbook(SystemDictionaryService &dictionary, int count);

/// Makes the server tell of an account, and of a newer release, whose download is "stalled" in its middle or
/// "broken"; of none without that.
void serveSamples(HttpServer &server, const QString &download);

/// Uses the window like a person: steps such as "type apple; press Down; press Ctrl+A; click 300 200; wait
/// 200". False for a step that it does not know.
bool takeSteps(QWindow &window, const QString &steps);

} // namespace lexiquill

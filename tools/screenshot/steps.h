#pragma once

#include <QByteArray>
#include <QString>

class QWindow;

namespace lexiquill {

class HttpServer;
class SystemDictionaryService;

/// The JSON of a wordbook of `count` words of the starter dictionary with up to a year of reviews. It is the
/// same every day except for its dates.
QByteArray sampleWordbook(SystemDictionaryService &dictionary, int count);

/// Makes the server offer an account, and a newer release whose download is "stalled" in the middle or
/// "broken". An empty `download` means no newer release.
void serveSamples(HttpServer &server, const QString &download);

/// Simulates the input of a user: steps such as "type apple; press Down; press Ctrl+A; click 300 200; drag
/// /tmp/a.mdx; wait 200". False for an unknown step.
bool takeSteps(QWindow &window, const QString &steps);

} // namespace lexiquill
